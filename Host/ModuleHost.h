/// The host object of a module: collection, features, components and services.
#ifndef VARNO_HOST_MODULEHOST_H
#define VARNO_HOST_MODULEHOST_H

#include "AAX_IACFCollection.h"
#include "AAX_IACFDescriptionHost.h"
#include "AAX_IACFHostServices.h"
#include "ACF/IACFComponentFactory.h"
#include "ACF/IACFPluginDefinition.h"
#include "Host/HostObject.h"
#include "Host/ModuleDescription.h"

#include <utility>

namespace varno {

/// Host services versions 1 to 3: everything goes to the monitor, trace lines to the options' sink too. [any]
class HostServices : public HostObject<AAX_IACFHostServices_V3> {
public:
    explicit HostServices(std::shared_ptr<HostContext> context);

    AAX_Result Trace(std::int32_t priority, const char* message) override;
    AAX_Result StackTrace(std::int32_t tracePriority, std::int32_t stackTracePriority,
                          const char* message) override;
    AAX_Result HandleAssertFailure(const char* file, std::int32_t line, const char* note,
                                   std::int32_t flags) override;

protected:
    void* interfaceFor(const acfIID& iid) override;
};

/// Makes host services and page tables. Components are not aggregated: an outer object gives
/// ACF_E_NOINTERFACE. [main]
class HostComponentFactory final : public Facet<IACFComponentFactory> {
public:
    HostComponentFactory(IACFUnknown& owner, std::shared_ptr<HostContext> context);

    ACFRESULT CreateComponent(IACFUnknown* outer, const acfCLSID& classID, const acfIID& iid,
                              void** outObject) override;

private:
    std::shared_ptr<HostContext> mContext;
};

/// Description host version 1: has the features of the options. [main]
class HostDescriptionHost final : public Facet<AAX_IACFDescriptionHost> {
public:
    HostDescriptionHost(IACFUnknown& owner, std::shared_ptr<HostContext> context);

    AAX_Result AcquireFeatureProperties(const acfUID& featureID, IACFUnknown** outFeatureInfo) override;

private:
    std::shared_ptr<HostContext> mContext;
};

/// The object handed to every entry point: collection version 1, plug-in definition, description host and
/// component factory. [main]
class ModuleHost : public HostObject<AAX_IACFCollection> {
public:
    explicit ModuleHost(std::shared_ptr<HostContext> context);

    AAX_Result NewDescriptor(IACFUnknown** outDescriptor) override;
    AAX_Result AddEffect(const char* effectID, IACFUnknown* descriptor) override;
    AAX_Result SetManufacturerName(const char* name) override;
    AAX_Result AddPackageName(const char* name) override;
    AAX_Result SetPackageVersion(std::uint32_t version) override;
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override;
    AAX_Result SetProperties(IACFUnknown* map) override;

    /// What has been described so far.
    const ModuleDescription& description() const { return mDescription; }
    /// Returns and removes what has been described so far.
    ModuleDescription takeDescription() { return std::exchange(mDescription, {}); }

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    class Definition final : public Facet<IACFPluginDefinition> {
    public:
        using Facet::Facet;
    };

    ModuleDescription mDescription;
    Definition mDefinition;
    HostDescriptionHost mDescriptionHost;
    HostComponentFactory mFactory;
};

} // namespace varno

#endif
