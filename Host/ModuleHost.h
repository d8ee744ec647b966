/// What a module knows as its host.
#ifndef VARNO_HOST_MODULEHOST_H
#define VARNO_HOST_MODULEHOST_H

#include "AAX_IACFCollection.h"
#include "ACF/IACFPluginDefinition.h"
#include "Host/HostComponentFactory.h"
#include "Host/HostDescriptionHost.h"
#include "Host/HostObject.h"
#include "Host/ModuleDescription.h"

#include <utility>

namespace varno {

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
    /// Hands over what has been described so far and forgets it.
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
