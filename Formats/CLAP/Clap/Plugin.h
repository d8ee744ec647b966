/// The part of the plug-in interface CLAP, version 1.2.10, that this tree uses: entry, factory, plug-in,
/// host, events and audio. Names and layouts are those of the published headers, since they are a binary
/// interface between hosts and plug-ins; a test compares both. A host's structures are borrowed: they stay
/// valid as long as the plug-in that they were given to, or for the call that they were given in.
///
/// Thread tags: [main] is the host's main thread, [audio] the thread that processes a plug-in at the time,
/// [any] any thread.
#ifndef VARNO_FORMATS_CLAP_CLAP_PLUGIN_H
#define VARNO_FORMATS_CLAP_CLAP_PLUGIN_H

#include <cstdint>

/// A symbol that hosts look for. On Windows the list that the binary is linked with has it.
#if defined(_WIN32)
#define CLAP_EXPORT
#else
#define CLAP_EXPORT __attribute__((visibility("default")))
#endif

// NOLINTBEGIN(modernize-use-using): a C interface
extern "C" {

/// A version of the interface.
struct clap_version_t {
    std::uint32_t major;
    std::uint32_t minor;
    std::uint32_t revision;
};

/// The number of a parameter, timer, menu action or port.
using clap_id = std::uint32_t;

struct clap_plugin_t;
struct clap_host_t;
struct clap_process_t;
struct clap_input_events_t;
struct clap_output_events_t;

/// What a plug-in is. Texts are UTF-8; those that are no identifier and no name may be empty.
struct clap_plugin_descriptor_t {
    clap_version_t clap_version;
    const char* id;
    const char* name;
    const char* vendor;
    const char* url;
    const char* manual_url;
    const char* support_url;
    const char* version;
    const char* description;
    const char* const* features; ///< Ends with null.
};

/// What process() returns.
using clap_process_status = std::int32_t;

/// One plug-in as its host calls it.
struct clap_plugin_t {
    const clap_plugin_descriptor_t* desc;
    void* plugin_data; ///< The plug-in's own.
    /// First call; where it returns false, only destroy() follows. [main]
    bool (*init)(const clap_plugin_t* plugin);
    /// Last call, while it is not active. [main]
    void (*destroy)(const clap_plugin_t* plugin);
    /// Prepares it to process buffers of minFrames to maxFrames frames, 1 or more, at a rate in Hz. [main]
    bool (*activate)(const clap_plugin_t* plugin, double sampleRateHz, std::uint32_t minFrames,
                     std::uint32_t maxFrames);
    /// [main]
    void (*deactivate)(const clap_plugin_t* plugin);
    /// While it is active. [audio]
    bool (*start_processing)(const clap_plugin_t* plugin);
    /// [audio]
    void (*stop_processing)(const clap_plugin_t* plugin);
    /// Clears the sound so far, while it is active. Values stay. [audio]
    void (*reset)(const clap_plugin_t* plugin);
    /// Processes a buffer. [audio]
    clap_process_status (*process)(const clap_plugin_t* plugin, const clap_process_t* process);
    /// The functions of an extension, owned by the plug-in; null where it has none of that name. [any]
    const void* (*get_extension)(const clap_plugin_t* plugin, const char* id);
    /// Follows each request_callback() of the host. [main]
    void (*on_main_thread)(const clap_plugin_t* plugin);
};

/// The host as a plug-in calls it.
struct clap_host_t {
    clap_version_t clap_version;
    void* host_data; ///< The host's own.
    const char* name;
    const char* vendor;
    const char* url;
    const char* version;
    /// The functions of an extension; null where the host has none of that name. Not before the plug-in's
    /// init(). [any]
    const void* (*get_extension)(const clap_host_t* host, const char* id);
    /// Has the plug-in deactivated and activated again, sooner or later. [any]
    void (*request_restart)(const clap_host_t* host);
    /// Has it activated and called to process. [any]
    void (*request_process)(const clap_host_t* host);
    /// Has on_main_thread() called. [any]
    void (*request_callback)(const clap_host_t* host);
};

/// The symbol `clap_entry` that a binary exports.
struct clap_plugin_entry_t {
    clap_version_t clap_version;
    /// Before all others; may be called more than once, each with a deinit(). @param path of the binary [any]
    bool (*init)(const char* path);
    /// [any]
    void (*deinit)();
    /// A factory, owned by the binary; null where it has none of that name. [any]
    const void* (*get_factory)(const char* id);
};

/// The factory of plug-ins.
struct clap_plugin_factory_t {
    /// [any]
    std::uint32_t (*get_plugin_count)(const clap_plugin_factory_t* factory);
    /// Owned by the factory; null for an index that is none. [any]
    const clap_plugin_descriptor_t* (*get_plugin_descriptor)(const clap_plugin_factory_t* factory,
                                                             std::uint32_t index);
    /// A plug-in, which its destroy() ends; null where there is none of that name. The host is not called.
    /// [any]
    const clap_plugin_t* (*create_plugin)(const clap_plugin_factory_t* factory, const clap_host_t* host,
                                          const char* id);
};

/// The samples of a port: either of the two pointers is set.
struct clap_audio_buffer_t {
    float** data32; ///< By channel and frame.
    double** data64;
    std::uint32_t channel_count;
    std::uint32_t latency;
    std::uint64_t constant_mask; ///< A bit for each channel whose samples are all equal.
};

/// What every event begins with.
struct clap_event_header_t {
    std::uint32_t size; ///< Of the whole event, in bytes.
    std::uint32_t time; ///< Frame in the buffer.
    std::uint16_t space_id;
    std::uint16_t type;
    std::uint32_t flags;
};

/// A parameter's value; with the type of modulation, what is added to it. A note's address is -1 where the
/// value is for no note.
struct clap_event_param_value_t {
    clap_event_header_t header;
    clap_id param_id;
    void* cookie; ///< As clap_param_info_t has it, or null.
    std::int32_t note_id;
    std::int16_t port_index;
    std::int16_t channel;
    std::int16_t key;
    double value;
};

/// The user takes a control or lets it go.
struct clap_event_param_gesture_t {
    clap_event_header_t header;
    clap_id param_id;
};

/// Events for a plug-in, by time.
struct clap_input_events_t {
    void* ctx;
    std::uint32_t (*size)(const clap_input_events_t* list);
    /// Owned by the list.
    const clap_event_header_t* (*get)(const clap_input_events_t* list, std::uint32_t index);
};

/// Events from a plug-in, by time.
struct clap_output_events_t {
    void* ctx;
    /// Copies the event; false where there is no room.
    bool (*try_push)(const clap_output_events_t* list, const clap_event_header_t* event);
};

/// The time line's state, which this tree does not read.
struct clap_event_transport_t;

/// A buffer to be processed. Everything is valid until process() returns.
struct clap_process_t {
    std::int64_t steady_time; ///< In frames; -1 where the host has none.
    std::uint32_t frames_count;
    const clap_event_transport_t* transport; ///< May be null.
    const clap_audio_buffer_t* audio_inputs;
    clap_audio_buffer_t* audio_outputs;
    std::uint32_t audio_inputs_count;
    std::uint32_t audio_outputs_count;
    const clap_input_events_t* in_events;
    const clap_output_events_t* out_events;
};

} // extern "C"
// NOLINTEND(modernize-use-using)

