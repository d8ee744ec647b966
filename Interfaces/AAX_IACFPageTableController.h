/// The host's store of control-surface page tables.
#ifndef VARNO_INTERFACES_AAX_IACFPAGETABLECONTROLLER_H
#define VARNO_INTERFACES_AAX_IACFPAGETABLECONTROLLER_H

#include "AAX.h"

/// Version 1 (IID_IAAXPageTableController), offered by the same object as the controller. A table type is a
/// four-character code, a page size the number of controls of a page (1 or more). Each operation fills
/// `table` (borrowed; a page table of the host's own making).
class AAX_IACFPageTableController : public IACFUnknown {
public:
    /// Copies the table of the effect with these three four-character identifiers. Returns AAX_SUCCESS;
    /// AAX_ERROR_UNKNOWN_PLUGIN for an unknown effect; AAX_ERROR_UNKNOWN_ID when it has no such table;
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result CopyTableForEffect(int32_t manufacturerID, int32_t productID, int32_t plugInID,
                                          uint32_t tableType, int32_t tablePageSize,
                                          IACFUnknown* table) const = 0;
    /// Copies the table of a named layout of the effect `effectID`. Returns AAX_SUCCESS;
    /// AAX_ERROR_UNKNOWN_PLUGIN; AAX_ERROR_UNKNOWN_ID; AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result CopyTableOfLayout(const char* effectID, const char* layoutName, uint32_t tableType,
                                         int32_t tablePageSize, IACFUnknown* table) const = 0;

protected:
    ~AAX_IACFPageTableController() = default;
};

/// Version 2 (IID_IAAXPageTableControllerV2): tables of a file named by path, in the given encoding.
class AAX_IACFPageTableController_V2 : public AAX_IACFPageTableController {
public:
    /// As CopyTableForEffect, from a file. Returns AAX_SUCCESS; AAX_ERROR_INVALID_PATH for a file that cannot
    /// be read; AAX_ERROR_UNKNOWN_PLUGIN; AAX_ERROR_UNKNOWN_ID; AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result CopyTableForEffectFromFile(const char* path, AAX_ETextEncoding encoding,
                                                  int32_t manufacturerID, int32_t productID, int32_t plugInID,
                                                  uint32_t tableType, int32_t tablePageSize,
                                                  IACFUnknown* table) const = 0;
    /// As CopyTableOfLayout, from a file. Returns AAX_SUCCESS; AAX_ERROR_INVALID_PATH for a file that cannot
    /// be read; AAX_ERROR_UNKNOWN_ID; AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding,
                                                 const char* layoutName, uint32_t tableType,
                                                 int32_t tablePageSize, IACFUnknown* table) const = 0;

protected:
    ~AAX_IACFPageTableController_V2() = default;
};

#endif
