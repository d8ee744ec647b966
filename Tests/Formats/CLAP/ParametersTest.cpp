// The parameters as hosts see them.
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/CommaLocale.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

class ClapParameters : public testing::Test {
protected:
    clap_param_info_t info(std::uint32_t index) {
        clap_param_info_t found{};
        EXPECT_TRUE(mParams.get_info(mHosted.plugin(), index, &found));
        return found;
    }

    ClapHost mHost;
    HostedClap mHosted{clap_entry, mHost, 2};
    const clap_plugin_params_t& mParams =
        *static_cast<const clap_plugin_params_t*>(requireExtension(mHosted.plugin(), CLAP_EXT_PARAMS));
};

// Hosts save the numbers and what they mean: a row may be added, none may change.
struct FrozenParameter {
    const char* name;
    clap_id id;
    double highest;
    double usual;
};
constexpr FrozenParameter kFrozen[] = {
    {"Gain", 1, 1.0, 0.5},         {"High Pass", 2, 1.0, 0.0}, {"Band Pass", 3, 1.0, 0.0},
    {"Attack", 4, 1.0, 0.5},       {"Release", 5, 1.0, 0.5},   {"Auto Gain", 6, 1.0, 0.0},
    {"UK Mode", 7, 1.0, 0.0},      {"Volume", 8, 1.0, 0.5},    {"Hottitude", 9, 1.0, 0.07F},
    {"Ratio", 10, 7.0, 4.0},       {"Mix", 11, 1.0, 0.0},      {"Harmonic Select", 12, 1.0, 0.0},
    {"Stereo Link", 13, 1.0, 0.0}, {"Bypass", 0, 1.0, 0.0},    {"Quality", 1000, 3.0, 0.0}};

TEST_F(ClapParameters, areAlwaysTheSame) {
    ASSERT_EQ(mParams.count(mHosted.plugin()), std::size(kFrozen));
    for (std::uint32_t index = 0; index < std::size(kFrozen); ++index) {
        const clap_param_info_t found = info(index);
        EXPECT_STREQ(found.name, kFrozen[index].name);
        EXPECT_EQ(found.id, kFrozen[index].id) << found.name;
        EXPECT_EQ(found.min_value, 0.0) << found.name;
        EXPECT_EQ(found.max_value, kFrozen[index].highest) << found.name;
        EXPECT_EQ(found.default_value, kFrozen[index].usual) << found.name;
        EXPECT_EQ(mHosted.value(found.id), found.default_value) << found.name;
        EXPECT_STREQ(found.module, "");
    }
    clap_param_info_t none{};
    EXPECT_FALSE(mParams.get_info(mHosted.plugin(), std::size(kFrozen), &none));
}

TEST_F(ClapParameters, stateWhatTheyAre) {
    for (std::uint32_t index = 0; index < std::size(kFrozen); ++index) {
        const clap_param_info_t found = info(index);
        const std::string name = found.name;
        const bool isChoice = name == "Ratio" || name == "High Pass" || name == "Quality";
        EXPECT_EQ((found.flags & CLAP_PARAM_IS_BYPASS) != 0, name == "Bypass") << name;
        EXPECT_EQ((found.flags & CLAP_PARAM_IS_AUTOMATABLE) != 0, name != "Quality") << name;
        if (isChoice) {
            EXPECT_EQ(found.flags & (CLAP_PARAM_IS_STEPPED | CLAP_PARAM_IS_ENUM),
                      CLAP_PARAM_IS_STEPPED | CLAP_PARAM_IS_ENUM)
                << name;
        }
        if (name == "Gain" || name == "Mix") {
            EXPECT_EQ(found.flags, CLAP_PARAM_IS_AUTOMATABLE) << name;
        }
        // Neither modulation nor values for single notes.
        EXPECT_EQ(found.flags & 0x7FC0U, 0U) << name;
    }
}

