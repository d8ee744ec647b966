/// What a host offers to a module.
#ifndef VARNO_HOST_HOSTOPTIONS_H
#define VARNO_HOST_HOSTOPTIONS_H

#include "AAX.h"
#include "Host/ContractMonitor.h"
#include "Host/ModuleDescription.h"
#include "Host/SampleRateRange.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace varno {

/// What the host tells about one of its features.
struct HostFeature {
    acfUID id{};
    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
    std::optional<Properties> properties; ///< Absent: asking for them fails.
};

/// Failures of the description that a test can order.
struct DescriptionFaults {
    bool noEffectDescriptor = false;    ///< NewDescriptor fails.
    bool noComponentDescriptor = false; ///< NewComponentDescriptor fails.
    std::int32_t effectPropertyMaps =
        -1; ///< Property maps that an effect descriptor makes before it fails; -1: any number.
    bool noComponentPropertyMap = false;   ///< The component descriptor's NewPropertyMap fails.
    AAX_Result addEffect = AAX_SUCCESS;    ///< A failure that AddEffect answers with.
    AAX_Result addComponent = AAX_SUCCESS; ///< A failure that AddComponent answers with.
    AAX_Result addProcess = AAX_SUCCESS;   ///< A failure that both process registrations answer with.
};

/// Everything optional about a host. The default offers all that there is.
struct HostOptions {
    /// Interfaces that no object of this host answers to and no component is made for.
    std::vector<acfIID> withheld;
    /// Features that the host knows.
    std::vector<HostFeature> features = {
        {AAX_FeatureUID_ExtendedStemFormats, AAX_eSupportLevel_Unsupported, {}}};
    DescriptionFaults faults;
    /// What the controller tells as sample rate instead of the true one.
    std::optional<float> toldSampleRateHz;
    /// The sample rates at which the module's effects are used; an instance at another rate is refused.
    SampleRateRange sampleRates;
    /// The folder of a linked-in module's resources; a bundle has its own.
    std::filesystem::path resources;
    /// Takes every trace line as it comes, on the thread that it comes from; empty for none.
    std::function<void(std::int32_t priority, const char* message)> traceSink;
    /// Where violations go; made anew when null.
    std::shared_ptr<ContractMonitor> monitor;

    /// Whether the interface is withheld. The root interface never is. [any]
    bool withholds(const acfIID& iid) const;
};

} // namespace varno

#endif
