/// Random events, and the values that they lead to.
#ifndef VARNO_TESTS_FORMATS_CLAP_EVENTPLAN_H
#define VARNO_TESTS_FORMATS_CLAP_EVENTPLAN_H

#include "DemoGain_ParameterTable.h"
#include "Shared/GlidingValues.h"
#include "Tests/Formats/CLAP/HostedClap.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// A parameter's value from a frame on.
struct PlannedValue {
    std::int32_t frame;
    std::string parameter; ///< Its identifier in the module.
    double normalized;
};

/// Events, and the same as values that are set at their frames. At 48 kHz.
struct EventPlan {
    std::vector<ClapEvent> events;
    std::vector<PlannedValue> values;
};

/// Makes plans: a model of the glides, which begin at the frames of their events and go on with the steps of
/// the glides that are under way.
class EventPlanner {
public:
    /// Moves a parameter. @param place of kDemoGain_Parameters @param value as hosts have it
    void move(std::int32_t frame, std::size_t place, double value) {
        const SDemoGain_Parameter& row = kDemoGain_Parameters[place];
        mPlan.events.push_back({static_cast<std::uint32_t>(frame), static_cast<clap_id>(place), value});
        if (row.mSteps > static_cast<unsigned>(kMostStepsOfAChoice)) {
            glide(frame, row, static_cast<float>(value));
        } else {
            mPlan.values.push_back(
                {frame, row.mIdentifier, double{static_cast<float>(value / (row.mSteps - 1.0))}});
        }
    }

    EventPlan take() {
        std::ranges::stable_sort(mPlan.values, {}, &PlannedValue::frame);
        return std::move(mPlan);
    }

private:
    void glide(std::int32_t frame, const SDemoGain_Parameter& row, float to) {
        constexpr int kSteps = 30; // 10 ms at 48 kHz
        // What is left of an earlier glide of the parameter does not happen.
        std::erase_if(mPlan.values, [&](const PlannedValue& value) {
            return value.parameter == row.mIdentifier && value.frame >= frame;
        });
        float from = row.mDefault;
        for (const PlannedValue& value : mPlan.values) {
            from = value.parameter == row.mIdentifier ? static_cast<float>(value.normalized) : from;
        }
        if (frame > mLastStep) {
            mGrid = frame;
        }
        const std::int32_t next = frame + kGlideGrainFrames - (frame - mGrid) % kGlideGrainFrames;
        for (int step = 1; step <= kSteps; ++step) {
            const std::int32_t at = step == 1 ? frame : next + (step - 2) * kGlideGrainFrames;
            const float left = static_cast<float>(kSteps - step) / static_cast<float>(kSteps);
            mPlan.values.push_back({at, row.mIdentifier, double{to + (from - to) * left}});
            mLastStep = std::max(mLastStep, at);
        }
    }

    EventPlan mPlan;
    std::int32_t mGrid = 0;      ///< A frame at which all glides step.
    std::int32_t mLastStep = -1; ///< Of all glides so far.
};

/// Events of all parameters of the effect at random frames.
inline EventPlan randomEvents(std::mt19937& random, std::int32_t frames, int count) {
    std::vector<std::int32_t> at;
    for (int i = 0; i < count; ++i) {
        at.push_back(1 + static_cast<std::int32_t>(random() % static_cast<unsigned>(frames - 1)));
    }
    std::ranges::sort(at);
    EventPlanner planner;
    for (const std::int32_t frame : at) {
        const auto place = static_cast<std::size_t>(1 + random() % (std::size(kDemoGain_Parameters) - 1));
        const std::uint32_t steps = kDemoGain_Parameters[place].mSteps;
        const bool canGlide = steps > static_cast<unsigned>(kMostStepsOfAChoice);
        planner.move(frame, place,
                     canGlide ? static_cast<double>(random() % 1000) / 999.0
                              : static_cast<double>(random() % steps));
    }
    return planner.take();
}

} // namespace varno::test

#endif
