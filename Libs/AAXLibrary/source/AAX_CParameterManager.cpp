#include "AAX_CParameterManager.h"

#include "AAX_IParameter.h"

#include <bit>
#include <cstring>

AAX_CParameterManager::AAX_CParameterManager() = default;

AAX_CParameterManager::~AAX_CParameterManager() = default;

void AAX_CParameterManager::Initialize(AAX_IAutomationDelegate* automationDelegate) {
    mAutomationDelegate = automationDelegate;
}

bool AAX_CParameterManager::AddParameter(AAX_IParameter* parameter) {
    if (parameter == nullptr || GetParameterByID(parameter->Identifier()) != nullptr) {
        return false;
    }
    parameter->SetAutomationDelegate(mAutomationDelegate);
    mParameters.reserve(std::bit_ceil(mParameters.size() + 1)); // doubles, as a vector that grows by itself
    mParametersByID.emplace(parameter->Identifier(), parameter);
    mParameters.emplace_back(parameter); // the room is reserved: nothing throws once it is taken over
    return true;
}

void AAX_CParameterManager::RemoveAllParameters() {
    mParametersByID.clear();
    mParameters.clear();
}

AAX_IParameter* AAX_CParameterManager::Find(AAX_CParamID identifier) const {
    if (identifier == nullptr) {
        return nullptr;
    }
    const auto found = mParametersByID.find(identifier);
    return found != mParametersByID.end() ? found->second : nullptr;
}

int32_t AAX_CParameterManager::GetParameterIndex(AAX_CParamID identifier) const {
    if (identifier == nullptr) {
        return -1;
    }
    for (int32_t index = 0; index < NumParameters(); ++index) {
        if (std::strcmp(GetParameter(index)->Identifier(), identifier) == 0) {
            return index;
        }
    }
    return -1;
}

AAX_IParameter* AAX_CParameterManager::At(int32_t index) const {
    return index >= 0 && index < NumParameters() ? mParameters[static_cast<std::size_t>(index)].get()
                                                 : nullptr;
}
