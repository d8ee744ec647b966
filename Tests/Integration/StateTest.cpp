// Saved settings, as a chunk and as text, whole and damaged.
#include "DemoGain_PresetText.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/TestRun.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace varno::test {
namespace {

// The chunk identifier of the effect's settings.
constexpr AAX_CTypeID kChunkID = AAX_FourCC("elck");
constexpr std::size_t kDataBytes = 220;

class State : public HostedEffect {
protected:
    // Sets a chunk whose record is on the heap with exactly `bytes` bytes, so that the sanitizer finds reads
    // beyond them, and answers the requests that follow.
    static void setChunk(Instance& instance, const std::vector<std::byte>& bytes) {
        const std::unique_ptr<std::byte[]> copy(new std::byte[bytes.size()]);
        std::copy(bytes.begin(), bytes.end(), copy.get());
        EXPECT_EQ(instance.dataModel().SetChunk(kChunkID, reinterpret_cast<AAX_SPlugInChunk*>(copy.get())),
                  AAX_SUCCESS);
        instance.idle();
    }
    static void expectWithinRange(const Instance& instance) {
        for (const auto& [id, value] : valuesOf(instance)) {
            ASSERT_TRUE(value >= 0.0 && value <= 1.0) << id << " is " << value;
        }
    }

    void TearDown() override {
        instance.reset();
        HostedEffect::TearDown();
    }

