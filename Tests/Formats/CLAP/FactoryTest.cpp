// What a host finds before and while it makes plug-ins.
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(ClapFactory, hasAMonoAndAStereoPlugin) {
    ASSERT_TRUE(clap_entry.init("/nowhere/varno-s.clap"));
    const clap_plugin_factory_t& factory = factoryOf(clap_entry);
    ASSERT_EQ(factory.get_plugin_count(&factory), 2U);
    // Hosts save these.
    const char* const ids[] = {"com.morvak.varno-s.mono", "com.morvak.varno-s.stereo"};
    const char* const names[] = {"Varno-S Mono", "Varno-S Stereo"};
    const char* const shapes[] = {"mono", "stereo"};
    for (std::uint32_t index = 0; index < 2; ++index) {
        const clap_plugin_descriptor_t& plugin = *factory.get_plugin_descriptor(&factory, index);
        EXPECT_STREQ(plugin.id, ids[index]);
        EXPECT_STREQ(plugin.name, names[index]);
        EXPECT_STREQ(plugin.vendor, "Morvak");
        EXPECT_STREQ(plugin.features[0], "audio-effect");
        EXPECT_STREQ(plugin.features[3], shapes[index]);
        EXPECT_EQ(plugin.features[4], nullptr);
        EXPECT_TRUE(clap_version_is_compatible(plugin.clap_version));
    }
    EXPECT_EQ(factory.get_plugin_descriptor(&factory, 2), nullptr);
    clap_entry.deinit();
}

TEST(ClapFactory, isInitialisedMoreThanOnce) {
    EXPECT_TRUE(clap_entry.init(""));
    EXPECT_TRUE(clap_entry.init(""));
    clap_entry.deinit();
    ClapHost host;
    EXPECT_NO_THROW(HostedClap(clap_entry, host, 2));
    clap_entry.deinit();
}

TEST(ClapFactory, refusesWhatItDoesNotHave) {
    EXPECT_EQ(clap_entry.get_factory("clap.unknown"), nullptr);
    EXPECT_EQ(clap_entry.get_factory(nullptr), nullptr);
    const clap_plugin_factory_t& factory = factoryOf(clap_entry);
    ClapHost host;
    EXPECT_EQ(factory.create_plugin(&factory, &host.table(), "com.morvak.other"), nullptr);
    EXPECT_EQ(factory.create_plugin(&factory, nullptr, "com.morvak.varno-s.mono"), nullptr);
    clap_host_t old = host.table();
    old.clap_version = {0, 26, 0};
    EXPECT_EQ(factory.create_plugin(&factory, &old, "com.morvak.varno-s.mono"), nullptr);
}

TEST(ClapFactory, makesAPluginThatIsNeverInitialised) {
    const clap_plugin_factory_t& factory = factoryOf(clap_entry);
    const ClapHost host;
    const clap_plugin_t* const plugin =
        factory.create_plugin(&factory, &host.table(), "com.morvak.varno-s.stereo");
    ASSERT_NE(plugin, nullptr);
    EXPECT_STREQ(plugin->desc->id, "com.morvak.varno-s.stereo");
    plugin->destroy(plugin);
}

TEST(ClapPlugin, hasOnePortInEitherDirection) {
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        ClapHost host;
        const HostedClap hosted(clap_entry, host, channels);
        const auto& ports = *static_cast<const clap_plugin_audio_ports_t*>(
            requireExtension(hosted.plugin(), CLAP_EXT_AUDIO_PORTS));
        for (const bool isInput : {true, false}) {
            ASSERT_EQ(ports.count(hosted.plugin(), isInput), 1U);
            clap_audio_port_info_t info{};
            ASSERT_TRUE(ports.get(hosted.plugin(), 0, isInput, &info));
            EXPECT_EQ(info.channel_count, channels);
            EXPECT_STREQ(info.port_type, channels == 1 ? "mono" : "stereo");
            EXPECT_STREQ(info.name, isInput ? "In" : "Out");
            EXPECT_EQ(info.flags, CLAP_AUDIO_PORT_IS_MAIN);
            EXPECT_EQ(info.in_place_pair, info.id);
            EXPECT_FALSE(ports.get(hosted.plugin(), 1, isInput, &info));
        }
    }
}

TEST(ClapPlugin, hasNoUnknownExtension) {
    ClapHost host;
    const HostedClap hosted(clap_entry, host, 2);
    for (const char* id : {"", "clap.note-ports", "clap.unknown"}) {
        EXPECT_EQ(hosted.plugin()->get_extension(hosted.plugin(), id), nullptr) << id;
    }
    EXPECT_EQ(hosted.plugin()->get_extension(hosted.plugin(), nullptr), nullptr);
}

TEST(ClapPlugin, isActiveAtEverySupportedRateOnly) {
    ClapHost host;
    HostedClap hosted(clap_entry, host, 2);
    for (const double rateHz : {16000.0, 44100.0, 192000.0, 384000.0}) {
        EXPECT_TRUE(hosted.activate(rateHz)) << rateHz;
    }
    EXPECT_EQ(host.log, "");
    for (const double rateHz : {0.0, -48000.0, 15999.0, 384001.0}) {
        EXPECT_FALSE(hosted.activate(rateHz)) << rateHz;
    }
    EXPECT_NE(host.log.find("3: sample rate 15999 Hz is not supported"), std::string::npos) << host.log;
    EXPECT_TRUE(hosted.activate(48000.0));
}

TEST(ClapPlugin, worksInAHostThatOffersNothing) {
    ClapHost host(ClapHost::Offer::kNothing);
    HostedClap hosted(clap_entry, host, 1);
    EXPECT_TRUE(hosted.activate());
    const Signal input = noise(1, 1000, 1, -6.0);
    EXPECT_EQ(textOf(renderChecked(hosted.processor(), input).complaints), "");
    EXPECT_TRUE(hosted.load(hosted.save()));
    testing::internal::CaptureStderr();
    EXPECT_FALSE(hosted.load("short"));
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("Varno-S: saved state: "), 0U);
}

TEST(ClapPlugin, rendersForAFileAlike) {
    ClapHost host;
    HostedClap hosted(clap_entry, host, 1);
    const auto& render =
        *static_cast<const clap_plugin_render_t*>(requireExtension(hosted.plugin(), CLAP_EXT_RENDER));
    EXPECT_FALSE(render.has_hard_realtime_requirement(hosted.plugin()));
    EXPECT_FALSE(render.set(hosted.plugin(), 7));
    const Signal input = drums(1, 9600, 48000.0, 1);
    Signal outputs[2];
    for (const std::int32_t mode : {CLAP_RENDER_REALTIME, CLAP_RENDER_OFFLINE}) {
        EXPECT_TRUE(render.set(hosted.plugin(), mode));
        hosted.activate();
        outputs[mode] = renderChecked(hosted.processor(), input).output;
    }
    EXPECT_EQ(firstDifference(outputs[0], outputs[1]), "");
}

} // namespace
} // namespace varno::test
