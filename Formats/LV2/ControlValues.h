/// Values of control ports on their way to the module.
#ifndef VARNO_FORMATS_LV2_CONTROLVALUES_H
#define VARNO_FORMATS_LV2_CONTROLVALUES_H

#include "Shared/GlidingValues.h"

#include <vector>

namespace varno {

/// Reads the ports at the start of a run. A port's value beyond 0 to 1 is limited to that; one that is not a
/// number counts as not moved. Only the thread that calls run may use it. [audio]
class ControlValues {
public:
    /// @param values receives the ports' values; outlives this object [main]
    explicit ControlValues(GlidingValues& values);

    /// The values of the next `read` are in force at once, without a glide, whatever they were before.
    void restart() noexcept;
    /// Reads which ports have changed since the last run: one for each control of the values, in their order.
    void read(const float* const* ports) noexcept;

private:
    void takeMoved(const float* const* ports) noexcept;

    GlidingValues& mValues;
    std::vector<float> mSeen; ///< The last value of each port.
    bool mIsStarting = true;
};

} // namespace varno

#endif
