/// Values of control ports on their way to the module.
#ifndef VARNO_FORMATS_LV2_CONTROLVALUES_H
#define VARNO_FORMATS_LV2_CONTROLVALUES_H

#include "Host/Instance.h"
#include "LV2/Ports.h"

#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// How long a continuous value takes from its present value to that of its port after a jump. Long enough to
/// join the jumps of a host that moves a port once per buffer of some hundred frames, too short to be heard
/// as lag.
inline constexpr double kGlideSeconds = 0.010;
/// Frames between the steps of a glide: the routine reads its values once per buffer, so a glide divides a
/// run into buffers of this length.
inline constexpr std::int32_t kGlideGrainFrames = 16;
/// A parameter with at most this many steps is a switch or a choice: it has nothing in between and jumps.
inline constexpr std::int32_t kMostStepsOfAChoice = 16;

/// Reads the ports at the start of a run, and lets continuous values glide: linearly, in steps of
/// kGlideGrainFrames that continue from run to run. A port's value beyond 0 to 1 is limited to that; one that
/// is not a number counts as not moved. Only the thread that calls run may use it. [audio]
class ControlValues {
public:
    /// The parameters among the ports, in their order. [main]
    ControlValues(const Instance& instance, std::span<const PortInfo> ports);

    /// The values of the next `read` are in force at once, without a glide, whatever they were before.
    void restart() noexcept;
    /// Reads which ports have changed since the last run, one port for each parameter.
    void read(const float* const* ports) noexcept;
    /// Gives the module the values for the next buffer.
    void giveTo(Instance& instance) noexcept;
    /// Frames for which the values last given to the module are valid, at least 1; the largest number where
    /// nothing glides.
    std::int32_t framesHeld() const noexcept;
    /// This many frames, at most `framesHeld`, have been processed.
    void passed(std::int32_t frames) noexcept;

private:
    struct Control {
        std::size_t parameter; ///< Index in Instance::parameters().
        bool canGlide;
        float fallback;    ///< Where the port has held no number yet.
        float from = 0.0F; ///< Where the glide began.
        float target = 0.0F;
        float value = 0.0F; ///< The module's next value.
        std::int32_t stepsLeft = 0;
        bool isUnsent = false;
    };

    void takeMoved(const float* const* ports) noexcept;
    void moveTo(Control& control, float value) noexcept;
    void step() noexcept;

    std::vector<Control> mControls;
    std::vector<float> mSeen;           ///< The last value of each port.
    std::vector<BufferValue> mOutgoing; ///< Has room for all.
    std::int32_t mStepsOfGlide;
    std::int32_t mFramesToStep = 0;
    bool mIsGliding = false;
    bool mIsStarting = true;
    bool mIsAnyUnsent = false;
};

} // namespace varno

#endif
