/// The extensions of CLAP that need no window, as Clap/Plugin.h: those of a plug-in, then what a host offers
/// for them.
#ifndef VARNO_FORMATS_CLAP_CLAP_EXTENSIONS_H
#define VARNO_FORMATS_CLAP_CLAP_EXTENSIONS_H

#include "CLAP/Clap/Plugin.h"

extern "C" {

/// One audio port.
struct clap_audio_port_info_t {
    clap_id id;
    char name[CLAP_NAME_SIZE];
    std::uint32_t flags;
    std::uint32_t channel_count;
    const char* port_type; ///< "mono", "stereo"; null for any.
    clap_id in_place_pair; ///< The port of the other direction that may have the same memory.
};

/// Which audio ports a plug-in has.
struct clap_plugin_audio_ports_t {
    /// [main]
    std::uint32_t (*count)(const clap_plugin_t* plugin, bool isInput);
    /// Returns false for a port that there is not. [main]
    bool (*get)(const clap_plugin_t* plugin, std::uint32_t index, bool isInput, clap_audio_port_info_t* info);
};

/// One parameter. Its values are those of its range; what they mean, value_to_text() says.
struct clap_param_info_t {
    clap_id id;
    std::uint32_t flags;
    void* cookie; ///< The plug-in's own, for events.
    char name[CLAP_NAME_SIZE];
    char module[CLAP_PATH_SIZE];
    double min_value;
    double max_value;
    double default_value;
};

/// The parameters of a plug-in. All but count() return false for one that there is not.
struct clap_plugin_params_t {
    /// [main]
    std::uint32_t (*count)(const clap_plugin_t* plugin);
    /// [main]
    bool (*get_info)(const clap_plugin_t* plugin, std::uint32_t index, clap_param_info_t* info);
    /// [main]
    bool (*get_value)(const clap_plugin_t* plugin, clap_id id, double* value);
    /// Writes a text with a zero at the end; false where it does not fit. [main]
    bool (*value_to_text)(const clap_plugin_t* plugin, clap_id id, double value, char* text,
                          std::uint32_t capacity);
    /// Returns false for a text that is no value. [main]
    bool (*text_to_value)(const clap_plugin_t* plugin, clap_id id, const char* text, double* value);
    /// Exchanges events without a buffer. [audio] where the plug-in is active, else [main]
    void (*flush)(const clap_plugin_t* plugin, const clap_input_events_t* in,
                  const clap_output_events_t* out);
};

/// What a host does for parameters.
struct clap_host_params_t {
    /// Has the host read again what the flags name. [main]
    void (*rescan)(const clap_host_t* host, std::uint32_t flags);
    /// Has the host forget references to a parameter. [main]
    void (*clear)(const clap_host_t* host, clap_id id, std::uint32_t flags);
    /// Has flush() or process() called. Not from [audio]. [any]
    void (*request_flush)(const clap_host_t* host);
};

/// Bytes that a host reads from.
struct clap_istream_t {
    void* ctx;
    /// Returns how many bytes were read, which may be fewer; 0 at the end, -1 for an error.
    std::int64_t (*read)(const clap_istream_t* stream, void* buffer, std::uint64_t size);
};

/// Bytes that a host keeps.
struct clap_ostream_t {
    void* ctx;
    /// Returns how many bytes were written, which may be fewer; -1 for an error.
    std::int64_t (*write)(const clap_ostream_t* stream, const void* buffer, std::uint64_t size);
};

/// A plug-in's state. Both return whether it succeeded.
struct clap_plugin_state_t {
    /// [main]
    bool (*save)(const clap_plugin_t* plugin, const clap_ostream_t* stream);
    /// [main]
    bool (*load)(const clap_plugin_t* plugin, const clap_istream_t* stream);
};

/// The same for a purpose, CLAP_STATE_CONTEXT_...
struct clap_plugin_state_context_t {
    /// [main]
    bool (*save)(const clap_plugin_t* plugin, const clap_ostream_t* stream, std::uint32_t context);
    /// [main]
    bool (*load)(const clap_plugin_t* plugin, const clap_istream_t* stream, std::uint32_t context);
};

/// The latency of a plug-in.
struct clap_plugin_latency_t {
    /// In frames, while it is active or being activated. [main]
    std::uint32_t (*get)(const clap_plugin_t* plugin);
};

/// What a host does for the latency.
struct clap_host_latency_t {
    /// Has the host read it again; within activate() alone. [main]
    void (*changed)(const clap_host_t* host);
};

/// Whether a plug-in works for listeners or for a file.
struct clap_plugin_render_t {
    /// Whether it can only work in real time. [main]
    bool (*has_hard_realtime_requirement)(const clap_plugin_t* plugin);
    /// Chooses CLAP_RENDER_...; returns false for a mode that there is not. [main]
    bool (*set)(const clap_plugin_t* plugin, std::int32_t mode);
};

/// A host's log.
struct clap_host_log_t {
    /// [any]
    void (*log)(const clap_host_t* host, std::int32_t severity, const char* text);
};

} // extern "C"

inline constexpr char CLAP_EXT_AUDIO_PORTS[] = "clap.audio-ports";
inline constexpr char CLAP_EXT_PARAMS[] = "clap.params";
inline constexpr char CLAP_EXT_STATE[] = "clap.state";
inline constexpr char CLAP_EXT_STATE_CONTEXT[] = "clap.state-context/2";
inline constexpr char CLAP_EXT_LATENCY[] = "clap.latency";
inline constexpr char CLAP_EXT_RENDER[] = "clap.render";
inline constexpr char CLAP_EXT_LOG[] = "clap.log";

inline constexpr char CLAP_PORT_MONO[] = "mono";
inline constexpr char CLAP_PORT_STEREO[] = "stereo";
inline constexpr std::uint32_t CLAP_AUDIO_PORT_IS_MAIN = 1U << 0;

inline constexpr std::uint32_t CLAP_PARAM_IS_STEPPED = 1U << 0;
inline constexpr std::uint32_t CLAP_PARAM_IS_BYPASS = 1U << 4;
inline constexpr std::uint32_t CLAP_PARAM_IS_AUTOMATABLE = 1U << 5;
inline constexpr std::uint32_t CLAP_PARAM_IS_ENUM = 1U << 16;
inline constexpr std::uint32_t CLAP_PARAM_RESCAN_VALUES = 1U << 0;

inline constexpr std::uint32_t CLAP_STATE_CONTEXT_FOR_PRESET = 1;
inline constexpr std::uint32_t CLAP_STATE_CONTEXT_FOR_DUPLICATE = 2;
inline constexpr std::uint32_t CLAP_STATE_CONTEXT_FOR_PROJECT = 3;

inline constexpr std::int32_t CLAP_RENDER_REALTIME = 0;
inline constexpr std::int32_t CLAP_RENDER_OFFLINE = 1;

inline constexpr std::int32_t CLAP_LOG_ERROR = 3;

#endif
