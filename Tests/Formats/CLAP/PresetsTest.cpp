// The presets as a host's browser finds them in the installed folder, and as a plug-in loads them.
#include "CLAP/Clap/Presets.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdlib>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

namespace varno::test {
namespace {

namespace fs = std::filesystem;

// What a provider has named and described.
struct Collection {
    std::string fileTypes;
    std::vector<std::string> locations; ///< "flags name path".
    std::vector<std::string> presets;   ///< "name|plug-ins|description".
    std::string errors;

    clap_preset_discovery_indexer_t indexer{
        .clap_version = CLAP_VERSION,
        .name = "Test host",
        .vendor = "",
        .url = "",
        .version = "1",
        .indexer_data = this,
        .declare_filetype =
            [](const auto* table, const clap_preset_discovery_filetype_t* type) {
                static_cast<Collection*>(table->indexer_data)->fileTypes += type->file_extension;
                return true;
            },
        .declare_location =
            [](const auto* table, const clap_preset_discovery_location_t* place) {
                EXPECT_EQ(place->kind, CLAP_PRESET_DISCOVERY_LOCATION_FILE);
                static_cast<Collection*>(table->indexer_data)
                    ->locations.push_back(std::to_string(place->flags) + ' ' + place->name + ' ' +
                                          place->location);
                return true;
            },
        .declare_soundpack = [](const auto*, const auto*) { return false; },
        .get_extension = [](const auto*, const char*) -> const void* { return nullptr; }};

    clap_preset_discovery_metadata_receiver_t receiver{
        .receiver_data = this,
        .on_error =
            [](const auto* table, std::int32_t, const char* text) {
                static_cast<Collection*>(table->receiver_data)->errors += std::string(text) + '\n';
            },
        .begin_preset =
            [](const auto* table, const char* name, const char* key) {
                EXPECT_EQ(key, nullptr);
                static_cast<Collection*>(table->receiver_data)->presets.push_back(name);
                return true;
            },
        .add_plugin_id =
            [](const auto* table, const clap_universal_plugin_id_t* plugin) {
                EXPECT_STREQ(plugin->abi, "clap");
                static_cast<Collection*>(table->receiver_data)->presets.back() +=
                    std::string("|") + plugin->id;
            },
        .set_soundpack_id = nullptr,
        .set_flags = nullptr,
        .add_creator = nullptr,
        .set_description =
            [](const auto* table, const char* text) {
                static_cast<Collection*>(table->receiver_data)->presets.back() += std::string("|") + text;
            },
        .set_timestamps = nullptr,
        .add_feature = [](const auto*, const char* feature) { EXPECT_STREQ(feature, "audio-effect"); },
        .add_extra_info = nullptr};
};

class ClapPresets : public testing::Test {
protected:
    ClapPresets()
        : mEntry(*static_cast<const clap_plugin_entry_t*>(
              dlsym(dlopen(VARNO_CLAP_BINARY, RTLD_NOW | RTLD_LOCAL), "clap_entry"))) {
        setenv("XDG_DATA_HOME", mHome.path().c_str(), 1);
        mEntry.init(VARNO_CLAP_BINARY);
        const auto& factory = *static_cast<const clap_preset_discovery_factory_t*>(
            mEntry.get_factory(CLAP_PRESET_DISCOVERY_FACTORY_ID));
        EXPECT_EQ(factory.count(&factory), 1U);
        const auto* const descriptor = factory.get_descriptor(&factory, 0);
        EXPECT_EQ(factory.get_descriptor(&factory, 1), nullptr);
        EXPECT_EQ(factory.create(&factory, &mFound.indexer, "other"), nullptr);
        mProvider = factory.create(&factory, &mFound.indexer, descriptor->id);
    }
    ~ClapPresets() override { mProvider->destroy(mProvider); }

    std::string userFolder() const { return (mHome.path() / "varno-s/presets").string(); }
    std::string write(const std::string& name, const std::string& text) const {
        fs::create_directories(userFolder());
        const std::string path = userFolder() + "/" + name;
        std::ofstream(path) << text;
        return path;
    }
    bool describe(const std::string& file) {
        return mProvider->get_metadata(mProvider, CLAP_PRESET_DISCOVERY_LOCATION_FILE, file.c_str(),
                                       &mFound.receiver);
    }

