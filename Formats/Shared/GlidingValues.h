/// Values of parameters on their way to the module.
#ifndef VARNO_FORMATS_SHARED_GLIDINGVALUES_H
#define VARNO_FORMATS_SHARED_GLIDINGVALUES_H

#include "Host/Instance.h"

#include <cstdint>
#include <vector>

namespace varno {

/// How long a continuous value takes from its present value to the one that it moves to. Long enough to join
/// the jumps of a host that moves a value once per buffer of some hundred frames, too short to be heard as
/// lag.
inline constexpr double kGlideSeconds = 0.010;
/// Frames between the steps of a glide: the routine reads its values once per buffer, so a glide divides a
/// run into buffers of this length.
inline constexpr std::int32_t kGlideGrainFrames = 16;
/// A parameter with at most this many steps is a switch or a choice: it has nothing in between and jumps.
inline constexpr std::int32_t kMostStepsOfAChoice = 16;

/// Lets continuous values glide: linearly, in steps of kGlideGrainFrames that continue from run to run. Its
/// controls are all parameters of the instance but the master bypass, in the order of their indices. Only the
/// thread that processes may use it. [audio]
class GlidingValues {
public:
    /// How a control comes to a value.
    enum class Move {
        kAtOnce,
        kGlide,         ///< With the next step of what is gliding already.
        kGlideFromHere, ///< From the next frame on.
    };

    /// No control has a value yet. [main]
    explicit GlidingValues(const Instance& instance);

    /// How many controls there are. [any]
    std::size_t size() const noexcept { return mControls.size(); }
    /// The default of a control's parameter. [any]
    float fallback(std::size_t control) const noexcept { return mControls[control].fallback; }

    /// Moves a control, below size(), to a value, which is limited to 0 to 1. What has nothing in between
    /// comes to it at once. @param value not NaN
    void moveTo(std::size_t control, float value, Move move) noexcept;
    /// Brings every control to where it is moving to.
    void settle() noexcept;
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
        float fallback;
        float from = 0.0F; ///< Where the glide began.
        float target = 0.0F;
        float value = 0.0F; ///< The module's next value.
        std::int32_t stepsLeft = 0;
        bool isUnsent = false;
    };

    void takeStep(Control& control) noexcept;
    void step() noexcept;

    std::vector<Control> mControls;
    std::vector<BufferValue> mOutgoing; ///< Has room for all.
    std::int32_t mStepsOfGlide;
    std::int32_t mFramesToStep = 0;
    bool mIsGliding = false;
    bool mIsAnyUnsent = false;
};

} // namespace varno

#endif
