/// The host's store of page tables in all versions, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGPAGETABLECONTROLLER_H
#define VARNO_TESTS_SUPPORT_RECORDINGPAGETABLECONTROLLER_H

#include "AAX_IACFPageTableController.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingPageTableController : public Recording<AAX_IACFPageTableController_V2> {
public:
    AAX_Result CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID, std::int32_t plugInID,
                                  std::uint32_t tableType, std::int32_t tablePageSize,
                                  IACFUnknown* table) const override {
        return note("CopyTableForEffect", manufacturerID, productID, plugInID, tableType, tablePageSize,
                    table);
    }
    AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, std::uint32_t tableType,
                                 std::int32_t tablePageSize, IACFUnknown* table) const override {
        return note("CopyTableOfLayout", effectID, layoutName, tableType, tablePageSize, table);
    }
    AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                          std::int32_t manufacturerID, std::int32_t productID,
                                          std::int32_t plugInID, std::uint32_t tableType,
                                          std::int32_t tablePageSize, IACFUnknown* table) const override {
        return note("CopyTableForEffectFromFile", path, encoding, manufacturerID, productID, plugInID,
                    tableType, tablePageSize, table);
    }
    AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                         std::uint32_t tableType, std::int32_t tablePageSize,
                                         IACFUnknown* table) const override {
        return note("CopyTableOfLayoutFromFile", path, encoding, layoutName, tableType, tablePageSize, table);
    }
};

} // namespace varno

#endif
