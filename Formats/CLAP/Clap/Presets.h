/// The extensions and the factory of CLAP for presets, as Clap/Plugin.h.
#ifndef VARNO_FORMATS_CLAP_CLAP_PRESETS_H
#define VARNO_FORMATS_CLAP_CLAP_PRESETS_H

#include "CLAP/Clap/Plugin.h"

extern "C" {

/// A plug-in that loads presets.
struct clap_plugin_preset_load_t {
    /// Loads one from a place that the provider of presets has named; returns whether it succeeded. @param
    /// kind CLAP_PRESET_DISCOVERY_LOCATION_... @param location a path @param key may be null [main]
    bool (*from_location)(const clap_plugin_t* plugin, std::uint32_t kind, const char* location,
                          const char* key);
};

/// What a host does for it.
struct clap_host_preset_load_t {
    /// @param systemError errno, or 0 [main]
    void (*on_error)(const clap_host_t* host, std::uint32_t kind, const char* location, const char* key,
                     std::int32_t systemError, const char* text);
    /// One has been loaded. [main]
    void (*loaded)(const clap_host_t* host, std::uint32_t kind, const char* location, const char* key);
};

/// A plug-in of one of the interfaces for plug-ins.
struct clap_universal_plugin_id_t {
    const char* abi; ///< "clap" for this one.
    const char* id;
};

/// Receives what is known of the presets in a file. Not for several threads at once.
struct clap_preset_discovery_metadata_receiver_t {
    void* receiver_data;
    /// @param systemError errno, or 0 [any]
    void (*on_error)(const clap_preset_discovery_metadata_receiver_t* receiver, std::int32_t systemError,
                     const char* text);
    /// Before all that follows, for each preset. @param key null where the file is the preset
    /// @return false to end [any]
    bool (*begin_preset)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* name,
                         const char* key);
    /// [any]
    void (*add_plugin_id)(const clap_preset_discovery_metadata_receiver_t* receiver,
                          const clap_universal_plugin_id_t* plugin);
    /// [any]
    void (*set_soundpack_id)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* id);
    /// [any]
    void (*set_flags)(const clap_preset_discovery_metadata_receiver_t* receiver, std::uint32_t flags);
    /// [any]
    void (*add_creator)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* creator);
    /// [any]
    void (*set_description)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* text);
    /// In seconds since 1970; 0 where it is not known. [any]
    void (*set_timestamps)(const clap_preset_discovery_metadata_receiver_t* receiver, std::uint64_t created,
                           std::uint64_t modified);
    /// [any]
    void (*add_feature)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* feature);
    /// [any]
    void (*add_extra_info)(const clap_preset_discovery_metadata_receiver_t* receiver, const char* key,
                           const char* value);
};

/// A kind of file that holds presets.
struct clap_preset_discovery_filetype_t {
    const char* name;
    const char* description;
    const char* file_extension; ///< Without its point.
};

/// Where presets are.
struct clap_preset_discovery_location_t {
    std::uint32_t flags; ///< CLAP_PRESET_DISCOVERY_IS_...
    const char* name;
    std::uint32_t kind;
    const char* location;
};

struct clap_preset_discovery_soundpack_t;

/// A provider of presets.
struct clap_preset_discovery_provider_descriptor_t {
    clap_version_t clap_version;
    const char* id;
    const char* name;
    const char* vendor;
};

/// Names places, and reads files that a host finds there. Not for several threads at once.
struct clap_preset_discovery_provider_t {
    const clap_preset_discovery_provider_descriptor_t* desc;
    void* provider_data;
    /// Names everything to the indexer. [any]
    bool (*init)(const clap_preset_discovery_provider_t* provider);
    /// [any]
    void (*destroy)(const clap_preset_discovery_provider_t* provider);
    /// Returns whether the file was read. [any]
    bool (*get_metadata)(const clap_preset_discovery_provider_t* provider, std::uint32_t kind,
                         const char* location, const clap_preset_discovery_metadata_receiver_t* receiver);
    /// [any]
    const void* (*get_extension)(const clap_preset_discovery_provider_t* provider, const char* id);
};

/// A host that collects presets. Not for several threads at once; each returns false for what it refuses.
struct clap_preset_discovery_indexer_t {
    clap_version_t clap_version;
    const char* name;
    const char* vendor;
    const char* url;
    const char* version;
    void* indexer_data;
    /// [any]
    bool (*declare_filetype)(const clap_preset_discovery_indexer_t* indexer,
                             const clap_preset_discovery_filetype_t* filetype);
    /// [any]
    bool (*declare_location)(const clap_preset_discovery_indexer_t* indexer,
                             const clap_preset_discovery_location_t* location);
    /// [any]
    bool (*declare_soundpack)(const clap_preset_discovery_indexer_t* indexer,
                              const clap_preset_discovery_soundpack_t* soundpack);
    /// [any]
    const void* (*get_extension)(const clap_preset_discovery_indexer_t* indexer, const char* id);
};

/// The factory of providers.
struct clap_preset_discovery_factory_t {
    /// [any]
    std::uint32_t (*count)(const clap_preset_discovery_factory_t* factory);
    /// Null for an index that is none. [any]
    const clap_preset_discovery_provider_descriptor_t* (*get_descriptor)(
        const clap_preset_discovery_factory_t* factory, std::uint32_t index);
    /// One that its destroy() ends; null where there is none of that name. The indexer is not called. [any]
    const clap_preset_discovery_provider_t* (*create)(const clap_preset_discovery_factory_t* factory,
                                                      const clap_preset_discovery_indexer_t* indexer,
                                                      const char* id);
};

} // extern "C"

inline constexpr char CLAP_EXT_PRESET_LOAD[] = "clap.preset-load/2";
inline constexpr char CLAP_PRESET_DISCOVERY_FACTORY_ID[] = "clap.preset-discovery-factory/2";
/// The names before version 1.2 of the same tables.
inline constexpr char CLAP_EXT_PRESET_LOAD_COMPAT[] = "clap.preset-load.draft/2";
inline constexpr char CLAP_PRESET_DISCOVERY_FACTORY_ID_COMPAT[] = "clap.preset-discovery-factory/draft-2";

inline constexpr std::uint32_t CLAP_PRESET_DISCOVERY_LOCATION_FILE = 0;
inline constexpr std::uint32_t CLAP_PRESET_DISCOVERY_IS_FACTORY_CONTENT = 1U << 0;
inline constexpr std::uint32_t CLAP_PRESET_DISCOVERY_IS_USER_CONTENT = 1U << 1;

#endif
