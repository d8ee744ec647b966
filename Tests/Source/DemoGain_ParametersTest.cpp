#include "DemoGain_Parameters.h"

#include "AAX_IParameter.h"
#include "DemoGain_Alg.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_PresetText.h"
#include "Tests/Source/DataModelFixture.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <stdexcept>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using varno::test::DataModelFixture;

// What hosts and saved settings rely on, written down a second time.
struct Expected {
    const char* id;
    const char* name;
    double defaultValue;
    std::int32_t steps;
    AAX_EParameterType type;
    const char* defaultText;
};

constexpr Expected kExpected[] = {
    {"MasterBypassID", "Master Bypass", 0.0, 2, AAX_eParameterType_Discrete, "bypass"},
    {"Gain", "Gain", 0.5, 131, AAX_eParameterType_Continuous, "0.50"},
    {"HP", "HP", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
    {"Band", "Band", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
    {"Atk", "Atk", 0.5, 131, AAX_eParameterType_Continuous, "0.50"},
    {"Rls", "Rls", 0.5, 131, AAX_eParameterType_Continuous, "0.50"},
    {"ASw", "Auto", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
    {"UK", "UK", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
    {"Volume", "Vol", 0.5, 131, AAX_eParameterType_Continuous, "0.50"},
    {"Hot", "Hot", std::bit_cast<float>(0x3D8F5C29), 131, AAX_eParameterType_Continuous, "0.07"},
    {"Ratio", "Ratio", 0.5, 8, AAX_eParameterType_Continuous, "0.50"},
    {"Mix", "Mix", 0.0, 131, AAX_eParameterType_Continuous, "0.00"},
    {"HSw", "HarmSw", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
    {"LinkSw", "LinkSw", 0.0, 2, AAX_eParameterType_Continuous, "0.00"},
};

// Fields that one parameter's packet writes, in the order of posting.
using Fields = std::vector<AAX_CFieldIndex>;
const Fields kTimeConstsFields = {17, 18, 19, 20, 21, 22, 23, 7, 8, 12, 10, 16};
const std::map<std::string, Fields> kFieldsOfParameter = {
    {"MasterBypassID", {0}},
    {"Gain", {2, 1}},
    {"Volume", {4, 3}},
    {"HP", {5}},
    {"Band", {6}},
    {"ASw", {9}},
    {"Hot", {11}},
    {"Mix", {13}},
    {"HSw", {14}},
    {"LinkSw", {15}},
    {"Atk", kTimeConstsFields},
    {"Rls", kTimeConstsFields},
    {"UK", kTimeConstsFields},
    {"Ratio", kTimeConstsFields},
};

class Parameters : public testing::Test {
protected:
    Parameters() { EXPECT_EQ(fixture.initialize(), AAX_SUCCESS); }

    AAX_IParameter& parameter(const char* id) {
        AAX_IParameter* result = nullptr;
        EXPECT_EQ(fixture.model->GetParameter(id, &result), AAX_SUCCESS);
        return *result;
    }

    DataModelFixture fixture;
    DemoGain_Parameters& model = *fixture.model;
};

// The parameter set.

TEST_F(Parameters, areFourteenInTheirOrder) {
    std::int32_t count = 0;
    EXPECT_EQ(model.GetNumberOfParameters(&count), AAX_SUCCESS);
    ASSERT_EQ(count, static_cast<std::int32_t>(std::size(kExpected)));
    for (std::int32_t i = 0; i < count; ++i) {
        AAX_CString id;
        EXPECT_EQ(model.GetParameterIDFromIndex(i, &id), AAX_SUCCESS);
        EXPECT_STREQ(id.Get(), kExpected[i].id);
    }
}

TEST_F(Parameters, areNamedSteppedAndTypedAsHostsKnowThem) {
    for (const Expected& expected : kExpected) {
        SCOPED_TRACE(expected.id);
        AAX_CString name;
        EXPECT_EQ(model.GetParameterName(expected.id, &name), AAX_SUCCESS);
        EXPECT_STREQ(name.Get(), expected.name);
        std::int32_t steps = 0;
        EXPECT_EQ(model.GetParameterNumberOfSteps(expected.id, &steps), AAX_SUCCESS);
        EXPECT_EQ(steps, expected.steps);
        AAX_EParameterType type{-1};
        EXPECT_EQ(model.GetParameterType(expected.id, &type), AAX_SUCCESS);
        EXPECT_EQ(type, expected.type);
    }
}

TEST_F(Parameters, startAtTheirDefaultsWhichAreNormalizedAndRealAlike) {
    for (const Expected& expected : kExpected) {
        SCOPED_TRACE(expected.id);
        double normalized = -1.0;
        EXPECT_EQ(model.GetParameterDefaultNormalizedValue(expected.id, &normalized), AAX_SUCCESS);
        EXPECT_EQ(normalized, expected.defaultValue);
        EXPECT_EQ(fixture.value(expected.id), expected.defaultValue);
        float real = -1.0F;
        if (parameter(expected.id).GetValueAsFloat(&real)) {
            EXPECT_EQ(real, expected.defaultValue);
        }
        AAX_CString text;
        EXPECT_EQ(model.GetParameterValueString(expected.id, &text, 32), AAX_SUCCESS);
        EXPECT_STREQ(text.Get(), expected.defaultText);
    }
}

TEST_F(Parameters, areAutomatableWithoutShortNamesOrOrientation) {
    for (const Expected& expected : kExpected) {
        SCOPED_TRACE(expected.id);
        std::uint8_t isAutomatable = 0;
        EXPECT_EQ(model.GetParameterIsAutomatable(expected.id, &isAutomatable), AAX_SUCCESS);
        EXPECT_EQ(isAutomatable, 1);
        std::int32_t orientation = -1;
        EXPECT_EQ(model.GetParameterOrientation(expected.id, &orientation), AAX_SUCCESS);
        EXPECT_EQ(orientation, 0);
        EXPECT_STREQ(parameter(expected.id).ShortenedName(1).Get(), expected.name);
    }
}

TEST_F(Parameters, beginWithTheMasterBypassWhichReadsBypassWhenItIsOff) {
    AAX_CString id;
    EXPECT_EQ(model.GetMasterBypassParameter(&id), AAX_SUCCESS);
    EXPECT_STREQ(id.Get(), "MasterBypassID");
    bool isOn = true;
    EXPECT_TRUE(parameter("MasterBypassID").GetValueAsBool(&isOn));
    EXPECT_FALSE(isOn);

    AAX_CString text;
    EXPECT_EQ(model.GetParameterStringFromValue("MasterBypassID", 1.0, &text, 32), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "on");
    double value = -1.0;
    EXPECT_EQ(model.GetParameterValueFromString("MasterBypassID", &value, AAX_CString("bypass")),
              AAX_SUCCESS);
    EXPECT_EQ(value, 0.0);
}

TEST_F(Parameters, moveInTheirSteps) {
    AAX_IParameter& ratio = parameter("Ratio");
    for (std::uint32_t step = 0; step < 8; ++step) {
        ratio.SetStepValue(step);
        fixture.answer();
        EXPECT_FLOAT_EQ(static_cast<float>(fixture.value("Ratio")), static_cast<float>(step) / 7.0F);
        EXPECT_EQ(ratio.GetStepValue(), step);
    }
    AAX_IParameter& highPass = parameter("HP");
    for (std::uint32_t step : {1U, 0U, 7U}) {
        highPass.SetStepValue(step);
        fixture.answer();
        EXPECT_EQ(fixture.value("HP"), step == 0 ? 0.0 : 1.0);
    }
}

TEST_F(Parameters, stayWithinTheirRange) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    for (const Expected& expected : kExpected) {
        for (const auto& [asked, given] : {std::pair(-1.0, 0.0), {7.0, 1.0}, {kInfinity, 1.0}, {kNaN, 0.0}}) {
            SCOPED_TRACE(expected.id + std::string(" ") + std::to_string(asked));
            fixture.automate(expected.id, asked);
            EXPECT_EQ(fixture.value(expected.id), given);
            EXPECT_EQ(model.SetParameterNormalizedValue(expected.id, asked), AAX_SUCCESS);
            ASSERT_EQ(fixture.automation.requests.size(), 1U);
            EXPECT_EQ(fixture.automation.requests.front().second, given);
            fixture.answer();
        }
    }
}

TEST_F(Parameters, haveNoCustomData) {
    char data[4] = {1, 2, 3, 4};
    std::uint32_t written = 99;
    EXPECT_EQ(model.GetCustomData(AAX_FourCC("any "), sizeof data, data, &written), AAX_SUCCESS);
    EXPECT_EQ(written, 0U);
    EXPECT_EQ(data[0], 1);
}

TEST_F(Parameters, areEachInTheSettingsTextButTheBypass) {
    std::multiset<std::string> inText;
    for (const DemoGain_PresetText::Item& item : DemoGain_PresetText::kItems) {
        inText.insert(item.mParameterID);
    }
    std::multiset<std::string> inTable;
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        if (row.mType == AAX_eParameterType_Continuous) {
            inTable.insert(row.mIdentifier);
        }
    }
    EXPECT_EQ(inText, inTable);
}

TEST_F(Parameters, areRegisteredForPacketsInTheirOrder) {
    const std::pair<const char*, AAX_CFieldIndex> expected[] = {
        {"MasterBypassID", 0}, {"Gain", 1},   {"Volume", 3}, {"HP", 5},   {"Band", 6},   {"ASw", 9},
        {"Hot", 11},           {"Mix", 13},   {"Atk", 16},   {"Rls", 16}, {"Ratio", 16}, {"UK", 16},
        {"HSw", 14},           {"LinkSw", 15}};
    ASSERT_EQ(kDemoGain_PacketOrder.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_STREQ(kDemoGain_PacketOrder[i]->mIdentifier, expected[i].first);
        EXPECT_EQ(kDemoGain_PacketOrder[i]->mField, expected[i].second);
    }
}

// Packets.

// A host may ask for the coefficients as soon as it has a parameter.
TEST_F(Parameters, haveNoPacketsBeforeTheyAreAllThere) {
    class AskingAutomation : public varno::test::FakeAutomation {
    public:
        AAX_Result RegisterParameter(AAX_CParamID) override { return asked->GenerateCoefficients(); }
        DemoGain_Parameters* asked = nullptr;
    };
    AskingAutomation asking;
    asking.asked = &model;
    fixture.host.offer(IID_IAAXAutomationDelegateV1, &asking);
    EXPECT_EQ(fixture.initialize(), AAX_SUCCESS);
    EXPECT_TRUE(fixture.controller.posts.empty());
    fixture.generate();
    EXPECT_EQ(fixture.controller.posts.size(), 24U) << "each field once";
    model.Uninitialize();
}

TEST_F(Parameters, arePostedOnceEachByTheFirstGeneration) {
    fixture.generate();
    const Fields expected = {9,  17, 18, 19, 20, 21, 22, 23, 7, 8,  12, 10,
                             16, 6,  2,  1,  5,  14, 11, 15, 0, 13, 4,  3};
    EXPECT_EQ(fixture.controller.fields(), expected);
    fixture.generate();
    EXPECT_TRUE(fixture.controller.posts.empty());
}

TEST_F(Parameters, postTheirFieldsAndNoOthersWhenTheyChange) {
    fixture.generate();
    for (const auto& [id, fields] : kFieldsOfParameter) {
        SCOPED_TRACE(id);
        fixture.automate(id.c_str(), 1.0);
        fixture.generate();
        EXPECT_EQ(fixture.controller.fields(), fields);
        for (const auto& post : fixture.controller.posts) {
            EXPECT_EQ(post.bytes.size(), kAlgDataInPortSize);
        }
    }
    EXPECT_EQ(kFieldsOfParameter.size(), std::size(kDemoGain_Parameters));
}

TEST_F(Parameters, shareOnePacketOfTimeConstants) {
    fixture.generate();
    for (const char* id : {"UK", "Ratio", "Rls", "Atk"}) {
        fixture.automate(id, 0.75);
    }
    fixture.generate();
    EXPECT_EQ(fixture.controller.fields(), kTimeConstsFields);
}

TEST_F(Parameters, reachTheRoutineUnchangedAsSingleValues) {
    for (const auto& [id, field] : {std::pair("HP", 5),
                                    {"Band", 6},
                                    {"ASw", 9},
                                    {"Hot", 11},
                                    {"Mix", 13},
                                    {"HSw", 14},
                                    {"LinkSw", 15}}) {
        fixture.automate(id, 0.3);
        fixture.generate();
        EXPECT_EQ(fixture.posted(field), 0.3F) << id;
    }
    fixture.automate("MasterBypassID", 1.0);
    fixture.generate();
    EXPECT_EQ(fixture.controller.latest(0).as<std::int32_t>(), 1);
}

TEST_F(Parameters, turnGainAndVolumeIntoLevels) {
    struct Level {
        double value;
        float dB;
        float linear;
    };
    for (const Level& level : {Level{0.5, 0.0F, 1.0F}, {0.0, -20.0F, 0.1F}, {1.0, 20.0F, 10.0F}}) {
        fixture.automate("Gain", level.value);
        fixture.automate("Volume", level.value);
        fixture.generate();
        EXPECT_EQ(fixture.posted(1), level.dB);
        EXPECT_EQ(fixture.posted(2), level.linear);
        EXPECT_EQ(fixture.posted(3), level.dB);
        EXPECT_EQ(fixture.posted(4), level.linear);
    }
}

TEST_F(Parameters, giveTheTimeConstantsTheirRawValues) {
    fixture.automate("Atk", 0.1);
    fixture.automate("Rls", 0.2);
    fixture.automate("Ratio", 0.3);
    fixture.automate("UK", 1.0);
    fixture.generate();
    EXPECT_EQ(fixture.posted(7), 0.1F);
    EXPECT_EQ(fixture.posted(8), 0.2F);
    EXPECT_EQ(fixture.posted(12), 0.3F);
    EXPECT_EQ(fixture.posted(10), 1.0F);
    EXPECT_EQ(fixture.posted(19), -30.0F);
}

TEST_F(Parameters, chooseTheCurveByTruncation) {
    // The value of the second coefficient where its line meets x = 0.5, that is Atk 1 and Rls 0.5.
    fixture.automate("Atk", 1.0);
    for (const auto& [ratio, slope, offset] : {std::tuple(0.5, 1.6908981, 0.2950281),
                                               {1.0, 0.7548269, 1.6672131},
                                               {0.07, -0.81804353, 1.6369839},
                                               {0.08, 1.6467217, -0.2675606}}) {
        fixture.automate("Ratio", ratio);
        fixture.generate();
        EXPECT_FLOAT_EQ(fixture.posted(21), static_cast<float>(slope * 0.5 + offset)) << ratio;
    }
}

TEST_F(Parameters, shortenTheReleaseWithUK) {
    fixture.generate();
    const double plain = fixture.posted(17);
    fixture.automate("UK", 1.0);
    fixture.generate();
    EXPECT_NEAR(fixture.posted(17), plain * 0.99991, 1e-7);
    fixture.automate("UK", 0.5);
    fixture.generate();
    EXPECT_EQ(fixture.posted(17), static_cast<float>(plain)) << "on is above one half";
}

TEST_F(Parameters, scaleTheTimeConstantsWithTheSampleRate) {
    fixture.automate("Atk", 0.0);
    fixture.generate();
    EXPECT_FLOAT_EQ(fixture.posted(16), 0.95F);
    const std::map<AAX_CFieldIndex, float> at48 = {
        {16, fixture.posted(16)}, {17, fixture.posted(17)}, {18, fixture.posted(18)}};
    fixture.controller.sampleRate = 96000.0F;
    fixture.automate("Atk", 0.0);
    fixture.generate();
    for (const auto& [field, coefficient] : at48) {
        EXPECT_NEAR(fixture.posted(field), std::sqrt(static_cast<double>(coefficient)), 1e-7) << field;
    }
}

TEST_F(Parameters, countAnUnknownSampleRateAs48kHz) {
    fixture.generate();
    const float attack = fixture.posted(16);
    for (const float rate :
         {0.0F, -44100.0F, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        fixture.controller.sampleRate = rate;
        fixture.automate("Atk", 0.5);
        fixture.generate();
        EXPECT_EQ(fixture.posted(16), attack) << rate;
    }
    fixture.controller.sampleRate = 96000.0F;
    fixture.controller.sampleRateResult = AAX_ERROR_UNIMPLEMENTED;
    fixture.automate("Atk", 0.5);
    fixture.generate();
    EXPECT_EQ(fixture.posted(16), attack);
}

TEST_F(Parameters, arePostedInFullByARecycledInstance) {
    fixture.generate();
    Fields all = fixture.controller.fields();
    std::sort(all.begin(), all.end());
    EXPECT_EQ(all.size(), 24U);
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end()) << "each field once";
    for (const bool isEndedBefore : {true, false}) {
        if (isEndedBefore) {
            EXPECT_EQ(model.Uninitialize(), AAX_SUCCESS);
        }
        EXPECT_EQ(fixture.initialize(), AAX_SUCCESS);
        fixture.generate();
        Fields again = fixture.controller.fields();
        std::sort(again.begin(), again.end());
        EXPECT_EQ(again, all);
        fixture.generate();
        EXPECT_EQ(fixture.controller.fields(), Fields{});
    }
}

// Saved settings in a host that answers within the request.

class ParametersRestored : public testing::Test {
protected:
    ParametersRestored() {
        mFixture.host.offer(IID_IAAXAutomationDelegateV1, &mAutomation);
        EXPECT_EQ(mFixture.initialize(), AAX_SUCCESS);
        for (const Expected& expected : kExpected) {
            mFixture.automate(expected.id, kSaved);
        }
        mChunk.emplace(save());
        for (const Expected& expected : kExpected) {
            mFixture.automate(expected.id, 0.0);
        }
    }
    ~ParametersRestored() override { mModel.Uninitialize(); }

    varno::test::ChunkRecord save() {
        std::uint32_t size = 0;
        EXPECT_EQ(mModel.GetChunkSize(kChunkID, &size), AAX_SUCCESS);
        varno::test::ChunkRecord chunk(size);
        EXPECT_EQ(mModel.GetChunk(kChunkID, chunk.get()), AAX_SUCCESS);
        return chunk;
    }
    // Restores the saved values; the host answers each request and calls `meanwhile`.
    void restore(const std::function<void()>& meanwhile) {
        mAutomation.onRequest = [&](AAX_CParamID id, double value) {
            mFixture.automate(id, value);
            meanwhile();
        };
        EXPECT_EQ(mModel.SetChunk(kChunkID, mChunk->get()), AAX_SUCCESS);
    }
    void expectAllRestored() {
        for (const Expected& expected : kExpected) {
            const bool isSaved = expected.id != std::string_view("MasterBypassID");
            EXPECT_EQ(mFixture.value(expected.id), isSaved ? kSaved : 0.0) << expected.id;
        }
    }

    static constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
    static constexpr double kSaved = 0.75;

    varno::test::ImmediateAutomation mAutomation;
    DataModelFixture mFixture;
    DemoGain_Parameters& mModel = *mFixture.model;
    std::optional<varno::test::ChunkRecord> mChunk;
};

TEST_F(ParametersRestored, arriveAllInAHostThatComparesMeanwhile) {
    varno::test::ChunkRecord empty(std::string_view("\1\1\1\1"));
    std::vector<int> areEqual;
    restore([&] {
        std::uint8_t isEqual = 7;
        EXPECT_EQ(mModel.CompareActiveChunk(empty.get(), &isEqual), AAX_SUCCESS);
        EXPECT_EQ(isEqual, 0);
        EXPECT_EQ(mModel.CompareActiveChunk(mChunk->get(), &isEqual), AAX_SUCCESS);
        areEqual.push_back(isEqual);
    });
    EXPECT_EQ(areEqual, (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
    expectAllRestored();
}

TEST_F(ParametersRestored, arriveAllInAHostThatSavesMeanwhile) {
    restore([&] { EXPECT_EQ(save()->fSize, 220); });
    expectAllRestored();
}

TEST_F(ParametersRestored, arriveAllInAHostThatRestoresMeanwhile) {
    bool isFirst = true;
    restore([&] {
        if (std::exchange(isFirst, false)) {
            varno::test::ChunkRecord empty(std::string_view("\1\1\1\1"));
            EXPECT_EQ(mModel.SetChunk(kChunkID, empty.get()), AAX_SUCCESS);
        }
    });
    expectAllRestored();
}

// Starting values of the private state.

TEST_F(Parameters, resetAsManyWholeRecordsAsFit) {
    constexpr float kUntouched = -77.0F;
    constexpr std::size_t kWords = sizeof(SDemoGain_Alg_State) / sizeof(float);
    std::vector<float> words(kWords * 5 / 2, kUntouched);
    const auto size = static_cast<std::uint32_t>(words.size() * sizeof(float));
    EXPECT_EQ(model.ResetFieldData(29, words.data(), size), AAX_ERROR_INVALID_FIELD_INDEX);
    const auto clipGain = offsetof(SDemoGain_Alg_State, mClipGain) / sizeof(float);
    EXPECT_EQ(words[clipGain], 1.0F);
    EXPECT_EQ(words[kWords + clipGain], 1.0F);
    EXPECT_TRUE(std::equal(words.begin(), words.begin() + kWords, words.begin() + kWords));
    for (std::size_t i = 2 * kWords; i < words.size(); ++i) {
        ASSERT_EQ(words[i], kUntouched) << i;
    }
    EXPECT_EQ(model.ResetFieldData(29, words.data() + 2 * kWords, sizeof(SDemoGain_Alg_State) - 1),
              AAX_ERROR_INVALID_FIELD_INDEX);
    EXPECT_EQ(words[2 * kWords], kUntouched);
}

TEST_F(Parameters, resetNoOtherField) {
    std::vector<float> words(200, -77.0F);
    const auto size = static_cast<std::uint32_t>(words.size() * sizeof(float));
    for (const AAX_CFieldIndex field : {-1, 0, 16, 24, 28, 30}) {
        EXPECT_EQ(model.ResetFieldData(field, words.data(), size), AAX_ERROR_INVALID_FIELD_INDEX);
        EXPECT_EQ(words, std::vector<float>(200, -77.0F)) << field;
    }
    EXPECT_EQ(model.ResetFieldData(29, nullptr, size), AAX_ERROR_INVALID_FIELD_INDEX);
}

// A controller that throws where it must not.
class ThrowingController : public varno::test::FakeController {
public:
    AAX_Result GetSampleRate(float*) const override { throw std::runtime_error("host"); }
};

TEST_F(Parameters, keepWhatTheHostThrowsDuringAResetInTheModule) {
    const varno::ListeningHost listening;
    ThrowingController controller;
    fixture.host.offer(IID_IAAXControllerV1, &controller);
    ASSERT_EQ(fixture.initialize(), AAX_SUCCESS);
    SDemoGain_Alg_State state{};
    EXPECT_EQ(model.ResetFieldData(29, &state, sizeof state), AAX_ERROR_UNKNOWN_EXCEPTION);
    ASSERT_EQ(listening.lines().size(), 1U);
    EXPECT_EQ(listening.lines()[0].text, "DemoGain_Parameters::ResetFieldData exception caught: host");
    model.Uninitialize();
}

TEST_F(Parameters, resetForTheSampleRate) {
    for (const double rate : {44100.0, 96000.0}) {
        fixture.controller.sampleRate = static_cast<float>(rate);
        SDemoGain_Alg_State state{};
        model.ResetFieldData(29, &state, sizeof state);
        EXPECT_FLOAT_EQ(state.mDc[0].mDcCoef, static_cast<float>(std::exp(44100.0 / rate * -0.0040080296)));
        EXPECT_FLOAT_EQ(state.mClipCoef,
                        static_cast<float>(std::exp(48000.0 / rate * 1.0909091 * -0.005012537)));
    }
}

// Life.

TEST(ParametersLife, beginsWithoutReferencesAndEndsWithTheLast) {
    AAX_CEffectParameters* const model = DemoGain_Parameters::Create();
    EXPECT_EQ(model->AddRef(), 1U);
    EXPECT_EQ(model->AddRef(), 2U);
    EXPECT_EQ(model->Release(), 1U);
    EXPECT_EQ(model->Release(), 0U);
}

TEST(ParametersLife, isSafeBeforeInitialisation) {
    DataModelFixture fixture;
    AAX_CPacket packet(16);
    EXPECT_EQ(fixture.model->UpdatePacket_Gain(packet), AAX_SUCCESS);
    EXPECT_EQ(fixture.model->UpdatePacket_Decay(packet), AAX_SUCCESS);
    EXPECT_EQ(fixture.model->UpdatePacket_TimeConsts(packet), AAX_SUCCESS);
    EXPECT_EQ(packet.GetSize(), 0U) << "nothing to read, nothing written";
    EXPECT_TRUE(fixture.controller.posts.empty());

    SDemoGain_Alg_State state{};
    EXPECT_EQ(fixture.model->ResetFieldData(29, &state, sizeof state), AAX_ERROR_INVALID_FIELD_INDEX);
    EXPECT_FLOAT_EQ(state.mClipCoef, static_cast<float>(std::exp(1.0909091 * -0.005012537)));
}

TEST(ParametersLife, goesOnWithoutAController) {
    DataModelFixture fixture;
    fixture.host.offer(IID_IAAXControllerV1, nullptr);
    EXPECT_EQ(fixture.initialize(), AAX_SUCCESS);
    AAX_CPacket packet(16);
    EXPECT_EQ(fixture.model->UpdatePacket_TimeConsts(packet), AAX_SUCCESS);
    ASSERT_EQ(packet.GetSize(), sizeof(float));
    EXPECT_LT(*packet.GetPtr<float>(), 1.0F);
}

} // namespace
