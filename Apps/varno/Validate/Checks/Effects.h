/// What the checks of sound, state and parameters share.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_EFFECTS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_EFFECTS_H

#include "Signals/RenderChecker.h"
#include "Signals/Signal.h"
#include "Validate/Check.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace varno::validate {

inline constexpr double kCheckedRateHz = 48000.0;
/// The longest buffer that checks process.
inline constexpr std::int32_t kLongestBuffer = 4096;

/// One effect of the opened plug-in, to make instances of.
struct Effect {
    Plugin& plugin;
    const PluginInfo& info;

    std::unique_ptr<PluginInstance> create(double rateHz = kCheckedRateHz) const {
        return plugin.create(info, rateHz, kLongestBuffer);
    }
};

/// Opens the plug-in, calls the function for each effect with audio on both sides that can be run here, and
/// reports what was done against the rules of the format meanwhile. Skips the check where there is none.
void forEachEffect(Context& context, const std::function<void(const Effect& effect)>& check);

/// A failure of a module, whose architecture promises what was expected; something to know of a plug-in of
/// another format.
void failModule(Context& context, const std::string& seen, const std::string& expected);

/// The instance as something that processes buffers.
signals::BufferProcessor processorOf(PluginInstance& instance);

/// Noise and drums, loud and soft, for the inputs of an effect.
signals::Signal music(const Effect& effect, std::size_t frames, std::uint64_t seed);

/// Renders through an instance, the outputs being those of the effect.
signals::RenderOutcome render(const Effect& effect, PluginInstance& instance, const signals::Signal& input,
                              signals::RenderPlan plan = {});

/// The largest magnitude; infinite where a sample is no number.
float largestOf(const signals::Signal& signal);

/// Whether two new instances give the same samples.
bool isRepeatable(const Effect& effect, const signals::Signal& input);

/// Values for all parameters, in their order.
using ValueVector = std::vector<double>;
/// One of a parameter's values at random: of its steps, or any.
double randomValue(const Parameter& parameter, std::mt19937_64& random);
/// Of every parameter. Those of a bypass are left at their default, so that there is sound to compare.
ValueVector randomValues(const PluginInstance& instance, std::mt19937_64& random);
void setAll(PluginInstance& instance, const ValueVector& values);
ValueVector allValues(PluginInstance& instance);

} // namespace varno::validate

#endif
