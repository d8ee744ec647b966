// The fixture as an LV2 binary; faulty-gain.ttl describes it.
#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <lv2/atom/atom.h>
#include <lv2/core/lv2.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

namespace varno::fixture {
namespace {

constexpr char kStateKey[] = "urn:varno:test:faulty-gain#state";

// In the order of the description.
enum Lv2Port : std::uint32_t {
    kLeftIn,
    kRightIn,
    kLeftOut,
    kRightOut,
    kGainIn,
    kModeIn,
    kEnabledIn,
    kLatencyOut
};

struct FaultyLv2 {
    FaultyGain gain;
    std::array<float*, 8> ports{};
    std::uint32_t stateKey = 0;
    std::uint32_t chunkType = 0;
    bool isRestoring = false;
};

FaultyLv2& selfOf(LV2_Handle handle) {
    return *static_cast<FaultyLv2*>(handle);
}

template<class Data>
const Data* featureOf(const LV2_Feature* const* features, const char* uri) {
    for (; *features != nullptr; ++features) {
        if (std::strcmp((*features)->URI, uri) == 0) {
            return static_cast<const Data*>((*features)->data);
        }
    }
    return nullptr;
}

bool hasFeature(const LV2_Feature* const* features, const char* uri) {
    while (*features != nullptr && std::strcmp((*features)->URI, uri) != 0) {
        ++features;
    }
    return *features != nullptr;
}

LV2_Handle instantiate(const LV2_Descriptor* /*descriptor*/, double rateHz, const char* /*bundle*/,
                       const LV2_Feature* const* features) {
    if (isPlanted("refuses-unknown-features") && hasFeature(features, "urn:varno:unknown")) {
        return nullptr;
    }
    const auto* const map = featureOf<LV2_URID_Map>(features, LV2_URID__map);
    if (map == nullptr) {
        return nullptr;
    }
    auto* const made = new FaultyLv2{.gain = FaultyGain(rateHz)};
    made->stateKey = map->map(map->handle, kStateKey);
    made->chunkType = map->map(map->handle, LV2_ATOM__Chunk);
    return made;
}

void run(LV2_Handle handle, std::uint32_t frames) {
    FaultyLv2& self = selfOf(handle);
    self.gain.values = {*self.ports[kGainIn], std::round(*self.ports[kModeIn]),
                        *self.ports[kEnabledIn] > 0.0F ? 0.0F : 1.0F};
    const std::array<const float*, 2> inputs = {self.ports[kLeftIn], self.ports[kRightIn]};
    const std::array<float*, 2> outputs = {self.ports[kLeftOut], self.ports[kRightOut]};
    self.gain.process(inputs.data(), outputs.data(), frames);
    *self.ports[kLatencyOut] = static_cast<float>(self.gain.latency());
}

LV2_State_Status save(LV2_Handle handle, LV2_State_Store_Function store, LV2_State_Handle state,
                      std::uint32_t, const LV2_Feature* const*) {
    const FaultyLv2& self = selfOf(handle);
    if (self.isRestoring && isPlanted("called-back")) {
        std::abort();
    }
    const auto bytes = self.gain.save();
    return store(state, self.stateKey, bytes.data(), bytes.size(), self.chunkType,
                 LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE);
}

LV2_State_Status restore(LV2_Handle handle, LV2_State_Retrieve_Function retrieve, LV2_State_Handle state,
                         std::uint32_t, const LV2_Feature* const*) {
    FaultyLv2& self = selfOf(handle);
    std::size_t size = 0;
    std::uint32_t type = 0;
    std::uint32_t flags = 0;
    self.isRestoring = true;
    const auto* const bytes =
        static_cast<const std::byte*>(retrieve(state, self.stateKey, &size, &type, &flags));
    self.isRestoring = false;
    const bool isKnown = type == self.chunkType || isPlanted("takes-foreign-states");
    const bool isTaken = bytes != nullptr && isKnown && self.gain.restore({bytes, size});
    if (!isTaken) {
        FaultyGain::refuse();
    }
    return isTaken ? LV2_STATE_SUCCESS : LV2_STATE_ERR_UNKNOWN;
}

const void* extensionData(const char* uri) {
    static constexpr LV2_State_Interface kState = {save, restore};
    const bool isState = std::strcmp(uri, LV2_STATE__interface) == 0;
    return isState || isPlanted("knows-everything") ? &kState : nullptr;
}

constexpr LV2_Descriptor kDescriptor = {
    .URI = "urn:varno:test:faulty-gain",
    .instantiate = instantiate,
    .connect_port = [](LV2_Handle handle, std::uint32_t port,
                       void* data) { selfOf(handle).ports.at(port) = static_cast<float*>(data); },
    .activate = [](LV2_Handle handle) { selfOf(handle).gain.reset(); },
    .run = run,
    .deactivate = nullptr,
    .cleanup = [](LV2_Handle handle) { delete &selfOf(handle); },
    .extension_data = extensionData};

} // namespace
} // namespace varno::fixture

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(std::uint32_t index) {
    return index == 0 ? &varno::fixture::kDescriptor : nullptr;
}
