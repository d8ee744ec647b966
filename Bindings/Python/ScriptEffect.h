/// The effect as scripts use it: made, set and given sound by one thread at a time.
#ifndef VARNO_BINDINGS_PYTHON_SCRIPTEFFECT_H
#define VARNO_BINDINGS_PYTHON_SCRIPTEFFECT_H

#include "DemoGain_ParameterTable.h"
#include "Host/Instance.h"
#include "Host/Oversampling/Oversampling.h"
#include "Surround/Settings/WrittenValue.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace varno {

/// Sound for an effect: one pointer per channel, each to `frames` samples, borrowed. An output is the input
/// of the same channel or has no sample in common with any input.
struct Sound {
    std::vector<const float*> inputs;
    std::vector<float*> outputs;
    std::int64_t frames = 0;
};

/// A second thread has called an effect.
class EffectInUse : public std::runtime_error {
public:
    EffectInUse();
};

/// An instance of the effect that this binary is linked with. All calls may come from any thread, one at a
/// time: whoever makes one holds a Use. std::invalid_argument is thrown for what the caller gave: one line
/// with what was found and what was expected.
class ScriptEffect {
public:
    /// @param rateHz 16,000 to 384,000 @param channels 1 or 2 @param quality "1x", "2x", "4x" or "8x"
    /// @throws std::invalid_argument; HostError where the effect cannot be made
    ScriptEffect(double rateHz, std::int32_t channels, const std::string& quality);
    ScriptEffect(const ScriptEffect&) = delete;
    ScriptEffect& operator=(const ScriptEffect&) = delete;
    ~ScriptEffect();

    /// Permission to call an effect, for as long as it lives.
    class Use {
    public:
        /// @throws EffectInUse while there is another one
        explicit Use(ScriptEffect& effect);
        Use(Use&& other) noexcept;
        Use& operator=(Use&&) = delete;
        ~Use();

    private:
        ScriptEffect* mEffect;
    };

    // Fixed, or readable while another thread processes.

    double rateHz() const { return instance().setup().sampleRateHz; }
    std::int32_t channels() const { return instance().setup().channels; }
    std::int32_t factor() const { return mOversampling->factor(); }
    std::int32_t latencyFrames() const { return mOversampling->latencyFrames(); }
    /// The highest values since the start or the last reset.
    const MeterBank& meters() const { return instance().meters(); }
    /// The name of a meter: "GRL".
    std::string meterName(std::size_t tap) const { return instance().effect().meters.at(tap).name; }

    // With a Use.

    /// The value of a parameter, 0 to 1.
    double normalized(const SDemoGain_Parameter& row) const;
    /// The same in its unit: dB, percent, milliseconds, the number of a choice from 0.
    double trueValue(const SDemoGain_Parameter& row) const;
    /// Sets all of them or, where one is refused, none. @throws std::invalid_argument
    void set(std::vector<ParameterText> texts);
    /// The settings as the text of a preset.
    std::string presetText();
    /// @throws std::invalid_argument where it is none @param source of the text, for messages
    void setPresetText(const std::string& text, const std::string& source);
    /// The settings as the record that hosts keep.
    std::vector<std::byte> state();
    /// @throws std::invalid_argument where it is none of this effect; nothing has changed then
    void setState(std::span<const std::byte> bytes);
    /// Puts the sound back to its start; the settings stay.
    void reset();
    /// Processes the next frames. @param goOn called every few seconds of sound; what it throws ends the work
    void process(const Sound& sound, const std::function<void()>& goOn);

    /// process() of several effects, side by side where they are alike. @param effects each one once
    /// @param sounds one for each
    static void processTogether(std::span<ScriptEffect* const> effects, std::span<const Sound> sounds,
                                const std::function<void()>& goOn);

private:
    const Instance& instance() const { return *mInstance; }

    std::unique_ptr<Instance> mInstance;
    std::unique_ptr<Oversampling> mOversampling;
    std::atomic<bool> mIsInUse{false};
};

} // namespace varno

#endif