    const fs::path mFactory = fs::path(VARNO_CLAP_BINARY).parent_path() / "resources/presets";
    TemporaryFolder mHome;
    const clap_plugin_entry_t& mEntry;
    Collection mFound;
    const clap_preset_discovery_provider_t* mProvider = nullptr;
};

TEST_F(ClapPresets, areInTheFactorysFolderAndInTheUsersOnceItIsThere) {
    EXPECT_TRUE(mProvider->init(mProvider));
    EXPECT_EQ(mFound.fileTypes, "txt");
    const std::string factory = "1 Factory " + mFactory.string();
    EXPECT_EQ(mFound.locations, std::vector{factory});
    write("mine.txt", "");
    EXPECT_TRUE(mProvider->init(mProvider));
    EXPECT_EQ(mFound.locations, (std::vector{factory, factory, "2 Your presets " + userFolder()}));
}

TEST_F(ClapPresets, ofTheFactoryAreDescribed) {
    std::size_t count = 0;
    for (const auto& file : fs::directory_iterator(mFactory)) {
        EXPECT_TRUE(describe(file.path().string())) << file;
        ++count;
    }
    EXPECT_GE(count, 12U);
    EXPECT_EQ(mFound.presets.size(), count);
    EXPECT_TRUE(describe((mFactory / "drum-bus.txt").string()));
    EXPECT_EQ(mFound.presets.back().find("Drum Bus|com.morvak.varno-s.mono|com.morvak.varno-s.stereo|"), 0U)
        << mFound.presets.back();
    EXPECT_EQ(mFound.presets.back().find('\n'), std::string::npos);
    EXPECT_EQ(mFound.errors, "");
}

TEST_F(ClapPresets, thatAreNoneAreRefused) {
    EXPECT_FALSE(describe(write("broken.txt", "nothing of that")));
    EXPECT_FALSE(describe(userFolder() + "/absent.txt"));
    EXPECT_NE(mFound.errors.find("broken.txt is no preset\n"), std::string::npos) << mFound.errors;
    EXPECT_NE(mFound.errors.find("absent.txt cannot be read"), std::string::npos);
    EXPECT_FALSE(mProvider->get_metadata(mProvider, 1, nullptr, &mFound.receiver));
    EXPECT_TRUE(mFound.presets.empty());
}

// What a host receives about loads.
struct LoadLog {
    clap_host_preset_load_t table{
        [](const clap_host_t* host, std::uint32_t, const char* location, const char*, std::int32_t,
           const char* text) {
            hostOf(host).log += std::string("no ") + fs::path(location).filename().string() + ": " + text;
        },
        [](const clap_host_t* host, std::uint32_t, const char* location, const char*) {
            hostOf(host).log += "loaded " + fs::path(location).filename().string() + '\n';
        }};
};

TEST_F(ClapPresets, areLoadedAndLeaveBypassAndQualityAlone) {
    ClapHost host;
    const LoadLog log;
    host.offer(CLAP_EXT_PRESET_LOAD, &log.table);
    HostedClap plugin(mEntry, host, 2);
    plugin.add({{0, 0, 1.0}, {0, 1000, 2.0}});
    plugin.flush();
    const auto& load = *static_cast<const clap_plugin_preset_load_t*>(
        requireExtension(plugin.plugin(), CLAP_EXT_PRESET_LOAD));
    const std::string preset = (mFactory / "drum-bus.txt").string();
    EXPECT_TRUE(
        load.from_location(plugin.plugin(), CLAP_PRESET_DISCOVERY_LOCATION_FILE, preset.c_str(), nullptr));
    EXPECT_EQ(host.log, "loaded drum-bus.txt\n");
    EXPECT_EQ(host.valueRescans, 1);
    EXPECT_EQ(plugin.value("Bypass"), 1.0);
    EXPECT_EQ(plugin.value("Quality"), 2.0);
    // The settings are those that the program has of it.
    const Outcome outcome =
        run({VARNO_PROGRAM, "render", "--quiet", "--preset", preset, "--save-state", "state"},
            {.folder = mHome.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    std::ifstream file(mHome / "state", std::ios::binary);
    const std::string expected{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::string loaded = plugin.save(CLAP_STATE_CONTEXT_FOR_PRESET);
    EXPECT_EQ(loaded, expected);

    host.log.clear();
    const std::string broken = write("broken.txt", "nothing of that");
    EXPECT_FALSE(
        load.from_location(plugin.plugin(), CLAP_PRESET_DISCOVERY_LOCATION_FILE, broken.c_str(), nullptr));
    EXPECT_NE(host.log.find("no broken.txt: "), std::string::npos) << host.log;
    EXPECT_FALSE(load.from_location(plugin.plugin(), 1, "", "key"));
    EXPECT_FALSE(load.from_location(plugin.plugin(), 0, nullptr, nullptr));
    EXPECT_EQ(plugin.save(CLAP_STATE_CONTEXT_FOR_PRESET), loaded);
}

} // namespace
} // namespace varno::test
