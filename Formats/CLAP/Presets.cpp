#include "CLAP/Presets.h"

#include "CLAP/BinaryFolder.h"
#include "CLAP/PluginExtensions.h"
#include "CLAP/Plugins.h"
#include "Host/HostError.h"
#include "Surround/Settings/PathText.h"
#include "Surround/Settings/PresetFile.h"
#include "Surround/Settings/UserFolders.h"

#include <exception>
#include <filesystem>
#include <string>

namespace varno {

namespace {

namespace fs = std::filesystem;

constexpr clap_preset_discovery_provider_descriptor_t kProvider = {CLAP_VERSION, "com.morvak.varno-s.presets",
                                                                   "Varno-S presets", "Morvak"};

fs::path factoryFolder() {
    const fs::path resources = binaryResources();
    return resources.empty() ? fs::path() : resources / "presets";
}

// A provider with the host's collection, which outlives it.
struct PresetProvider {
    clap_preset_discovery_provider_t table{};
    const clap_preset_discovery_indexer_t* indexer = nullptr;
};

const clap_preset_discovery_indexer_t& indexerOf(const clap_preset_discovery_provider_t* table) {
    return *static_cast<PresetProvider*>(table->provider_data)->indexer;
}

// A folder that is not there has no presets: it is named once there is one.
bool declareFolder(const clap_preset_discovery_indexer_t& indexer, const char* name, const fs::path& folder,
                   std::uint32_t flags) {
    std::error_code ignored;
    if (folder.empty() || !fs::is_directory(folder, ignored)) {
        return true;
    }
    const std::string path = textOfPath(folder);
    const clap_preset_discovery_location_t location{flags, name, CLAP_PRESET_DISCOVERY_LOCATION_FILE,
                                                    path.c_str()};
    return indexer.declare_location(&indexer, &location);
}

bool initProvider(const clap_preset_discovery_provider_t* table) noexcept {
    try {
        const clap_preset_discovery_indexer_t& indexer = indexerOf(table);
        const clap_preset_discovery_filetype_t text{"Varno-S preset", "Settings as text", kPresetSuffix + 1};
        return indexer.declare_filetype(&indexer, &text) &&
               declareFolder(indexer, "Factory", factoryFolder(), CLAP_PRESET_DISCOVERY_IS_FACTORY_CONTENT) &&
               declareFolder(indexer, "Your presets", userPresetFolder(),
                             CLAP_PRESET_DISCOVERY_IS_USER_CONTENT);
    } catch (const std::exception&) {
        return false;
    }
}

void destroyProvider(const clap_preset_discovery_provider_t* table) noexcept {
    delete static_cast<PresetProvider*>(table->provider_data);
}

// The lines for people as one sentence after the other.
std::string lineOf(std::string note) {
    for (char& letter : note) {
        letter = letter == '\n' ? ' ' : letter;
    }
    note.erase(note.find_last_not_of(' ') + 1);
    return note;
}

void describePreset(const PresetEntry& preset, const clap_preset_discovery_metadata_receiver_t& receiver) {
    if (!receiver.begin_preset(&receiver, preset.name.c_str(), nullptr)) {
        return;
    }
    for (const OfferedPlugin& plugin : kClapPlugins) {
        const clap_universal_plugin_id_t id{"clap", plugin.descriptor.id};
        receiver.add_plugin_id(&receiver, &id);
    }
    if (const std::string note = lineOf(preset.note); !note.empty()) {
        receiver.set_description(&receiver, note.c_str());
    }
    receiver.add_feature(&receiver, CLAP_PLUGIN_FEATURE_AUDIO_EFFECT);
}

bool describeFile(const clap_preset_discovery_provider_t* /*table*/, std::uint32_t kind, const char* location,
                  const clap_preset_discovery_metadata_receiver_t* receiver) noexcept {
    if (kind != CLAP_PRESET_DISCOVERY_LOCATION_FILE || location == nullptr || receiver == nullptr) {
        return false;
    }
    try {
        const fs::path file = pathFromText(location);
        const PresetEntry preset = readPreset(file, file.parent_path() == factoryFolder());
        if (preset.isSound()) {
            describePreset(preset, *receiver);
        } else {
            receiver->on_error(receiver, 0, (std::string(location) + " " + preset.damage).c_str());
        }
        return preset.isSound();
    } catch (const std::exception& error) {
        receiver->on_error(receiver, 0, error.what());
        return false;
    }
}

const void* providerExtension(const clap_preset_discovery_provider_t* /*table*/,
                              const char* /*id*/) noexcept {
    return nullptr;
}

std::uint32_t providerCount(const clap_preset_discovery_factory_t* /*factory*/) noexcept {
    return 1;
}

const clap_preset_discovery_provider_descriptor_t*
providerDescriptor(const clap_preset_discovery_factory_t* /*factory*/, std::uint32_t index) noexcept {
    return index == 0 ? &kProvider : nullptr;
}

const clap_preset_discovery_provider_t* createProvider(const clap_preset_discovery_factory_t* /*factory*/,
                                                       const clap_preset_discovery_indexer_t* indexer,
                                                       const char* id) noexcept {
    if (indexer == nullptr || id == nullptr || std::string_view(id) != kProvider.id) {
        return nullptr;
    }
    try {
        auto* const provider = new PresetProvider;
        provider->indexer = indexer;
        provider->table = {&kProvider,      provider,     initProvider,
                           destroyProvider, describeFile, providerExtension};
        return &provider->table;
    } catch (const std::exception&) {
        return nullptr;
    }
}

constexpr clap_preset_discovery_factory_t kPresetFactory = {providerCount, providerDescriptor,
                                                            createProvider};

bool loadFromLocation(const clap_plugin_t* table, std::uint32_t kind, const char* location,
                      const char* key) noexcept {
    if (location == nullptr) {
        return false;
    }
    ClapPlugin& plugin = pluginOf(table);
    const auto* const host = plugin.host().extension<clap_host_preset_load_t>(CLAP_EXT_PRESET_LOAD);
    std::string refusal;
    const bool isLoaded = guarded(table, [&](ClapPlugin& loading) {
        try {
            if (kind != CLAP_PRESET_DISCOVERY_LOCATION_FILE) {
                throw HostError("found a preset that is in no file");
            }
            loading.loadPreset(pathFromText(location));
        } catch (const std::exception& error) {
            refusal = error.what();
            throw;
        }
    });
    if (host != nullptr && isLoaded) {
        host->loaded(&plugin.host().table(), kind, location, key);
    } else if (host != nullptr) {
        host->on_error(&plugin.host().table(), kind, location, key, 0, refusal.c_str());
    }
    return isLoaded;
}

constexpr clap_plugin_preset_load_t kPresetLoad = {loadFromLocation};

} // namespace

const clap_preset_discovery_factory_t& presetFactory() noexcept {
    return kPresetFactory;
}

const void* presetExtension(std::string_view id) noexcept {
    return id == CLAP_EXT_PRESET_LOAD || id == CLAP_EXT_PRESET_LOAD_COMPAT ? &kPresetLoad : nullptr;
}

} // namespace varno
