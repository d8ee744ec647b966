#include "AAX_VPageTable.h"

AAX_VPageTable::AAX_VPageTable(IACFUnknown* hostTable)
    : mVersion1(ACFPtr<AAX_IACFPageTable>::Query(hostTable, IID_IAAXPageTableV1)),
      mVersion2(ACFPtr<AAX_IACFPageTable_V2>::Query(hostTable, IID_IAAXPageTableV2)) {
}

AAX_Result AAX_VPageTable::Clear() {
    return mVersion1 ? mVersion1->Clear() : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::Empty(uint8_t& outEmpty) const {
    return mVersion1 ? mVersion1->Empty(&outEmpty) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetNumPages(int32_t& outCount) const {
    return mVersion1 ? mVersion1->GetNumPages(&outCount) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::InsertPage(int32_t page) {
    return mVersion1 ? mVersion1->InsertPage(page) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::RemovePage(int32_t page) {
    return mVersion1 ? mVersion1->RemovePage(page) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetNumMappedParameterIDs(int32_t page, int32_t& outCount) const {
    return mVersion1 ? mVersion1->GetNumMappedParameterIDs(page, &outCount) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::ClearMappedParameter(int32_t page, int32_t slot) {
    return mVersion1 ? mVersion1->ClearMappedParameter(page, slot) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetMappedParameterID(int32_t page, int32_t slot, AAX_IString& outID) const {
    return mVersion1 ? mVersion1->GetMappedParameterID(page, slot, &outID) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::MapParameterID(AAX_CParamID paramID, int32_t page, int32_t slot) {
    return mVersion1 ? mVersion1->MapParameterID(paramID, page, slot) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetNumParametersWithNameVariations(int32_t& outCount) const {
    return mVersion2 ? mVersion2->GetNumParametersWithNameVariations(&outCount) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetNameVariationParameterIDAtIndex(int32_t index, AAX_IString& outID) const {
    return mVersion2 ? mVersion2->GetNameVariationParameterIDAtIndex(index, &outID) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetNumNameVariationsForParameter(AAX_CParamID paramID, int32_t& outCount) const {
    return mVersion2 ? mVersion2->GetNumNameVariationsForParameter(paramID, &outCount)
                     : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetParameterNameVariationAtIndex(AAX_CParamID paramID, int32_t index,
                                                            AAX_IString& outName, int32_t& outLength) const {
    return mVersion2 ? mVersion2->GetParameterNameVariationAtIndex(paramID, index, &outName, &outLength)
                     : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::GetParameterNameVariationOfLength(AAX_CParamID paramID, int32_t length,
                                                             AAX_IString& outName) const {
    return mVersion2 ? mVersion2->GetParameterNameVariationOfLength(paramID, length, &outName)
                     : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::ClearParameterNameVariations() {
    return mVersion2 ? mVersion2->ClearParameterNameVariations() : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::ClearNameVariationsForParameter(AAX_CParamID paramID) {
    return mVersion2 ? mVersion2->ClearNameVariationsForParameter(paramID) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VPageTable::SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString& name,
                                                     int32_t length) {
    return mVersion2 ? mVersion2->SetParameterNameVariation(paramID, &name, length) : AAX_ERROR_UNIMPLEMENTED;
}
