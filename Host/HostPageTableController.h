/// The host's store of control-surface page tables.
#ifndef VARNO_HOST_HOSTPAGETABLECONTROLLER_H
#define VARNO_HOST_HOSTPAGETABLECONTROLLER_H

#include "AAX_IACFPageTableController.h"
#include "Host/HostObject.h"
#include "Host/InstanceState.h"

namespace varno {

/// Page-table controller versions 1 and 2. Version 1 reads the page-table resource that the effect names; a
/// resource that is missing or damaged counts as having no table. [main]
class HostPageTableController final : public Facet<AAX_IACFPageTableController_V2> {
public:
    HostPageTableController(IACFUnknown& owner, InstanceState& state);

    AAX_Result CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID, std::int32_t plugInID,
                                  std::uint32_t tableType, std::int32_t tablePageSize,
                                  IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, std::uint32_t tableType,
                                 std::int32_t tablePageSize, IACFUnknown* table) const override;
    AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                          std::int32_t manufacturerID, std::int32_t productID,
                                          std::int32_t plugInID, std::uint32_t tableType,
                                          std::int32_t tablePageSize, IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                         std::uint32_t tableType, std::int32_t tablePageSize,
                                         IACFUnknown* table) const override;

private:
    std::string resourcePath() const;

    InstanceState& mState;
};

} // namespace varno

#endif
