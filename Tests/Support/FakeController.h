/// The host's side of a running instance, for tests of the data model.
#ifndef VARNO_TESTS_SUPPORT_FAKECONTROLLER_H
#define VARNO_TESTS_SUPPORT_FAKECONTROLLER_H

#include "AAX_IACFController.h"
#include "Tests/Support/FakeUnknown.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <map>
#include <vector>

namespace varno::test {

/// Tells a sample rate and meters and keeps what is posted. Everything else is unimplemented.
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
    std::deque<AAX_Result> postResults;  ///< What the next posts answer; success when none is left.
};

} // namespace varno::test

#endif
