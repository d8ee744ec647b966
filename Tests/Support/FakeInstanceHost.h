/// The object handed to a data model's Initialize, with controller and automation, for tests.
#ifndef VARNO_TESTS_SUPPORT_FAKEINSTANCEHOST_H
#define VARNO_TESTS_SUPPORT_FAKEINSTANCEHOST_H

#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IACFController.h"
#include "Tests/Support/FakeUnknown.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Reports a sample rate and meters, and keeps what is posted. Everything else is unimplemented.
class FakeController : public FakeUnknown<AAX_IACFController> {
public:
    /// One posted packet.
    struct Post {
        AAX_CFieldIndex field;
        std::vector<char> bytes;

        /// The payload as a T of the same size.
        template<class T>
        T as() const {
            T value{};
            std::memcpy(&value, bytes.data(), std::min(sizeof(value), bytes.size()));
            return value;
        }
    };

    /// The indices of the fields posted so far, in order.
    std::vector<AAX_CFieldIndex> fields() const {
        std::vector<AAX_CFieldIndex> result;
        for (const Post& post : posts) {
            result.push_back(post.field);
        }
        return result;
    }
    /// The latest packet of a field; empty when there is none.
    Post latest(AAX_CFieldIndex field) const {
        Post result{field, {}};
        for (const Post& post : posts) {
            result = post.field == field ? post : result;
        }
        return result;
    }

    AAX_Result GetSampleRate(float* outRateHz) const override {
        *outRateHz = sampleRate;
        return sampleRateResult;
    }
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) override {
        const auto* const first = static_cast<const char*>(payload);
        posts.push_back({field, std::vector<char>(first, first + size)});
        if (postResults.empty()) {
            return AAX_SUCCESS;
        }
        const AAX_Result result = postResults.front();
        postResults.pop_front();
        return result;
    }

    AAX_Result GetEffectID(AAX_IString*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetInputStemFormat(AAX_EStemFormat*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetOutputStemFormat(AAX_EStemFormat*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetSignalLatency(std::int32_t*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetCycleCount(AAX_EProperty, std::int32_t*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetTODLocation(AAX_CTimeOfDay*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result SetSignalLatency(std::int32_t) override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result SetCycleCount(AAX_EProperty*, std::int32_t*, std::int32_t) override {
        return AAX_ERROR_UNIMPLEMENTED;
    }
    AAX_Result GetCurrentMeterValue(AAX_CTypeID meterID, float* outValue) const override {
        const auto meter = meters.find(meterID);
        if (meter == meters.end()) {
            return AAX_ERROR_UNIMPLEMENTED;
        }
        *outValue = meter->second;
        return AAX_SUCCESS;
    }
    AAX_Result GetMeterPeakValue(AAX_CTypeID, float*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result ClearMeterPeakValue(AAX_CTypeID) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetMeterClipped(AAX_CTypeID, std::uint8_t*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result ClearMeterClipped(AAX_CTypeID) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetMeterCount(std::uint32_t*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetNextMIDIPacket(AAX_CFieldIndex*, AAX_CMidiPacket*) override {
        return AAX_ERROR_UNIMPLEMENTED;
    }

    float sampleRate = 48000.0F; ///< Hz.
    AAX_Result sampleRateResult = AAX_SUCCESS;
    std::map<AAX_CTypeID, float> meters; ///< Those that can be read, with their values.
    std::vector<Post> posts;             ///< In the order of their arrival.
    std::deque<AAX_Result> postResults;  ///< Results of the next posts; success when none is left.
};

/// Keeps the value requests, which the test answers, and records every call.
class FakeAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID paramID) override { return note("register", paramID); }
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override { return note("unregister", paramID); }
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override { return note("touch", paramID); }
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override { return note("release", paramID); }
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        requests.emplace_back(paramID, normalizedValue);
        return note("request", paramID, normalizedValue);
    }
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override {
        return note("current", paramID, normalizedValue);
    }

    /// The calls since this was last called, such as "touch Gain" and "request Gain 0.25".
    std::vector<std::string> takeCalls() { return std::exchange(mCalls, {}); }

    std::vector<std::pair<std::string, double>> requests; ///< In the order of their arrival.

private:
    template<class... Values>
    AAX_Result note(const char* call, const char* paramID, Values... values) {
        std::ostringstream text;
        text << call << " " << paramID;
        ((text << " " << values), ...);
        mCalls.push_back(text.str());
        return AAX_SUCCESS;
    }

    std::vector<std::string> mCalls;
};

/// Calls the data model back within each value request, before it returns.
class ImmediateAutomation : public FakeAutomation {
public:
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        FakeAutomation::PostSetValueRequest(paramID, normalizedValue);
        onRequest(paramID, normalizedValue);
        return AAX_SUCCESS;
    }

    std::function<void(AAX_CParamID, double)> onRequest = [](AAX_CParamID, double) {};
};

/// Offers a controller and an automation of its own.
class FakeInstanceHost : public FakeHost {
public:
    FakeInstanceHost() {
        offer(IID_IAAXControllerV1, &controller);
        offer(IID_IAAXAutomationDelegateV1, &automation);
    }

    /// References that others hold to the host or to its objects.
    std::int32_t allReferences() const {
        return references() + controller.references() + automation.references();
    }

    FakeController controller;
    FakeAutomation automation;
};

/// Keeps the value of the last request, which the test answers. Allocates nothing.
class QuietAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result UnregisterParameter(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostTouchRequest(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostReleaseRequest(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostSetValueRequest(AAX_CParamID /*paramID*/, double normalizedValue) override {
        requested = normalizedValue;
        return AAX_SUCCESS;
    }
    AAX_Result PostCurrentValue(AAX_CParamID /*paramID*/, double /*normalizedValue*/) override {
        return AAX_SUCCESS;
    }

    double requested = -1.0;
};

/// Keeps the last packet. Allocates nothing.
class QuietController : public FakeController {
public:
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) override {
        lastField = field;
        std::memcpy(lastPayload.data(), payload, std::min<std::size_t>(size, lastPayload.size()));
        return AAX_SUCCESS;
    }

    AAX_CFieldIndex lastField = -1;
    std::array<char, sizeof(double)> lastPayload{};
};

/// A host that allocates nothing, for tests of what a data model allocates.
class QuietHost : public FakeHost {
public:
    QuietHost() {
        offer(IID_IAAXControllerV1, &controller);
        offer(IID_IAAXAutomationDelegateV1, &automation);
    }

    QuietController controller;
    QuietAutomation automation;
};

} // namespace varno::test

#endif
