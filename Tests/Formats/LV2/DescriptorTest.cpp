// What hosts call before and after they run a plug-in, and which arguments they really pass.
#include "LV2/Ports.h"
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Support/Signal.h"

#include <cstdarg>
#include <cstdio>
#include <gtest/gtest.h>
#include <limits>
#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/state/state.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

namespace varno::test {
namespace {

LV2_Handle make(std::uint32_t plugin, double sampleRateHz, const LV2_Feature* const* features) {
    const LV2_Descriptor* descriptor = lv2_descriptor(plugin);
    return descriptor->instantiate(descriptor, sampleRateHz, "/nowhere/varno-s.lv2/", features);
}

TEST(Descriptor, isThereForEachPlugin) {
    for (std::uint32_t plugin = 0; plugin < kPluginUris.size(); ++plugin) {
        ASSERT_NE(lv2_descriptor(plugin), nullptr);
        EXPECT_STREQ(lv2_descriptor(plugin)->URI, kPluginUris[plugin].uri);
    }
}

TEST(Descriptor, isNullForAnUnknownIndex) {
    EXPECT_EQ(lv2_descriptor(static_cast<std::uint32_t>(kPluginUris.size())), nullptr);
    EXPECT_EQ(lv2_descriptor(std::numeric_limits<std::uint32_t>::max()), nullptr);
}

TEST(Descriptor, hasNoExtension) {
    for (const char* uri :
         {LV2_STATE__interface, LV2_OPTIONS__interface, LV2_UI__idleInterface, "", "unknown"}) {
        EXPECT_EQ(lv2_descriptor(0)->extension_data(uri), nullptr) << uri;
    }
}

TEST(Descriptor, makesPluginsWithoutAnyFeature) {
    const LV2_Feature* const none[] = {nullptr};
    for (std::uint32_t plugin = 0; plugin < kPluginUris.size(); ++plugin) {
        for (const LV2_Feature* const* features : {static_cast<const LV2_Feature* const*>(nullptr), none}) {
            LV2_Handle handle = make(plugin, 48000.0, features);
            ASSERT_NE(handle, nullptr);
            lv2_descriptor(plugin)->cleanup(handle); // never connected, never run
        }
    }
}

TEST(Descriptor, enduresAFeatureWithoutIdentifier) {
    const LV2_Feature nameless = {nullptr, nullptr};
    const LV2_Feature hardRealTime = {LV2_CORE__hardRTCapable, nullptr};
    const LV2_Feature* const features[] = {&nameless, &hardRealTime, nullptr};
    for (const double sampleRateHz : {48000.0, 1.0}) {
        LV2_Handle handle = make(1, sampleRateHz, features);
        EXPECT_EQ(handle != nullptr, sampleRateHz == 48000.0);
        if (handle != nullptr) {
            lv2_descriptor(1)->cleanup(handle);
        }
    }
}

TEST(Descriptor, makesAPluginAtEverySupportedRateOnly) {
    for (const double sampleRateHz : {16000.0, 44100.0, 192000.0, 384000.0}) {
        LV2_Handle handle = make(1, sampleRateHz, nullptr);
        ASSERT_NE(handle, nullptr) << sampleRateHz;
        lv2_descriptor(1)->cleanup(handle);
    }
    testing::internal::CaptureStderr();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    for (const double sampleRateHz : {0.0, -48000.0, 15999.0, 384001.0, notANumber}) {
        EXPECT_EQ(make(1, sampleRateHz, nullptr), nullptr) << sampleRateHz;
    }
    EXPECT_NE(testing::internal::GetCapturedStderr().find("Varno-S: sample rate 15999 Hz is not supported"),
              std::string::npos);
}

// A host's log that keeps its messages.
struct Log {
    std::string text;
    LV2_URID type = 0;

    static int print(LV2_Log_Handle handle, LV2_URID type, const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        const int length = printList(handle, type, format, arguments);
        va_end(arguments);
        return length;
    }
    static int printList(LV2_Log_Handle handle, LV2_URID type, const char* format, va_list arguments) {
        char text[256];
        const int length = std::vsnprintf(text, sizeof text, format, arguments);
        static_cast<Log*>(handle)->text += text;
        static_cast<Log*>(handle)->type = type;
        return length;
    }
};

constexpr LV2_URID kError = 17;

LV2_URID mapError(LV2_URID_Map_Handle /*handle*/, const char* uri) {
    return std::string(uri) == LV2_LOG__Error ? kError : 0;
}

TEST(Descriptor, tellsTheHostsLogWhyThereIsNoPlugin) {
    Log kept;
    LV2_Log_Log log = {&kept, Log::print, Log::printList};
    LV2_URID_Map map = {nullptr, mapError};
    const LV2_Feature logFeature = {LV2_LOG__log, &log};
    const LV2_Feature mapFeature = {LV2_URID__map, &map};
    const LV2_Feature* const features[] = {&logFeature, &mapFeature, nullptr};
    EXPECT_EQ(make(0, 8000.0, features), nullptr);
    EXPECT_NE(kept.text.find("8000 Hz"), std::string::npos);
    EXPECT_EQ(kept.text.back(), '\n');
    EXPECT_EQ(kept.type, kError);
}

TEST(Descriptor, ignoresPortsThatAreNone) {
    LV2_Handle handle = make(0, 48000.0, nullptr);
    float value = 0.25F;
    for (const std::uint32_t port : {21U, 22U, 1000U, std::numeric_limits<std::uint32_t>::max()}) {
        lv2_descriptor(0)->connect_port(handle, port, &value);
    }
    lv2_descriptor(0)->run(handle, 64);
    EXPECT_EQ(value, 0.25F);
    lv2_descriptor(0)->cleanup(handle);
}

TEST(Descriptor, runsAPluginThatWasNeverActivated) {
    LV2_Handle handle = make(1, 48000.0, nullptr);
    lv2_descriptor(1)->run(handle, 100);
    lv2_descriptor(1)->cleanup(handle);
}

TEST(Descriptor, makesManyPluginsSideBySide) {
    const Signal input = noise(2, 512, 4, -6.0);
    std::vector<std::unique_ptr<HostedPlugin>> plugins;
    for (int i = 0; i < 20; ++i) {
        plugins.push_back(std::make_unique<HostedPlugin>(2));
    }
    const Signal expected = renderChecked(plugins[0]->processor(), input).output;
    for (std::size_t i = 1; i < plugins.size(); ++i) {
        EXPECT_EQ(firstDifference(expected, renderChecked(plugins[i]->processor(), input).output), "");
    }
}

} // namespace
} // namespace varno::test
