/// The host's store of control-surface page tables.
#ifndef HOSTPAGETABLECONTROLLER_H
#define HOSTPAGETABLECONTROLLER_H

#include "AAX_IACFPageTableController.h"
#include "HostObject.h"
#include "InstanceState.h"

namespace varno {

/// Page-table controller versions 1 and 2. Version 1 reads the page-table resource that the effect names; a
/// resource that is missing or damaged counts as having no table. [main]
class HostPageTableController final : public Facet<AAX_IACFPageTableController_V2> {
public:
    HostPageTableController(IACFUnknown& owner, InstanceState& state);

    AAX_Result CopyTableForEffect(int32_t manufacturerID, int32_t productID, int32_t plugInID,
                                  uint32_t tableType, int32_t tablePageSize,
                                  IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, uint32_t tableType,
                                 int32_t tablePageSize, IACFUnknown* table) const override;
    AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                          int32_t manufacturerID, int32_t productID, int32_t plugInID,
                                          uint32_t tableType, int32_t tablePageSize,
                                          IACFUnknown* table) const override;
    AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding, const char* layoutName,
                                         uint32_t tableType, int32_t tablePageSize,
                                         IACFUnknown* table) const override;

private:
    std::string resourcePath() const;

    InstanceState& mState;
};

} // namespace varno

#endif
