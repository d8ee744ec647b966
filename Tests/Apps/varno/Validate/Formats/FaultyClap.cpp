// The fixture as a CLAP binary.
#include "CLAP/Clap/Events.h"
#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Gui.h"
#include "CLAP/Clap/Plugin.h"
#include "Tests/Apps/varno/Validate/Formats/FaultyEditor.h"
#include "Tests/Apps/varno/Validate/Formats/FaultyGain.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

namespace varno::fixture {
namespace {

constexpr const char* kFeatures[] = {CLAP_PLUGIN_FEATURE_AUDIO_EFFECT, nullptr};
constexpr clap_plugin_descriptor_t kDescriptor = {
    CLAP_VERSION, "urn:varno:test:faulty-gain", "Faulty Gain", "", "", "", "", "1", "", kFeatures};

struct FaultyClap {
    clap_plugin_t table{};
    const clap_host_t* host = nullptr;
    FaultyGain gain{48000.0};
    bool isLoading = false;
    // The window's.
    double scale = 1.0;
    clap_id timer = CLAP_INVALID_ID;
    std::unique_ptr<FaultyEditor> editor;
    std::vector<clap_event_param_gesture_t> gestures; ///< For the next buffer or flush.
    std::vector<clap_event_param_value_t> changes;
};

FaultyClap& selfOf(const clap_plugin_t* plugin) {
    return *static_cast<FaultyClap*>(plugin->plugin_data);
}

constexpr clap_plugin_audio_ports_t kPorts = {
    [](const clap_plugin_t*, bool) -> std::uint32_t { return 1; },
    [](const clap_plugin_t*, std::uint32_t index, bool, clap_audio_port_info_t* info) {
        *info = {0, "main", CLAP_AUDIO_PORT_IS_MAIN, FaultyGain::kChannels, CLAP_PORT_STEREO, 0};
        return index == 0;
    }};

void takeEvents(FaultyGain& gain, const clap_input_events_t* events) {
    for (std::uint32_t index = 0; index < events->size(events); ++index) {
        const clap_event_header_t* const header = events->get(events, index);
        const auto& event = *reinterpret_cast<const clap_event_param_value_t*>(header);
        const bool isValue =
            header->space_id == CLAP_CORE_EVENT_SPACE_ID && header->type == CLAP_EVENT_PARAM_VALUE;
        if (isValue && event.param_id < kGainParameterCount) {
            const bool isStuck = isPlanted("stuck-parameter") && event.param_id == kMode;
            gain.values[event.param_id] = isStuck ? 0.0F : static_cast<float>(event.value);
        } else if (isPlanted("takes-unknown-events")) {
            gain.values[kGain] = 0.25F;
        }
    }
}

// What the window has written since.
void giveEvents(FaultyClap& self, const clap_output_events_t* out) {
    for (const clap_event_param_gesture_t& gesture : std::exchange(self.gestures, {})) {
        out->try_push(out, &gesture.header);
    }
    for (const clap_event_param_value_t& change : std::exchange(self.changes, {})) {
        out->try_push(out, &change.header);
    }
}

constexpr clap_plugin_params_t kParams = {
    [](const clap_plugin_t*) -> std::uint32_t { return kGainParameterCount; },
    [](const clap_plugin_t*, std::uint32_t index, clap_param_info_t* info) {
        constexpr const char* kNames[] = {"Gain", "Mode", "Bypass"};
        if (index >= kGainParameterCount) {
            return false;
        }
        *info = {};
        info->id = index;
        info->flags = CLAP_PARAM_IS_AUTOMATABLE | (index == kGain ? 0 : CLAP_PARAM_IS_STEPPED) |
                      (index == kBypass ? CLAP_PARAM_IS_BYPASS : 0);
        std::snprintf(info->name, sizeof info->name, "%s", kNames[index]);
        info->max_value = index == kMode ? 2.0 : 1.0;
        info->default_value = index == kGain ? 0.5 : 0.0;
        return true;
    },
    [](const clap_plugin_t* plugin, clap_id id, double* value) {
        FaultyClap& self = selfOf(plugin);
        if (self.isLoading && isPlanted("called-back")) {
            std::abort();
        }
        *value = id < kGainParameterCount ? static_cast<double>(self.gain.values[id]) : 0.0;
        return id < kGainParameterCount || isPlanted("knows-everything");
    },
    [](const clap_plugin_t*, clap_id id, double value, char* text, std::uint32_t capacity) {
        return id < kGainParameterCount &&
               std::snprintf(text, capacity, "%s", gainText(id, value).c_str()) > 0;
    },
    [](const clap_plugin_t*, clap_id id, const char* text, double* value) {
        const auto read = id < kGainParameterCount ? gainValue(id, text) : std::nullopt;
        *value = read.value_or(0.0);
        return read.has_value();
    },
    [](const clap_plugin_t* plugin, const clap_input_events_t* in, const clap_output_events_t* out) {
        takeEvents(selfOf(plugin).gain, in);
        giveEvents(selfOf(plugin), out);
    }};

constexpr clap_plugin_state_t kState = {
    [](const clap_plugin_t* plugin, const clap_ostream_t* stream) {
        const auto state = selfOf(plugin).gain.save();
        return stream->write(stream, state.data(), state.size()) == FaultyGain::kStateSize;
    },
    [](const clap_plugin_t* plugin, const clap_istream_t* stream) {
        FaultyClap& self = selfOf(plugin);
        std::vector<std::byte> bytes(FaultyGain::kStateSize + 1);
        self.isLoading = true;
        const std::int64_t count = stream->read(stream, bytes.data(), bytes.size());
        self.isLoading = false;
        const bool isTaken =
            count >= 0 && self.gain.restore(std::span(bytes).first(static_cast<std::size_t>(count)));
        if (!isTaken) {
            FaultyGain::refuse();
        }
        return isTaken;
    }};

constexpr clap_plugin_latency_t kLatency = {
    [](const clap_plugin_t* plugin) { return selfOf(plugin).gain.latency(); }};

template<class Extension>
const Extension& hostExtension(const FaultyClap& self, const char* id) {
    return *static_cast<const Extension*>(self.host->get_extension(self.host, id));
}

void touchGain(FaultyClap& self, bool isTouched) {
    self.gestures.push_back(clapGestureEvent(kGain, isTouched));
}

void writeGain(FaultyClap& self, double value) {
    self.changes.push_back(clapValueEvent(kGain, value));
}

bool openEditor(const clap_plugin_t* plugin, const clap_window_t* window) {
    FaultyClap& self = selfOf(plugin);
    self.editor = std::make_unique<FaultyEditor>(
        FaultyEditor::Host{[](int, int) {}, [&self](bool isTouched) { touchGain(self, isTouched); },
                           [&self](double value) { writeGain(self, value); }},
        static_cast<std::uint32_t>(window->x11), self.scale);
    constexpr std::uint32_t kPeriodMs = 5;
    return hostExtension<clap_host_timer_support_t>(self, CLAP_EXT_TIMER_SUPPORT)
        .register_timer(self.host, kPeriodMs, &self.timer);
}

void closeEditor(const clap_plugin_t* plugin) {
    FaultyClap& self = selfOf(plugin);
    if (self.editor != nullptr && !isPlanted("editor-leaves-timer")) {
        hostExtension<clap_host_timer_support_t>(self, CLAP_EXT_TIMER_SUPPORT)
            .unregister_timer(self.host, self.timer);
    }
    self.editor.reset();
}

constexpr clap_plugin_gui_t kGui = {
    .is_api_supported =
        [](const clap_plugin_t*, const char* api, bool isFloating) {
            return std::strcmp(api, CLAP_WINDOW_API_X11) == 0 && !isFloating;
        },
    .get_preferred_api = [](const clap_plugin_t*, const char**, bool*) { return false; },
    .create = [](const clap_plugin_t*, const char*, bool) { return true; },
    .destroy = closeEditor,
    .set_scale =
        [](const clap_plugin_t* plugin, double scale) {
            selfOf(plugin).scale = scale;
            return true;
        },
    .get_size =
        [](const clap_plugin_t* plugin, std::uint32_t* width, std::uint32_t* height) {
            *width = static_cast<std::uint32_t>(selfOf(plugin).editor->width());
            *height = static_cast<std::uint32_t>(selfOf(plugin).editor->height());
            return true;
        },
    .can_resize = [](const clap_plugin_t*) { return false; },
    .get_resize_hints = [](const clap_plugin_t*, clap_gui_resize_hints_t*) { return false; },
    .adjust_size = [](const clap_plugin_t*, std::uint32_t*, std::uint32_t*) { return false; },
    .set_size = [](const clap_plugin_t*, std::uint32_t, std::uint32_t) { return false; },
    .set_parent = openEditor,
    .set_transient = [](const clap_plugin_t*, const clap_window_t*) { return false; },
    .suggest_title = [](const clap_plugin_t*, const char*) {},
    .show = [](const clap_plugin_t*) { return true; },
    .hide = [](const clap_plugin_t*) { return true; }};

constexpr clap_plugin_timer_support_t kTimer = {[](const clap_plugin_t* plugin, clap_id) {
    FaultyClap& self = selfOf(plugin);
    if (self.editor != nullptr) {
        self.editor->idle();
        self.editor->told(static_cast<double>(self.gain.values[kGain]));
    }
}};

void destroy(const clap_plugin_t* plugin) {
    if (isPlanted("editor-uses-instance") && selfOf(plugin).editor != nullptr) {
        std::abort();
    }
    closeEditor(plugin);
    --fixtureSound().instances;
    delete &selfOf(plugin);
}

const void* extensionOf(const clap_plugin_t* /*plugin*/, const char* id) {
    const auto is = [&](const char* name) { return std::strcmp(id, name) == 0; };
    return is(CLAP_EXT_AUDIO_PORTS)     ? static_cast<const void*>(&kPorts)
           : is(CLAP_EXT_PARAMS)        ? &kParams
           : is(CLAP_EXT_STATE)         ? &kState
           : is(CLAP_EXT_GUI)           ? &kGui
           : is(CLAP_EXT_TIMER_SUPPORT) ? static_cast<const void*>(&kTimer)
           : is(CLAP_EXT_LATENCY)       ? static_cast<const void*>(&kLatency)
                                        : nullptr;
}

clap_process_status processBuffer(const clap_plugin_t* plugin, const clap_process_t* buffer) {
    FaultyGain& gain = selfOf(plugin).gain;
    takeEvents(gain, buffer->in_events);
    giveEvents(selfOf(plugin), buffer->out_events);
    fixtureSound().count();
    gain.process(buffer->audio_inputs[0].data32, buffer->audio_outputs[0].data32, buffer->frames_count);
    return CLAP_PROCESS_CONTINUE;
}

const clap_plugin_t* makePlugin(const clap_plugin_factory_t* /*factory*/, const clap_host_t* host,
                                const char* id) {
    if (std::strcmp(id, kDescriptor.id) != 0) {
        return nullptr;
    }
    ++fixtureSound().instances;
    auto* const made = new FaultyClap;
    made->host = host;
    made->table = {.desc = &kDescriptor,
                   .plugin_data = made,
                   .init = [](const clap_plugin_t*) { return true; },
                   .destroy = destroy,
                   .activate =
                       [](const clap_plugin_t* plugin, double rateHz, std::uint32_t, std::uint32_t) {
                           selfOf(plugin).gain = FaultyGain(rateHz);
                           fixtureSound().isActive = true;
                           return true;
                       },
                   .deactivate = [](const clap_plugin_t*) { fixtureSound().isActive = false; },
                   .start_processing = [](const clap_plugin_t*) { return true; },
                   .stop_processing = [](const clap_plugin_t*) {},
                   .reset = [](const clap_plugin_t* plugin) { selfOf(plugin).gain.reset(); },
                   .process = processBuffer,
                   .get_extension = extensionOf,
                   .on_main_thread = [](const clap_plugin_t*) {}};
    return &made->table;
}

// Of which the factory makes none.
constexpr clap_plugin_descriptor_t kSecondDescriptor = {
    CLAP_VERSION, "urn:varno:test:never-made", "Never Made", "", "", "", "", "1", "", kFeatures};

constexpr clap_plugin_factory_t kFactory = {
    [](const clap_plugin_factory_t*) -> std::uint32_t { return isPlanted("bad-second") ? 2 : 1; },
    [](const clap_plugin_factory_t*, std::uint32_t index) {
        return index == 0 ? &kDescriptor : index == 1 ? &kSecondDescriptor : nullptr;
    },
    makePlugin};

} // namespace
} // namespace varno::fixture

extern "C" [[gnu::visibility("default")]] const clap_plugin_entry_t clap_entry = {
    CLAP_VERSION, [](const char*) { return true; }, [] {},
    [](const char* id) -> const void* {
        return std::strcmp(id, CLAP_PLUGIN_FACTORY_ID) == 0 ? &varno::fixture::kFactory : nullptr;
    }};
