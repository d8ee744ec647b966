// The fixture as an LV2 binary; faulty-gain.ttl describes it.
#include "Tests/Apps/varno/Validate/Formats/FaultyEditor.h"
#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <lv2/atom/atom.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/state/state.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>
#include <optional>

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
    ++fixtureSound().instances;
    auto* const made = new FaultyLv2{.gain = FaultyGain(rateHz)};
    made->stateKey = map->map(map->handle, kStateKey);
    made->chunkType = map->map(map->handle, LV2_ATOM__Chunk);
    return made;
}

// The host of the window that was closed last.
struct LateCall {
    LV2UI_Write_Function write;
    LV2UI_Controller controller;
};
std::optional<LateCall> gLate;

void callLate() {
    if (gLate && isPlanted("editor-writes-late")) {
        const float value = 0.5F;
        gLate->write(gLate->controller, kGainIn, sizeof value, 0, &value);
    }
}

void run(LV2_Handle handle, std::uint32_t frames) {
    FaultyLv2& self = selfOf(handle);
    fixtureSound().count();
    callLate();
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
    .activate =
        [](LV2_Handle handle) {
            fixtureSound().isActive = true;
            selfOf(handle).gain.reset();
        },
    .run = run,
    .deactivate = [](LV2_Handle) { fixtureSound().isActive = false; },
    .cleanup =
        [](LV2_Handle handle) {
            --fixtureSound().instances;
            delete &selfOf(handle);
        },
    .extension_data = extensionData};

struct FaultyWindow {
    LateCall host;
    FaultyEditor editor;
};

FaultyWindow& windowOf(LV2UI_Handle handle) {
    return *static_cast<FaultyWindow*>(handle);
}

double scaleOf(const LV2_Feature* const* features) {
    const auto* const map = featureOf<LV2_URID_Map>(features, LV2_URID__map);
    const auto* option = featureOf<LV2_Options_Option>(features, LV2_OPTIONS__options);
    const LV2_URID wanted = map->map(map->handle, LV2_UI__scaleFactor);
    for (; option != nullptr && option->key != 0; ++option) {
        if (option->key == wanted) {
            return static_cast<double>(*static_cast<const float*>(option->value));
        }
    }
    return 1.0;
}

LV2UI_Handle openWindow(const LV2UI_Descriptor*, const char*, const char*, LV2UI_Write_Function write,
                        LV2UI_Controller controller, LV2UI_Widget* widget,
                        const LV2_Feature* const* features) {
    const auto* const resize = featureOf<LV2UI_Resize>(features, LV2_UI__resize);
    const auto* const touch = featureOf<LV2UI_Touch>(features, LV2_UI__touch);
    const auto parent = reinterpret_cast<std::uintptr_t>(featureOf<void>(features, LV2_UI__parent));
    *widget = nullptr;
    return new FaultyWindow{
        {write, controller},
        {{[resize](int width, int height) { resize->ui_resize(resize->handle, width, height); },
          [touch](bool isTouched) { touch->touch(touch->handle, kGainIn, isTouched); },
          [write, controller](double value) {
              const auto number = static_cast<float>(value);
              write(controller, kGainIn, sizeof number, 0, &number);
          }},
         static_cast<std::uint32_t>(parent),
         scaleOf(features)}};
}

void closeWindow(LV2UI_Handle handle) {
    gLate = windowOf(handle).host;
    delete &windowOf(handle);
}

void portEvent(LV2UI_Handle handle, std::uint32_t port, std::uint32_t /*size*/, std::uint32_t /*protocol*/,
               const void* value) {
    if (port == kGainIn) {
        windowOf(handle).editor.told(static_cast<double>(*static_cast<const float*>(value)));
    }
}

const void* windowExtension(const char* uri) {
    static constexpr LV2UI_Idle_Interface kIdle = {[](LV2UI_Handle handle) {
        windowOf(handle).editor.idle();
        return 0;
    }};
    return std::strcmp(uri, LV2_UI__idleInterface) == 0 ? &kIdle : nullptr;
}

constexpr LV2UI_Descriptor kWindow = {"urn:varno:test:faulty-gain#ui", openWindow, closeWindow, portEvent,
                                      windowExtension};

} // namespace
} // namespace varno::fixture

LV2_SYMBOL_EXPORT const LV2UI_Descriptor* lv2ui_descriptor(std::uint32_t index) {
    return index == 0 ? &varno::fixture::kWindow : nullptr;
}

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(std::uint32_t index) {
    return index == 0 ? &varno::fixture::kDescriptor : nullptr;
}
