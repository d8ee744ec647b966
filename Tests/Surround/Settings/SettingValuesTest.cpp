#include "Surround/Settings/SettingValues.h"

#include "Host/HostAutomation.h"
#include "Host/InstanceHost.h"
#include "Tests/Integration/HostedEffect.h"

#include <gmock/gmock.h>
#include <limits>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// What the automation reports.
class Requests : public AutomationListener {
public:
    explicit Requests(Instance& instance)
        : mAutomation(instance.host().automation()) {
        mAutomation.addListener(*this);
    }
    ~Requests() override { mAutomation.removeListener(*this); }
    Requests(const Requests&) = delete;
    Requests& operator=(const Requests&) = delete;

    void valueRequested(const std::string& id, double) override { calls.push_back("set " + id); }
    void touched(const std::string& id) override { calls.push_back("touch " + id); }
    void released(const std::string& id) override { calls.push_back("release " + id); }

    std::vector<std::string> calls;

private:
    HostAutomation& mAutomation;
};

class SettingValuesTest : public HostedEffect {};

TEST_F(SettingValuesTest, areAllParametersButTheBypass) {
    const auto instance = makeInstance(module());
    EXPECT_EQ(kSettingCount + 1, instance->parameters().size());
    for (const ParameterInfo& parameter : instance->parameters()) {
        EXPECT_EQ(settingOf(parameter.id).has_value(), !parameter.isMasterBypass) << parameter.id;
    }
    for (std::size_t i = 0; i < kSettingCount; ++i) {
        EXPECT_EQ(settingOf(settingID(i)), i);
    }
    EXPECT_EQ(settingOf(""), std::nullopt);
    EXPECT_EQ(settingOf("gain"), std::nullopt);
    EXPECT_THROW(settingID(kSettingCount), std::out_of_range);
}

TEST_F(SettingValuesTest, haveTheNamesOfTheLegends) {
    EXPECT_EQ(settingName(*settingOf("Gain")), "Gain");
    EXPECT_EQ(settingName(*settingOf("HP")), "High Pass");
    EXPECT_EQ(settingName(*settingOf("Rls")), "Release");
    EXPECT_EQ(settingName(*settingOf("ASw")), "Auto Gain");
}

TEST_F(SettingValuesTest, areThoseOfTheInstance) {
    const auto instance = makeInstance(module());
    EXPECT_EQ(settingsOf(*instance), defaultSettings(*instance));
    EXPECT_EQ(defaultSettings(*instance)[*settingOf("Hot")], 0.07F);
    instance->setNormalized("Hot", 0.75);
    SettingValues expected = defaultSettings(*instance);
    expected[*settingOf("Hot")] = 0.75F;
    EXPECT_EQ(settingsOf(*instance), expected);
}

TEST_F(SettingValuesTest, areRequestedAsAnEditorDoes) {
    const auto instance = makeInstance(module());
    const Requests requests(*instance);
    SettingValues values = settingsOf(*instance);
    values[*settingOf("Mix")] = 0.3F;
    values[*settingOf("Gain")] = 0.1F;
    requestSettings(*instance, values);
    EXPECT_THAT(requests.calls,
                ElementsAre("touch Gain", "set Gain", "release Gain", "touch Mix", "set Mix", "release Mix"))
        << "the others are the same";
    EXPECT_EQ(settingsOf(*instance), values);
}

TEST_F(SettingValuesTest, areRequestedOneByOne) {
    const auto instance = makeInstance(module());
    Requests requests(*instance);
    requestSetting(*instance, *settingOf("Volume"), 0.3F);
    EXPECT_EQ(instance->normalized("Volume"), double{0.3F});
    EXPECT_THAT(requests.calls, ElementsAre("touch Volume", "set Volume", "release Volume"));
    requests.calls.clear();
    requestSetting(*instance, *settingOf("Volume"), 0.3F);
    EXPECT_THAT(requests.calls, IsEmpty());
}

TEST_F(SettingValuesTest, areComparedWithWhatWasRequestedBefore) {
    const auto instance = makeInstance(module());
    instance->requestNormalized("Volume", 0.75); // not answered yet
    requestSetting(*instance, *settingOf("Volume"), 0.5F);
    EXPECT_EQ(instance->normalized("Volume"), 0.5);
    instance->requestNormalized("Volume", 0.75);
    SettingValues values = defaultSettings(*instance);
    requestSettings(*instance, values);
    EXPECT_EQ(settingsOf(*instance), values);
}

TEST_F(SettingValuesTest, areLimited) {
    const auto instance = makeInstance(module());
    const auto gain = *settingOf("Gain");
    for (const auto& [value, expected] :
         {std::pair(2.0F, 1.0F), std::pair(-0.5F, 0.0F),
          std::pair(std::numeric_limits<float>::quiet_NaN(), 0.0F),
          std::pair(std::numeric_limits<float>::infinity(), 1.0F), std::pair(0.25F, 0.25F)}) {
        SettingValues values = defaultSettings(*instance);
        values[gain] = value;
        EXPECT_EQ(limitedSettings(values)[gain], expected);
        requestSetting(*instance, gain, value);
        EXPECT_EQ(instance->normalized("Gain"), double{expected}) << value;
    }
}

TEST_F(SettingValuesTest, areTheSameWithinWhatAPresetKeeps) {
    std::mt19937 random(1); // NOLINT(bugprone-random-generator-seed): the same cases in each run
    for (int i = 0; i < 1000; ++i) {
        SettingValues values{};
        for (float& value : values) {
            // Small ones as well, of which the text keeps fewer digits.
            value = static_cast<float>(random()) / static_cast<float>(std::mt19937::max());
            value = i % 2 == 0 ? value : value * value * value * value * value * value;
        }
        const auto kept = DemoGain_PresetText::Parse(DemoGain_PresetText::Write(values));
        ASSERT_TRUE(kept.has_value());
        EXPECT_TRUE(areSameSettings(values, *kept));
    }
    SettingValues values{};
    values.fill(0.5F);
    for (float& value : values) {
        value = std::nextafter(0.5F, 1.0F);
        SettingValues plain{};
        plain.fill(0.5F);
        EXPECT_FALSE(areSameSettings(values, plain)) << "the text distinguishes them";
        value = 0.5F;
    }
}

// A module of another kind, of which the window shows the editor all the same.
class SettingValuesOfOthers : public HostFixture {
protected:
    SettingValuesOfOthers()
        : HostFixture(VARNO_FIXTURE_BUNDLE) {}
};

TEST_F(SettingValuesOfOthers, areZeroWhereThereIsNoSuchParameter) {
    const auto instance = makeInstance(module());
    const auto gain = *settingOf("Gain");
    SettingValues expected{};
    expected[gain] = static_cast<float>(instance->parameter("Gain")->defaultNormalized);
    EXPECT_EQ(defaultSettings(*instance), expected);
    SettingValues values{};
    values.fill(0.75F);
    requestSettings(*instance, values);
    expected[gain] = 0.75F;
    EXPECT_EQ(settingsOf(*instance), expected);
}

} // namespace
} // namespace varno::test
