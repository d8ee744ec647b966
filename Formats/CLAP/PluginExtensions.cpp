#include "CLAP/PluginExtensions.h"

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Presets.h"
#include "CLAP/StateStreams.h"
#include "CLAP/Window/WindowExtensions.h"

#include <cmath>
#include <cstring>
#include <optional>
#include <string>

namespace varno {

namespace {

using Extent = ClapPlugin::Extent;

// Copies a text with a zero at the end, as much of it as there is room for.
template<std::size_t kSize>
void copyText(char (&room)[kSize], const std::string& text) {
    room[text.copy(room, kSize - 1)] = 0;
}

// Audio ports: one for each direction, which may have the same memory.

constexpr clap_id kMainPort = 0;

std::uint32_t portCount(const clap_plugin_t* /*table*/, bool /*isInput*/) noexcept {
    return 1;
}

bool portInfo(const clap_plugin_t* table, std::uint32_t index, bool isInput,
              clap_audio_port_info_t* info) noexcept {
    if (index != 0 || info == nullptr) {
        return false;
    }
    const std::int32_t channels = pluginOf(table).channels();
    *info = {};
    info->id = kMainPort;
    copyText(info->name, isInput ? "In" : "Out");
    info->flags = CLAP_AUDIO_PORT_IS_MAIN;
    info->channel_count = static_cast<std::uint32_t>(channels);
    info->port_type = channels == 1 ? CLAP_PORT_MONO : CLAP_PORT_STEREO;
    info->in_place_pair = kMainPort;
    return true;
}

// Parameters.

std::uint32_t parameterFlags(const ListedParameter& parameter) {
    std::uint32_t flags = parameter.isAutomatable ? CLAP_PARAM_IS_AUTOMATABLE : 0;
    if (parameter.isStepped()) {
        flags |= CLAP_PARAM_IS_STEPPED;
    }
    if (parameter.kind == ListedParameter::Kind::kBypass) {
        flags |= CLAP_PARAM_IS_BYPASS;
    } else if (parameter.isStepped()) {
        flags |= CLAP_PARAM_IS_ENUM;
    }
    return flags;
}

std::uint32_t parameterCount(const clap_plugin_t* table) noexcept {
    return static_cast<std::uint32_t>(pluginOf(table).parameters().size());
}

bool parameterInfo(const clap_plugin_t* table, std::uint32_t index, clap_param_info_t* info) noexcept {
    const ParameterList& parameters = pluginOf(table).parameters();
    if (index >= parameters.size() || info == nullptr) {
        return false;
    }
    const ListedParameter& parameter = parameters[index];
    *info = {};
    info->id = parameter.id;
    info->flags = parameterFlags(parameter);
    copyText(info->name, parameter.name);
    info->max_value = parameter.highest();
    info->default_value = hostValueOf(parameter, parameter.normalizedDefault);
    return true;
}

bool parameterValue(const clap_plugin_t* table, clap_id id, double* value) noexcept {
    const auto index = pluginOf(table).parameters().indexOf(id);
    if (!index || value == nullptr) {
        return false;
    }
    *value = pluginOf(table).value(*index);
    return true;
}

bool valueToText(const clap_plugin_t* table, clap_id id, double value, char* text,
                 std::uint32_t capacity) noexcept {
    bool isWritten = false;
    guarded(table, [&](const ClapPlugin& plugin) {
        const auto index = plugin.parameters().indexOf(id);
        if (index && text != nullptr && std::isfinite(value)) {
            const std::string written = plugin.text(*index, value);
            isWritten = written.size() < capacity;
            if (isWritten) {
                std::memcpy(text, written.c_str(), written.size() + 1);
            }
        }
    });
    return isWritten;
}

bool textToValue(const clap_plugin_t* table, clap_id id, const char* text, double* value) noexcept {
    std::optional<double> read;
    guarded(table, [&](const ClapPlugin& plugin) {
        const auto index = plugin.parameters().indexOf(id);
        if (index && text != nullptr) {
            read = plugin.valueFromText(*index, text);
        }
    });
    if (read && value != nullptr) {
        *value = *read;
    }
    return read.has_value();
}

void flush(const clap_plugin_t* table, const clap_input_events_t* in,
           const clap_output_events_t* out) noexcept {
    pluginOf(table).flush(in, out);
}

// State.

bool save(const clap_plugin_t* table, const clap_ostream_t* stream, Extent extent) noexcept {
    return stream != nullptr &&
           guarded(table, [&](ClapPlugin& plugin) { writeAll(*stream, plugin.save(extent)); });
}

bool load(const clap_plugin_t* table, const clap_istream_t* stream, Extent extent) noexcept {
    return stream != nullptr &&
           guarded(table, [&](ClapPlugin& plugin) { plugin.load(readAll(*stream), extent); });
}

bool saveState(const clap_plugin_t* table, const clap_ostream_t* stream) noexcept {
    return save(table, stream, Extent::kAll);
}

bool loadState(const clap_plugin_t* table, const clap_istream_t* stream) noexcept {
    return load(table, stream, Extent::kAll);
}

// A preset leaves bypass and quality alone.
Extent extentOf(std::uint32_t context) {
    return context == CLAP_STATE_CONTEXT_FOR_PRESET ? Extent::kSettingsOnly : Extent::kAll;
}

bool saveFor(const clap_plugin_t* table, const clap_ostream_t* stream, std::uint32_t context) noexcept {
    return save(table, stream, extentOf(context));
}

bool loadFor(const clap_plugin_t* table, const clap_istream_t* stream, std::uint32_t context) noexcept {
    return load(table, stream, extentOf(context));
}

// Latency and render mode.

std::uint32_t latency(const clap_plugin_t* table) noexcept {
    return static_cast<std::uint32_t>(pluginOf(table).latencyFrames());
}

bool needsRealTime(const clap_plugin_t* /*table*/) noexcept {
    return false;
}

bool setRenderMode(const clap_plugin_t* table, std::int32_t mode) noexcept {
    if (mode != CLAP_RENDER_REALTIME && mode != CLAP_RENDER_OFFLINE) {
        return false;
    }
    pluginOf(table).setOffline(mode == CLAP_RENDER_OFFLINE);
    return true;
}

constexpr clap_plugin_audio_ports_t kAudioPorts = {portCount, portInfo};
constexpr clap_plugin_params_t kParams = {parameterCount, parameterInfo, parameterValue,
                                          valueToText,    textToValue,   flush};
constexpr clap_plugin_state_t kState = {saveState, loadState};
constexpr clap_plugin_state_context_t kStateContext = {saveFor, loadFor};
constexpr clap_plugin_latency_t kLatency = {latency};
constexpr clap_plugin_render_t kRender = {needsRealTime, setRenderMode};

} // namespace

const void* pluginExtension(std::string_view id) noexcept {
    struct Row {
        std::string_view id;
        const void* table;
    };
    static constexpr Row kRows[] = {
        {CLAP_EXT_AUDIO_PORTS, &kAudioPorts},     {CLAP_EXT_PARAMS, &kParams},   {CLAP_EXT_STATE, &kState},
        {CLAP_EXT_STATE_CONTEXT, &kStateContext}, {CLAP_EXT_LATENCY, &kLatency}, {CLAP_EXT_RENDER, &kRender},
    };
    for (const Row& row : kRows) {
        if (row.id == id) {
            return row.table;
        }
    }
    const void* const presets = presetExtension(id);
    return presets != nullptr ? presets : windowExtension(id);
}

} // namespace varno
