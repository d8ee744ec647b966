// States as hosts save and load them.
#include "Shared/SharedModule.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

constexpr std::uint32_t kContexts[] = {0, CLAP_STATE_CONTEXT_FOR_PRESET, CLAP_STATE_CONTEXT_FOR_DUPLICATE,
                                       CLAP_STATE_CONTEXT_FOR_PROJECT};

std::string textOf(const std::vector<std::byte>& bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class ClapState : public testing::Test {
protected:
    // The module's own chunk of such values.
    static std::string chunkOf(const ParameterValues& values) {
        const SharedModule shared;
        Instance instance(shared.get(), {});
        automate(instance, values);
        return textOf(instance.save().toBytes());
    }

    // Everything moved, so that each parameter shows whether it was kept.
    void change() {
        for (clap_id id = 1; id <= 13; ++id) {
            mHosted.add({{0, id, id == 10 ? 2.0 : id % 2 == 0 ? 1.0 : 0.3}});
        }
        mHosted.add({{0, 0, 1.0}, {0, 1000, 2.0}});
        mHosted.flush();
    }

    static std::vector<double> valuesOf(const HostedClap& hosted) {
        std::vector<double> values;
        for (clap_id id = 0; id <= 13; ++id) {
            values.push_back(hosted.value(id));
        }
        values.push_back(hosted.value(1000));
        return values;
    }

    ClapHost mHost;
    HostedClap mHosted{clap_entry, mHost, 2};
};

TEST_F(ClapState, bringsEverythingBack) {
    change();
    for (const bool isActive : {false, true}) {
        ClapHost host;
        HostedClap other(clap_entry, host, 2);
        if (isActive) {
            other.activate();
        }
        const std::string state = mHosted.save();
        EXPECT_TRUE(other.load(state)) << host.log;
        EXPECT_EQ(valuesOf(other), valuesOf(mHosted));
        EXPECT_EQ(other.save(), state);
        EXPECT_EQ(host.valueRescans, 1);
        EXPECT_EQ(host.restarts, isActive ? 1 : 0) << "the quality changed";
    }
}

TEST_F(ClapState, beginsWithTheModulesOwnChunk) {
    change();
    const std::string state = mHosted.save();
    const std::string settings = mHosted.save(CLAP_STATE_CONTEXT_FOR_PRESET);
    EXPECT_EQ(state.size(), settings.size() + 16);
    EXPECT_EQ(state.substr(0, settings.size()), settings);
    const std::string chunk = chunkOf({{"Gain", 0.3F},
                                       {"HP", 1.0},
                                       {"Band", 0.0},
                                       {"Atk", 1.0},
                                       {"Rls", 0.3F},
                                       {"ASw", 1.0},
                                       {"UK", 0.0},
                                       {"Volume", 1.0},
                                       {"Hot", 0.3F},
                                       {"Ratio", 2.0F / 7.0F},
                                       {"Mix", 0.3F},
                                       {"HSw", 1.0},
                                       {"LinkSw", 0.0}});
    EXPECT_EQ(settings, chunk);
}

// Values that the state has between two steps stay as they are.
TEST_F(ClapState, keepsAChunkUnchanged) {
    const std::string chunk = chunkOf({{"Ratio", 0.37}, {"HP", 0.7}, {"Gain", 0.123456789}});
    EXPECT_TRUE(mHosted.load(chunk));
    EXPECT_EQ(mHosted.save(CLAP_STATE_CONTEXT_FOR_PRESET), chunk);
    // A host that repeats what it reads changes nothing.
    mHosted.add({{0, 10, mHosted.value("Ratio")}, {0, 2, mHosted.value("High Pass")}});
    mHosted.flush();
    EXPECT_EQ(mHosted.save(CLAP_STATE_CONTEXT_FOR_PRESET), chunk);
}

TEST_F(ClapState, ofAPresetLeavesBypassAndQualityAlone) {
    const std::string usual = mHosted.save();
    for (const std::uint32_t saved : kContexts) {
        for (const std::uint32_t loaded : kContexts) {
            const std::string state = mHosted.save(saved);
            change();
            EXPECT_TRUE(mHosted.load(state, loaded));
            const bool isPreset =
                saved == CLAP_STATE_CONTEXT_FOR_PRESET || loaded == CLAP_STATE_CONTEXT_FOR_PRESET;
            EXPECT_EQ(mHosted.value("Gain"), 0.5);
            EXPECT_EQ(mHosted.value("Bypass"), isPreset ? 1.0 : 0.0);
            EXPECT_EQ(mHosted.value("Quality"), isPreset ? 2.0 : 0.0);
            mHosted.load(usual);
        }
    }
}

TEST_F(ClapState, ofTheMonoPluginLoadsIntoTheStereoOne) {
    ClapHost host;
    HostedClap mono(clap_entry, host, 1);
    mono.add({{0, 1, 0.25}});
    mono.flush();
    EXPECT_TRUE(mHosted.load(mono.save()));
    EXPECT_EQ(mHosted.value("Gain"), 0.25);
}

TEST_F(ClapState, passesStreamsThatTakeAndGiveByteByByte) {
    change();
    const std::string state = mHosted.save();
    EXPECT_EQ(mHosted.save(0, 1), state);
    EXPECT_EQ(mHosted.save(0, 0), "") << "a stream that takes nothing";
    ClapHost host;
    HostedClap other(clap_entry, host, 2);
    EXPECT_TRUE(other.load(state, 0, 7));
    EXPECT_EQ(other.save(), state);
}

TEST_F(ClapState, thatIsRefusedChangesNothing) {
    change();
    const std::string state = mHosted.save();
    for (std::string bad : {std::string(), state.substr(0, state.size() - 1), state + "x",
                            std::string(100000, 'x'), state.substr(0, 40)}) {
        EXPECT_FALSE(mHosted.load(bad)) << bad.size();
        EXPECT_EQ(mHosted.save(), state);
    }
    for (std::size_t byte = 0; byte < state.size(); ++byte) {
        std::string bad = state;
        bad[byte] = static_cast<char>(~bad[byte]);
        if (!mHosted.load(bad)) {
            EXPECT_EQ(mHosted.save(), state) << byte;
        } else {
            mHosted.load(state);
        }
    }
    EXPECT_NE(mHost.log, "");
}

// The values that are heard are those of the state, also where the plug-in processes.
TEST_F(ClapState, isHeard) {
    const Signal input = drums(2, 9600, 48000.0, 5);
    mHosted.add({{0, 1, 0.9}, {0, 9, 0.6}});
    mHosted.flush();
    const std::string state = mHosted.save();
    mHosted.activate();
    const Signal expected = renderChecked(mHosted.processor(), input).output;
    ClapHost host;
    HostedClap other(clap_entry, host, 2);
    other.activate();
    EXPECT_TRUE(other.load(state));
    EXPECT_EQ(firstDifference(expected, renderChecked(other.processor(), input).output), "");
}

} // namespace
} // namespace varno::test