TEST_F(ClapParameters, haveTheTextsOfTheTable) {
    EXPECT_EQ(mHosted.text(1, 0.5), "0.0 dB");
    EXPECT_EQ(mHosted.text(1, 1.0), "+20.0 dB");
    EXPECT_EQ(mHosted.text(8, 0.0), "-20.0 dB");
    EXPECT_EQ(mHosted.text(11, 0.4), "40.0 %");
    EXPECT_EQ(mHosted.text(2, 1.0), "on");
    EXPECT_EQ(mHosted.text(10, 4.0), "5");
    EXPECT_EQ(mHosted.text(0, 0.0), "off");
    EXPECT_EQ(mHosted.text(0, 1.0), "on");
    EXPECT_EQ(mHosted.text(1000, 2.0), "4x");
    EXPECT_EQ(mHosted.fromText(1, "-10 dB"), 0.25);
    EXPECT_EQ(mHosted.fromText(11, "25 %"), 0.25);
    EXPECT_EQ(mHosted.fromText(10, "8"), 7.0);
    EXPECT_EQ(mHosted.fromText(0, "on"), 1.0);
    EXPECT_EQ(mHosted.fromText(1000, "8x"), 3.0);
    for (const clap_id id : {1U, 5U, 10U, 0U, 1000U}) {
        EXPECT_EQ(mHosted.fromText(id, "loud"), std::nullopt) << id;
        EXPECT_EQ(mHosted.fromText(id, ""), std::nullopt) << id;
    }
}

// The times mean the curve that is chosen.
TEST_F(ClapParameters, haveTimesOfTheChosenCurve) {
    const std::string before = mHosted.text(4, 0.5);
    EXPECT_NE(before.find(" ms"), std::string::npos) << before;
    mHosted.add({{0, 10, 7.0}});
    mHosted.flush();
    EXPECT_NE(mHosted.text(4, 0.5), before);
}

TEST_F(ClapParameters, comeBackFromTheirTexts) {
    const CommaLocale locale;
    for (std::uint32_t index = 0; index < std::size(kFrozen); ++index) {
        const clap_param_info_t found = info(index);
        for (int step = 0; step <= 100; ++step) {
            double value = found.max_value * step / 100.0;
            if ((found.flags & CLAP_PARAM_IS_STEPPED) != 0) {
                value = std::round(value);
            }
            const std::string text = mHosted.text(found.id, value);
            EXPECT_NE(text, "");
            EXPECT_EQ(text.find(','), std::string::npos) << text;
            const auto back = mHosted.fromText(found.id, text);
            ASSERT_TRUE(back) << found.name << ' ' << text;
            EXPECT_EQ(mHosted.text(found.id, *back), text) << found.name;
            if ((found.flags & CLAP_PARAM_IS_STEPPED) != 0) {
                EXPECT_EQ(*back, value) << found.name;
            }
        }
    }
}

TEST_F(ClapParameters, refuseWhatIsNoneOrHasNoRoom) {
    double value = 0.25;
    char text[4] = "abc";
    EXPECT_FALSE(mParams.get_value(mHosted.plugin(), 14, &value));
    EXPECT_FALSE(mParams.text_to_value(mHosted.plugin(), CLAP_INVALID_ID, "1", &value));
    EXPECT_FALSE(mParams.value_to_text(mHosted.plugin(), 14, 0.5, text, sizeof text));
    EXPECT_FALSE(mParams.value_to_text(mHosted.plugin(), 1, 0.5, text, sizeof text)) << "0.0 dB";
    EXPECT_FALSE(mParams.value_to_text(mHosted.plugin(), 1, std::nan(""), text, sizeof text));
    EXPECT_STREQ(text, "abc");
    EXPECT_EQ(value, 0.25);
    EXPECT_TRUE(mParams.value_to_text(mHosted.plugin(), 2, 1.0, text, sizeof text));
    EXPECT_STREQ(text, "on");
}

TEST_F(ClapParameters, takeValuesWhileNothingProcesses) {
    mHosted.add({{0, 1, 0.75}, {0, 10, 7.0}, {0, 0, 1.0}, {0, 1000, 2.0}, {0, 14, 1.0}, {0, 11, 9.0}});
    mHosted.add({{0, 8, std::nan("")}, {0, 9, std::numeric_limits<double>::infinity()}});
    mHosted.add({{0, 5, 0.25, CLAP_EVENT_PARAM_MOD}});
    mHosted.flush();
    EXPECT_EQ(mHosted.value("Gain"), 0.75);
    EXPECT_EQ(mHosted.value("Ratio"), 7.0);
    EXPECT_EQ(mHosted.value("Bypass"), 1.0);
    EXPECT_EQ(mHosted.value("Quality"), 2.0);
    EXPECT_EQ(mHosted.value("Mix"), 1.0) << "limited";
    EXPECT_EQ(mHosted.value("Volume"), 0.5) << "no number";
    EXPECT_EQ(mHosted.value("Hottitude"), double{0.07F}) << "no finite number";
    EXPECT_EQ(mHosted.value("Release"), 0.5) << "modulation is not offered";
    EXPECT_EQ(mHost.restarts, 0);
    EXPECT_EQ(mHosted.takeSent(), SentEvents());
}

} // namespace
} // namespace varno::test