    std::unique_ptr<Instance> instance = makeInstance(module());
    std::mt19937 random{20260103};
};

TEST_F(State, comesBackExactly) {
    const auto other = makeInstance(module(), 1);
    for (int i = 0; i < 1000 * testScale(); ++i) {
        const double bypass = i % 2;
        other->setNormalized("MasterBypassID", bypass);
        automate(*instance, randomValues(random));
        const StoredChunk chunk = instance->save();
        other->restore(chunk);
        ParameterValues expected = valuesOf(*instance);
        expected["MasterBypassID"] = bypass;
        ASSERT_EQ(valuesOf(*other), expected) << "case " << i;
        ASSERT_TRUE(other->equals(chunk)) << "case " << i;
        const StoredChunk again = other->save();
        ASSERT_TRUE(std::ranges::equal(again.data(), chunk.data())) << "case " << i;
    }
}

TEST_F(State, soundsTheSameAfterItsReturn) {
    const Signal input = swell(2, 1200, 7, 6.0);
    for (int i = 0; i < 20; ++i) {
        automate(*instance, randomValues(random));
        instance->reset();
        const auto other = makeInstance(module());
        other->restore(instance->save());
        ASSERT_EQ(firstDifference(render(*instance, input), render(*other, input)), "") << "case " << i;
    }
}

TEST_F(State, isWrittenInItsFormat) {
    const std::vector<std::byte> bytes = instance->save().toBytes();
    ASSERT_EQ(bytes.size(), kAAX_PlugInChunkHeaderSize + kDataBytes);
    AAX_SPlugInChunk header{};
    std::memcpy(&header, bytes.data(), kAAX_PlugInChunkHeaderSize);
    EXPECT_EQ(header.fSize, static_cast<std::int32_t>(kDataBytes));
    EXPECT_EQ(header.fVersion, -1);
    EXPECT_STREQ(header.fName, "Complete Controls State");
    const unsigned char beginning[] = {1, 1, 1,    1,    'd', '_', 'G', 'a', 'i', 'n',
                                       0, 0, 0x3F, 0xE0, 0,   0,   0,   0,   0,   0};
    EXPECT_EQ(std::memcmp(bytes.data() + kAAX_PlugInChunkHeaderSize, beginning, sizeof beginning), 0);
}

TEST_F(State, isTakenAsFarAsATruncatedChunkGoes) {
    automate(*instance, randomValues(random));
    const std::vector<std::byte> whole = instance->save().toBytes();
    for (std::size_t size = 0; size <= kDataBytes; ++size) {
        SCOPED_TRACE(size);
        const auto other = makeInstance(module());
        const ParameterValues before = valuesOf(*other);
        std::vector<std::byte> cut(
            whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(kAAX_PlugInChunkHeaderSize + size));
        const auto told = static_cast<std::int32_t>(size);
        std::memcpy(cut.data(), &told, sizeof told);
        setChunk(*other, cut);
        for (const auto& [id, value] : valuesOf(*other)) {
            EXPECT_TRUE(value == before.at(id) || value == instance->normalized(id)) << id << " is " << value;
        }
    }
}

TEST_F(State, staysWithinRangeWhateverBitOfAChunkIsWrong) {
    automate(*instance, randomValues(random));
    const std::vector<std::byte> whole = instance->save().toBytes();
    for (std::size_t bit = 0; bit < kDataBytes * 8; ++bit) {
        SCOPED_TRACE(bit);
        std::vector<std::byte> flipped = whole;
        flipped[kAAX_PlugInChunkHeaderSize + bit / 8] ^= static_cast<std::byte>(1U << bit % 8);
        setChunk(*instance, flipped);
        expectWithinRange(*instance);
    }
    setChunk(*instance, whole);
    EXPECT_TRUE(instance->equals(StoredChunk::fromBytes(whole)));
    std::vector<std::byte> garbage = whole;
    for (int i = 0; i < 500 * testScale(); ++i) {
        const std::size_t at = kAAX_PlugInChunkHeaderSize + random() % kDataBytes;
        garbage[at] = static_cast<std::byte>(random());
        setChunk(*instance, garbage);
        expectWithinRange(*instance);
    }
}

TEST_F(State, isNeverNotANumber) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    std::vector<std::byte> chunk = instance->save().toBytes();
    for (std::size_t at = kAAX_PlugInChunkHeaderSize + 12; at + 8 <= chunk.size(); at += 4) {
        // Damages words of the values and sometimes of the names; a quiet NaN begins with 7F F8 or FF F8.
        std::vector<std::byte> damaged = chunk;
        damaged[at] = std::byte{0x7F};
        damaged[at + 1] = std::byte{0xF8};
        setChunk(*instance, damaged);
        expectWithinRange(*instance);
    }
    for (const ParameterInfo& parameter : instance->parameters()) {
        SCOPED_TRACE(parameter.id);
        AAX_IACFEffectParameters& model = instance->dataModel();
        model.UpdateParameterNormalizedValue(parameter.id.c_str(), kNaN, AAX_eUpdateSource_Unspecified);
        expectWithinRange(*instance);
        model.SetParameterNormalizedValue(parameter.id.c_str(), kNaN);
        instance->idle();
        expectWithinRange(*instance);
        const std::optional<double> value = instance->fromText(parameter.id, "nan");
        EXPECT_TRUE(!value || (*value >= 0.0 && *value <= 1.0));
    }
    DemoGain_PresetText::Values values;
    values.fill(std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ(DemoGain_PresetText::Apply(values, instance->dataModel()), AAX_SUCCESS);
    instance->idle();
    expectWithinRange(*instance);
}

// Settings as text.

TEST_F(State, isWrittenAsText) {
    EXPECT_EQ(DemoGain_PresetText::Write(instance->dataModel()),
              "Varno-S 030001\n"
              "Gain 0.5000000000 Volume 0.5000000000 Hipass 0.0000000000 Band 0.0000000000\n"
              "Attack 0.5000000000 Release 0.5000000000 UK 0.0000000000 Hottitude 0.0700000003\n"
              "Ratio 0.5000000000 Mix 0.0000000000 Auto 0.0000000000 HarmSw 0.0000000000\n"
              "LinkSw 0.0000000000");
}

TEST_F(State, comesBackAsTextWithinSinglePrecision) {
    const auto other = makeInstance(module());
    for (int i = 0; i < 200; ++i) {
        automate(*instance, randomValues(random));
        const auto values = DemoGain_PresetText::Parse(DemoGain_PresetText::Write(instance->dataModel()));
        ASSERT_TRUE(values.has_value());
        EXPECT_EQ(DemoGain_PresetText::Apply(*values, other->dataModel()), AAX_SUCCESS);
        other->idle();
        for (const auto& [id, value] : valuesOf(*instance)) {
            ASSERT_NEAR(other->normalized(id), value, 1e-7) << "case " << i << ", " << id;
        }
    }
}

TEST_F(State, isLimitedWhenATextIsOutOfRange) {
    const auto values = DemoGain_PresetText::Parse("x 30001 G 7 V -1 H inf B -inf A nan R 1e60 U 0x1p9 H .5 "
                                                   "R 1e-60 M 1 A 0 H 0.25 L 0.125");
    ASSERT_TRUE(values.has_value());
    DemoGain_PresetText::Apply(*values, instance->dataModel());
    instance->idle();
    const ParameterValues expected = {{"MasterBypassID", 0.0},
                                      {"Gain", 1.0},
                                      {"Volume", 0.0},
                                      {"HP", 1.0},
                                      {"Band", 0.0},
                                      {"Atk", 0.0},
                                      {"Rls", 1.0},
                                      {"UK", 1.0},
                                      {"Hot", 0.5},
                                      {"Ratio", 0.0},
                                      {"Mix", 1.0},
                                      {"ASw", 0.0},
                                      {"HSw", 0.25},
                                      {"LinkSw", 0.125}};
    EXPECT_EQ(valuesOf(*instance), expected);
}

} // namespace
} // namespace varno::test
