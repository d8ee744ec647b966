#include "AAX_Exports.h"

#include "AAX_Init.h"

namespace {

// Runs the body of an entry point; an exception becomes a code.
template<class Body>
ACFRESULT Contained(Body body) {
    try {
        return body();
    } catch (...) {
        return ACF_E_UNEXPECTED;
    }
}

} // namespace

ACFRESULT ACFRegisterPlugin(IACFUnknown* host, IACFPluginDefinition** outDefinition) {
    return Contained([&] { return AAXRegisterPlugin(host, outDefinition); });
}

ACFRESULT ACFRegisterComponent(IACFUnknown* host, uint32_t index, IACFComponentDefinition** outDefinition) {
    return AAXRegisterComponent(host, index, outDefinition);
}

ACFRESULT ACFGetClassFactory(IACFUnknown* host, const acfUID& classID, const acfUID& iid, void** outFactory) {
    return AAXGetClassFactory(host, classID, iid, outFactory);
}

ACFRESULT ACFCanUnloadNow(IACFUnknown* host) {
    return Contained([&] { return AAXCanUnloadNow(host); });
}

ACFRESULT ACFStartup(IACFUnknown* host) {
    return Contained([&] { return AAXStartup(host); });
}

ACFRESULT ACFShutdown(IACFUnknown* host) {
    return Contained([&] { return AAXShutdown(host); });
}

ACFRESULT ACFGetSDKVersion(uint64_t* outVersion) {
    return AAXGetSDKVersion(outVersion);
}
