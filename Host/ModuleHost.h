/// What a module knows as its host.
#ifndef MODULEHOST_H
#define MODULEHOST_H

#include "AAX_IACFCollection.h"
#include "ACF/IACFPluginDefinition.h"
#include "HostComponentFactory.h"
#include "HostDescriptionHost.h"
#include "HostObject.h"
#include "ModuleDescription.h"

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
    AAX_Result SetPackageVersion(uint32_t version) override;
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