/// The version that these declarations are of.
inline constexpr clap_version_t CLAP_VERSION = {1, 2, 10};
/// Hosts of an earlier major version are of another interface.
inline constexpr bool clap_version_is_compatible(const clap_version_t& version) {
    return version.major >= 1;
}

inline constexpr char CLAP_PLUGIN_FACTORY_ID[] = "clap.plugin-factory";

inline constexpr clap_id CLAP_INVALID_ID = 0xFFFFFFFF;
/// Room for texts in structures, in bytes, with the zero at the end.
inline constexpr std::uint32_t CLAP_NAME_SIZE = 256;
inline constexpr std::uint32_t CLAP_PATH_SIZE = 1024;

inline constexpr clap_process_status CLAP_PROCESS_ERROR = 0;
inline constexpr clap_process_status CLAP_PROCESS_CONTINUE = 1;

inline constexpr std::uint16_t CLAP_CORE_EVENT_SPACE_ID = 0;
inline constexpr std::uint16_t CLAP_EVENT_PARAM_VALUE = 5;
inline constexpr std::uint16_t CLAP_EVENT_PARAM_MOD = 6;
inline constexpr std::uint16_t CLAP_EVENT_PARAM_GESTURE_BEGIN = 7;
inline constexpr std::uint16_t CLAP_EVENT_PARAM_GESTURE_END = 8;

inline constexpr char CLAP_PLUGIN_FEATURE_AUDIO_EFFECT[] = "audio-effect";
inline constexpr char CLAP_PLUGIN_FEATURE_DISTORTION[] = "distortion";
inline constexpr char CLAP_PLUGIN_FEATURE_COMPRESSOR[] = "compressor";
inline constexpr char CLAP_PLUGIN_FEATURE_MONO[] = "mono";
inline constexpr char CLAP_PLUGIN_FEATURE_STEREO[] = "stereo";

#endif
