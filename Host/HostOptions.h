/// What a host offers to a module, and how its instances run.
#ifndef VARNO_HOST_HOSTOPTIONS_H
#define VARNO_HOST_HOSTOPTIONS_H

#include "AAX.h"
#include "Host/ContractMonitor.h"
#include "Host/ModuleDescription.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// A range of sample rates in Hz, both ends included. The default range is wider than what audio devices
/// have: a front end that knows what its effect needs gives a narrower one.
struct SampleRateRange {
    double lowestHz = 1.0;
    double highestHz = 1.0e7; // NOLINT(readability-magic-numbers): the member names what it is
};

/// One line that states why a rate is refused; nothing when it lies in the range. All front ends use this
/// text. [any]
std::optional<std::string> sampleRateRefusal(const SampleRateRange& range, double sampleRateHz);

/// A coefficient per sample that a module does not scale to the rate while another field has certain values.
struct UnscaledCoefficient {
    AAX_CFieldIndex field = 0;  ///< A data-in port of one float, 0 to 1.
    AAX_CFieldIndex choice = 0; ///< Another one, which decides.
    bool (*isUnscaled)(float choice) = nullptr;
};

/// A level that a module averages by a coefficient per sample that it does not scale to the rate.
struct AveragedLevel {
    std::size_t tap = 0;         ///< The meter that the average raises.
    std::size_t stateOffset = 0; ///< Bytes before the average, a float, in the private state.
    double coefficient = 0.0;    ///< What remains of the average after a sample, 0 to 1.
};

/// What a host that oversamples knows of its module; it knows no field by itself.
struct OversamplingRules {
    std::vector<UnscaledCoefficient> coefficients;
    /// The private-data field of which instances at two rates share parts.
    AAX_CFieldIndex stateField = 0;
    struct Bytes {
        std::size_t offset = 0;
        std::size_t size = 0;
    };
    /// Those parts.
    std::vector<Bytes> carriedState;
    std::vector<AveragedLevel> levels;
};

/// The rate in Hz where nothing else decides.
inline constexpr double kDefaultSampleRateHz = 48000.0;

/// How an instance runs.
struct InstanceSetup {
    std::int32_t channels = 2;                  ///< Inputs and outputs: chooses the variant.
    double sampleRateHz = kDefaultSampleRateHz; ///< See HostOptions::sampleRates.
    std::int32_t maximumFrames = 512;           ///< Largest buffer passed to the routine, at least 1.
    bool offline = false;                       ///< What the controller reports about rendering offline.
    std::string effectID{};                     ///< Which effect of the module; empty for the first.
    /// How many times the sound's own rate sampleRateHz is: above 1, OversamplingRules apply.
    std::int32_t oversampling = 1;
    /// Coefficients come into force this many frames after the start of the buffer that they arrive before,
    /// but for the first ones. An instance above 0 is in no InstanceGroup.
    std::int32_t coefficientDelayFrames = 0;
};

/// What the host reports about one of its features.
struct HostFeature {
    acfUID id{};
    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
    std::optional<Properties> properties; ///< Absent: asking for them fails.
};

/// Everything optional about a host. The default offers all that there is.
struct HostOptions {
    /// Interfaces that this host does not offer, as a host of an earlier version: QueryInterface does not
    /// find them, and no component is made for them.
    std::vector<acfIID> withheld;
    /// Features that the host has an answer for.
    std::vector<HostFeature> features = {
        {AAX_FeatureUID_ExtendedStemFormats, AAX_eSupportLevel_Unsupported, {}}};
    /// The sample rates at which the module's effects are used; an instance at another rate is refused.
    SampleRateRange sampleRates;
    /// For instances that run at a multiple of the sound's rate.
    OversamplingRules oversampling;
    /// The folder of a linked-in module's resources; a bundle has its own.
    std::filesystem::path resources;
    /// Called with every trace line, on the thread of the module that writes it; may be empty.
    std::function<void(std::int32_t priority, const char* message)> traceSink;
    /// Receives violations; a new one is made when null.
    std::shared_ptr<ContractMonitor> monitor;

    /// Whether the interface is withheld. The root interface never is. [any]
    bool withholds(const acfIID& iid) const;
};

} // namespace varno

#endif
