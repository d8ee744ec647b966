/// A control-surface page table: which parameter each control of each page moves.
#ifndef VARNO_INTERFACES_AAX_IACFPAGETABLE_H
#define VARNO_INTERFACES_AAX_IACFPAGETABLE_H

#include "AAX.h"
#include "AAX_IString.h"

/// Version 1 (IID_IAAXPageTableV1), a component of the host's factory (AAXCompID_PageTable). Pages and slots
/// of a page count from 0. A null output gives AAX_ERROR_NULL_ARGUMENT, a page or slot out of range
/// AAX_ERROR_INVALID_ARGUMENT.
class AAX_IACFPageTable : public IACFUnknown {
public:
    /// Removes all pages. Returns AAX_SUCCESS. [main]
    virtual AAX_Result Clear() = 0;
    /// 1 when no parameter is mapped, else 0. Returns AAX_SUCCESS. [main]
    virtual AAX_Result Empty(uint8_t* outEmpty) const = 0;
    /// The number of pages. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetNumPages(int32_t* outCount) const = 0;
    /// Inserts an empty page before `page` (0 to the number of pages). Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_ARGUMENT. [main]
    virtual AAX_Result InsertPage(int32_t page) = 0;
    /// Removes a page. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_ARGUMENT. [main]
    virtual AAX_Result RemovePage(int32_t page) = 0;
    /// The number of slots of a page up to its last mapped one. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_ARGUMENT. [main]
    virtual AAX_Result GetNumMappedParameterIDs(int32_t page, int32_t* outCount) const = 0;
    /// Frees a slot. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_ARGUMENT. [main]
    virtual AAX_Result ClearMappedParameter(int32_t page, int32_t slot) = 0;
    /// The parameter in a slot, the empty text for a free one. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_ARGUMENT. [main]
    virtual AAX_Result GetMappedParameterID(int32_t page, int32_t slot, AAX_IString* outID) const = 0;
    /// Puts a parameter (identifier copied) into a slot. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_ARGUMENT.
    /// [main]
    virtual AAX_Result MapParameterID(AAX_CParamID paramID, int32_t page, int32_t slot) = 0;

protected:
    ~AAX_IACFPageTable() = default;
};

/// Version 2 (IID_IAAXPageTableV2): shorter names of parameters for small displays, each kept under the
/// length (in characters) that it is meant for.
class AAX_IACFPageTable_V2 : public AAX_IACFPageTable {
public:
    /// The number of parameters with name variations. Returns AAX_SUCCESS. [main]
    virtual AAX_Result GetNumParametersWithNameVariations(int32_t* outCount) const = 0;
    /// The identifier of the parameter with name variations at `index`. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_INDEX. [main]
    virtual AAX_Result GetNameVariationParameterIDAtIndex(int32_t index, AAX_IString* outID) const = 0;
    /// The number of a parameter's name variations. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_ID for one without. [main]
    virtual AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, int32_t* outCount) const = 0;
    /// A parameter's name variation at `index` and the length it is meant for. Returns AAX_SUCCESS;
    /// AAX_ERROR_INVALID_PARAMETER_ID; AAX_ERROR_INVALID_PARAMETER_INDEX. [main]
    virtual AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, int32_t index,
                                                        AAX_IString* outName, int32_t* outLength) const = 0;
    /// A parameter's name variation for exactly `length`. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_ID when there is none. [main]
    virtual AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, int32_t length,
                                                         AAX_IString* outName) const = 0;
    /// Removes all name variations. Returns AAX_SUCCESS. [main]
    virtual AAX_Result ClearParameterNameVariations() = 0;
    /// Removes a parameter's name variations. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) = 0;
    /// Adds or replaces a parameter's name variation for `length`; `name` is borrowed, copied.
    /// Returns AAX_SUCCESS, or AAX_ERROR_INVALID_ARGUMENT for a length below 1. [main]
    virtual AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString* name,
                                                 int32_t length) = 0;

protected:
    ~AAX_IACFPageTable_V2() = default;
};

#endif
