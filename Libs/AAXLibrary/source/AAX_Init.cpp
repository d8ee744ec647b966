#include "AAX_Init.h"

#include "AAX_CHostServices.h"
#include "AAX_Exception.h"
#include "AAX_Guarded.h"
#include "AAX_VCollection.h"
#include "ACF/CACFUnknown.h"

AAX_Result AAXRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** outDefinition) {
    return AAX_Guarded("AAXRegisterPlugin", [&] {
        AAX_VCollection collection(host);
        AAX_CheckedResult result(GetEffectDescriptions(&collection));
        *outDefinition = nullptr;
        auto definition =
            ACFPtr<IACFPluginDefinition>::Query(collection.HostDefinition(), IID_IACFPluginDefinition);
        if (!definition) {
            result = AAX_ERROR_NULL_OBJECT;
        }
        *outDefinition = definition.Detach();
        return result.CurrentResult();
    });
}

AAX_Result AAXRegisterComponent(IACFUnknown* /*host*/, uint32_t /*index*/,
                                IACFComponentDefinition** outDefinition) {
    *outDefinition = nullptr;
    return AAX_SUCCESS;
}

AAX_Result AAXGetClassFactory(IACFUnknown* /*host*/, const acfCLSID& /*classID*/, const acfIID& /*iid*/,
                              void** outFactory) {
    *outFactory = nullptr;
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAXCanUnloadNow(IACFUnknown* /*host*/) {
    return CACFUnknown::GetActiveObjectCount();
}

AAX_Result AAXStartup(IACFUnknown* host) {
    AAX_CHostServices::Set(host);
    return AAX_SUCCESS;
}

AAX_Result AAXShutdown(IACFUnknown* /*host*/) {
    AAX_CHostServices::Set(nullptr);
    return AAX_SUCCESS;
}

AAX_Result AAXGetSDKVersion(uint64_t* outVersion) {
    *outVersion = kAAX_SDKVersion;
    return AAX_SUCCESS;
}
