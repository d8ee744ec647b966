// Settings as text, beside the C library's own scan.
#include "DemoGain_PresetText.h"
#include "Surround/Settings/SettingValues.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"

#include <bit>
#include <cstdio>

namespace varno::fuzz {
namespace {

using PresetValues = DemoGain_PresetText::Values;

bool isSameFloat(float left, float right) {
    return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right) ||
           (std::isnan(left) && std::isnan(right));
}

// How the C library reads a text.
std::optional<PresetValues> scannedPreset(const std::string& text) {
    constexpr int kAllItems = 14;
    float version = 0.0F;
    PresetValues v{};
    const int items = std::sscanf(
        text.c_str(),
        "%*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f %*s %f",
        &version, &v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9], &v[10], &v[11],
        &v[12]);
    return items == kAllItems && version >= DemoGain_PresetText::kVersion ? std::optional(v) : std::nullopt;
}

// What of the product a planted fault replaces.
struct PresetCalls {
    std::function<std::optional<PresetValues>(std::string_view)> parse = DemoGain_PresetText::Parse;
    std::function<std::string(const PresetValues&)> write = [](const PresetValues& values) {
        return DemoGain_PresetText::Write(values);
    };
    std::function<SettingValues(const SettingValues&)> limit = limitedSettings;
};

class PresetTarget : public FuzzTarget {
public:
    explicit PresetTarget(PresetCalls calls = {})
        : mCalls(std::move(calls)) {}

    void run(std::string_view input) override {
        const auto values = mCalls.parse(input);
        const auto expected = scannedPreset(std::string(input));
        require(values.has_value() == expected.has_value(),
                "the C library does not agree on what is a preset");
        if (values) {
            require(std::ranges::equal(*values, *expected, isSameFloat), "the C library reads another value");
            apply(*values);
        }
    }

private:
    void apply(const PresetValues& values) {
        const SettingValues limited = mCalls.limit(values);
        for (const float value : limited) {
            require(value >= 0.0F && value <= 1.0F, "a value that was limited is out of its range");
        }
        const std::string text = mCalls.write(limited);
        const auto again = mCalls.parse(text);
        require(again.has_value() && areSameSettings(*again, limited),
                "a preset does not read as it was written");
        Instance& instance = mEffect.get();
        require(DemoGain_PresetText::Apply(values, instance.dataModel()) == AAX_SUCCESS,
                "the data model refuses a value");
        instance.idle();
        const auto now = mEffect.soundValues();
        require(areSameSettings(settingsOf(instance), limited),
                "the effect has other values than the preset");
        require(DemoGain_PresetText::Write(instance.dataModel()) == text,
                "the effect writes another text than the preset");
        mEffect.restart(now);
    }

    PresetCalls mCalls;
    FuzzedInstance mEffect;
};

std::vector<std::string> presetSeeds() {
    PresetValues half{};
    half.fill(0.5F);
    const std::string text = DemoGain_PresetText::Write(half);
    std::string odd = "Varno-S +3.1e4\n";
    for (const char* value : {"nan", "-inf", "INFINITY", "0x1.8p-1", ".5", "1.", "-0", "1e999", "1e-999",
                              "0x.8", "+0.25", "1e", "0.333333333333333333333333333333333333333"}) {
        odd.append("L ").append(value).append("\t");
    }
    return {text, text + "\nfor drums\n", odd, "Varno-S 030001", text.substr(0, text.size() / 2)};
}

// The planted faults.

std::optional<PresetValues> parseWithoutLast(std::string_view text) {
    const auto values = DemoGain_PresetText::Parse(text);
    return values ? values : DemoGain_PresetText::Parse(std::string(text) + " L 0");
}

std::optional<PresetValues> parseEarlierVersions(std::string_view text) {
    const std::size_t word = text.find(" 030001");
    return word != std::string_view::npos ? DemoGain_PresetText::Parse(text)
                                          : DemoGain_PresetText::Parse("V 030001" + std::string(text));
}

SettingValues limitAllButNaN(const SettingValues& values) {
    SettingValues limited = values;
    for (float& value : limited) {
        value = std::clamp(value, 0.0F, 1.0F);
    }
    return limited;
}

std::string writeFewDigits(const PresetValues& values) {
    constexpr float kRoughness = 1000.0F;
    PresetValues rough = values;
    for (float& value : rough) {
        value = std::round(value * kRoughness) / kRoughness;
    }
    return DemoGain_PresetText::Write(rough);
}

} // namespace

FuzzSubject presetSubject() {
    return {
        "preset",
        makerOf<PresetTarget>(),
        presetSeeds(),
        {{"a preset may lack its last value", makerOf<PresetTarget>(PresetCalls{parseWithoutLast})},
         {"the version does not matter", makerOf<PresetTarget>(PresetCalls{parseEarlierVersions})},
         {"what is no number is not limited", makerOf<PresetTarget>(PresetCalls{.limit = limitAllButNaN})},
         {"values are written with few digits", makerOf<PresetTarget>(PresetCalls{.write = writeFewDigits})}},
        {"Source/DemoGain_PresetText.h", "Surround/Settings/SettingValues.cpp"}};
}

} // namespace varno::fuzz
