#include "AAX_CHostServices.h"
#include "AAX_Exception.h"

#include <utility>

AAX_CheckedResult::AAX_CheckedResult(AAX_Result result)
    : mCurrentResult(result) {
    ResetAcceptedResults();
    Check();
}

AAX_CheckedResult& AAX_CheckedResult::operator=(AAX_Result result) {
    mCurrentResult = result;
    Check();
    return *this;
}

void AAX_CheckedResult::Check() {
    if (mAcceptedResults.contains(mCurrentResult)) {
        return;
    }
    const AAX::Exception::ResultError error(mCurrentResult);
    mLastError = std::exchange(mCurrentResult, AAX_SUCCESS);
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_Normal, "AAX_CheckedResult - throwing %s", error.What());
    throw error;
}

void AAX_CheckedResult::ResetAcceptedResults() {
    mAcceptedResults = {AAX_SUCCESS};
}
