/// The parameters of the plug-ins as hosts see them: those of the effect, the host's bypass and the quality.
/// Values of knobs are normalized, 0 to 1; those of switches and choices are places, from 0.
#ifndef VARNO_FORMATS_CLAP_PARAMETERLIST_H
#define VARNO_FORMATS_CLAP_PARAMETERLIST_H

#include "CLAP/Clap/Extensions.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_ValueText.h"
#include "Host/Instance.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Numbers of the parameters that the module does not have. Hosts save them: they never change. The bypass
/// has that of the module's own, which is not offered.
inline constexpr clap_id kBypassId = 0;
inline constexpr clap_id kQualityId = 1000;

/// One parameter.
struct ListedParameter {
    enum class Kind { kEffect, kBypass, kQuality };

    Kind kind = Kind::kEffect;
    clap_id id = 0;                           ///< Of the effect's, the index in the module.
    const SDemoGain_Parameter* row = nullptr; ///< Of the effect's.
    std::string name;
    bool isAutomatable = true;
    int steps = 0; ///< 0: continuous.
    float normalizedDefault = 0.0F;

    bool isStepped() const { return steps > 0; }
    /// The highest value; the lowest is 0.
    double highest() const { return isStepped() ? steps - 1.0 : 1.0; }
};

/// The effect's parameters in the order of GlidingValues, then the bypass, then the quality. [any]
class ParameterList {
public:
    /// Of an instance's. [main]
    explicit ParameterList(const Instance& instance);

    std::size_t size() const { return mParameters.size(); }
    const ListedParameter& operator[](std::size_t index) const { return mParameters[index]; }
    /// How many of them the effect has; they come first.
    std::size_t effectParameters() const { return mParameters.size() - 2; }
    std::size_t bypass() const { return mParameters.size() - 2; }
    std::size_t quality() const { return mParameters.size() - 1; }

    /// The place of the parameter with this number; nothing where there is none. Allocates nothing.
    std::optional<std::size_t> indexOf(clap_id id) const noexcept;
    /// The place of one of the effect's; nothing where there is none.
    std::optional<std::size_t> indexOf(std::string_view identifier) const noexcept;

private:
    std::vector<ListedParameter> mParameters;
};

/// A host's value as normalized one; limited to the range. A place that the present value has already leaves
/// it as it is, as the default of the curve, which lies between two. @param value not NaN [any]
float normalizedOf(const ListedParameter& parameter, double value, float present) noexcept;
/// A normalized value as the host's. [any]
double hostValueOf(const ListedParameter& parameter, float normalized) noexcept;

/// A host's value as text in the parameter's unit: "-3.5 dB", "on", "4x", a curve's number.
/// @param settings that times belong to [any]
std::string hostText(const ListedParameter& parameter, double value,
                     const DemoGain_ValueText::Settings& settings);
/// The host's value that a text means; nothing where it is none. [any]
std::optional<double> hostValueFromText(const ListedParameter& parameter, std::string_view text,
                                        const DemoGain_ValueText::Settings& settings);

/// Whether a switch is on. [any]
constexpr bool isOn(float normalized) noexcept {
    return normalized >= 0.5F;
}

/// The factor of oversampling of a normalized quality, and the other way round. [any]
std::int32_t qualityFactor(float normalized) noexcept;
float normalizedQuality(std::int32_t factor) noexcept;

} // namespace varno

#endif
