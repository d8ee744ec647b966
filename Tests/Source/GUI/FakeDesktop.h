/// A desktop whose events a test triggers.
#ifndef VARNO_TESTS_SOURCE_GUI_FAKEDESKTOP_H
#define VARNO_TESTS_SOURCE_GUI_FAKEDESKTOP_H

#include "AAX_Errors.h"
#include "AAX_IACFDesktop.h"
#include "Tests/Support/FakeUnknown.h"

#include <fcntl.h>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace varno::test {

class FakeDesktop : public FakeUnknown<AAX_IACFDesktop> {
public:
    AAX_Result GetScale(double* outScale) override {
        *outScale = scale;
        return result;
    }
    AAX_Result GetKnobMode(std::int32_t* outMode) override {
        *outMode = knobMode;
        return result;
    }
    AAX_Result WatchDescriptor(std::int32_t descriptor, AAX_CWakeProc proc, void* context) override {
        mWatches[{descriptor, context}] = proc;
        return result;
    }
    AAX_Result UnwatchDescriptor(std::int32_t descriptor, void* context) override {
        sawClosedDescriptor |= ::fcntl(descriptor, F_GETFD) == -1;
        mWatches.erase({descriptor, context});
        return result;
    }
    AAX_Result StartTimer(std::uint32_t periodMs, AAX_CWakeProc proc, void* context) override {
        mTimers[context] = {periodMs, proc};
        return result;
    }
    AAX_Result StopTimer(void* context) override {
        mTimers.erase(context);
        return result;
    }

    /// The descriptors that are watched by anybody.
    std::set<std::int32_t> descriptors() const {
        std::set<std::int32_t> found;
        for (const auto& [watch, proc] : mWatches) {
            found.insert(watch.first);
        }
        return found;
    }
    /// The periods of all timers, in milliseconds.
    std::vector<std::uint32_t> periods() const {
        std::vector<std::uint32_t> found;
        for (const auto& [context, timer] : mTimers) {
            found.push_back(timer.first);
        }
        return found;
    }

    void wakeDescriptor(std::int32_t descriptor) {
        const auto watches = mWatches;
        for (const auto& [watch, proc] : watches) {
            if (watch.first == descriptor) {
                proc(watch.second);
            }
        }
    }
    void wakeTimers() {
        const auto timers = mTimers;
        for (const auto& [context, timer] : timers) {
            timer.second(context);
        }
    }

    double scale = 1.0;
    std::int32_t knobMode = AAX_eKnobMode_Default;
    AAX_Result result = AAX_SUCCESS;
    /// Whether a watch was ended only after its file was closed, when a host's event loop may have failed on
    /// it already.
    bool sawClosedDescriptor = false;

private:
    std::map<std::pair<std::int32_t, void*>, AAX_CWakeProc> mWatches;
    std::map<void*, std::pair<std::uint32_t, AAX_CWakeProc>> mTimers;
};

} // namespace varno::test

#endif
