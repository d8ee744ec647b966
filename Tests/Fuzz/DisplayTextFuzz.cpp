// Texts that people read and type: values of parameters at any length, true values, and text of unknown
// origin.
#include "CommandLine/VisibleText.h"
#include "DemoGain_ParameterTable.h"
#include "DemoGain_ValueText.h"
#include "Surround/Settings/Characters.h"
#include "Surround/Settings/TrueValue.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"

#include <algorithm>
#include <iterator>

namespace varno::fuzz {
namespace {

// How the first byte of an input has the rest used.
enum class TextUse : unsigned char {
    kShown,  ///< A parameter, a value and a length: what the data model shows.
    kTyped,  ///< A parameter, and a text for it.
    kInUnit, ///< A parameter, a value and what times depend on.
    kSafe,   ///< Text of unknown origin.
    kCount,
};

// What of the product a planted fault replaces.
struct TextCalls {
    std::function<AAX_Result(AAX_IACFEffectParameters&, const char*, double, AAX_IString*, std::int32_t)>
        show = [](AAX_IACFEffectParameters& model, const char* id, double value, AAX_IString* text,
                  std::int32_t length) { return model.GetParameterStringFromValue(id, value, text, length); };
    std::function<TypedValue(std::string_view, std::string_view, const DemoGain_ValueText::Settings&)> typed =
        typedValue;
    std::function<std::string(const SDemoGain_Parameter&, double, const DemoGain_ValueText::Settings&)>
        write = DemoGain_ValueText::Write;
    std::function<std::string(std::string_view)> safe = safeText;
    std::function<std::string(std::string_view)> line = visibleLine;
};

// Whether a text is one line of UTF-8 without anything that a screen or a terminal would obey.
bool isSafeLine(std::string_view text) {
    while (!text.empty()) {
        const auto [code, bytes] = firstCharacter(text);
        if (bytes == 0 || isUnsafe(code)) {
            return false;
        }
        text.remove_prefix(bytes);
    }
    return true;
}

class DisplayTextTarget : public FuzzTarget {
public:
    explicit DisplayTextTarget(TextCalls calls = {})
        : mCalls(std::move(calls)) {}

    void run(std::string_view input) override {
        FuzzInput parts(input);
        switch (static_cast<TextUse>(parts.choose(static_cast<std::size_t>(TextUse::kCount)))) {
        case TextUse::kShown:
            show(parts);
            break;
        case TextUse::kTyped:
            type(parts);
            break;
        case TextUse::kInUnit:
            write(parts);
            break;
        default:
            checkSafe(parts.rest());
            break;
        }
        require(mEffect.soundValues() == mEffect.start(), "a text has changed a value");
    }

private:
    const ParameterInfo& parameterOf(FuzzInput& parts) {
        const auto& parameters = mEffect.get().parameters();
        return parameters[parts.choose(parameters.size())];
    }

    static const SDemoGain_Parameter& rowOf(FuzzInput& parts) {
        return kDemoGain_Parameters[parts.choose(std::size(kDemoGain_Parameters))];
    }

    static DemoGain_ValueText::Settings settingsOf(FuzzInput& parts) {
        DemoGain_ValueText::Settings settings;
        settings.mRatio = static_cast<float>(parts.take<unsigned char>()) / 255.0F;
        settings.mUK = static_cast<float>(parts.choose(2));
        return settings;
    }

    void show(FuzzInput& parts) {
        AAX_IACFEffectParameters& model = mEffect.get().dataModel();
        const ParameterInfo& parameter = parameterOf(parts);
        const char* const id = parameter.id.c_str();
        const auto value = parts.take<double>();
        const auto length = parts.take<std::int32_t>();
        HostString text;
        require(mCalls.show(model, id, value, &text, length) == AAX_SUCCESS, "a value has no text");
        require(isSafeLine(text.text()), "a text of a value is no line");
        // A switch has its full text, whatever length is asked for.
        require(parameter.type == AAX_eParameterType_Discrete || fits(text, length), "a text is too long");
        HostString current;
        require(model.GetParameterValueString(id, &current, length) == AAX_SUCCESS, "the value has no text");
        HostString name;
        require(model.GetParameterNameOfLength(id, &name, length) == AAX_SUCCESS, "there is no name");
        require(isSafeLine(name.text()), "a name is no line");
        readBack(id, text.text());
        readBack(id, std::string(parts.rest()));
    }

    static bool fits(const HostString& text, std::int32_t length) {
        return text.text().size() <= static_cast<std::size_t>(std::max(length, 0));
    }

    // What a parameter understands is a value whose text it understands too.
    void readBack(const char* id, const std::string& text) {
        AAX_IACFEffectParameters& model = mEffect.get().dataModel();
        double value = -1.0;
        if (model.GetParameterValueFromString(id, &value, HostString(text)) != AAX_SUCCESS) {
            return;
        }
        require(value >= 0.0 && value <= 1.0, "a text means a value out of range");
        HostString shown;
        require(mCalls.show(model, id, value, &shown, Instance::kLongestText) == AAX_SUCCESS,
                "a value has no text");
        require(model.GetParameterValueFromString(id, &value, shown) == AAX_SUCCESS,
                "a parameter does not understand its own text");
    }

    void type(FuzzInput& parts) {
        const ParameterInfo& parameter = parameterOf(parts);
        const auto settings = settingsOf(parts);
        const TypedValue typed = mCalls.typed(parameter.id, parts.rest(), settings);
        require(typed.normalized.has_value() == typed.refusal.empty(), "a text is both taken and refused");
        if (typed.normalized) {
            require(*typed.normalized >= 0.0 && *typed.normalized <= 1.0, "a typed value is out of range");
            const std::string spoken = spokenValue(parameter.id, *typed.normalized, settings);
            const TypedValue again = mCalls.typed(parameter.id, spoken, settings);
            require(again.normalized && spokenValue(parameter.id, *again.normalized, settings) == spoken,
                    "a true value does not read as it was written");
        }
    }

    void write(FuzzInput& parts) {
        const SDemoGain_Parameter& row = rowOf(parts);
        const auto settings = settingsOf(parts);
        const auto value = parts.take<double>();
        const std::string text = mCalls.write(row, value, settings);
        require(!text.empty() && isSafeLine(text), "a value has no text that is a line");
        const auto again = DemoGain_ValueText::Parse(row, text, settings);
        require(again && *again >= 0.0 && *again <= 1.0, "a text of a value is none");
        require(mCalls.write(row, *again, settings) == text, "a value is not read as it was written");
        DemoGain_ValueText::Normalized(row, value, settings);
        DemoGain_ValueText::WriteInUnit(row, value);
        DemoGain_ValueText::WriteStatus("status", SDemoGain_StatusScale{}, static_cast<float>(value));
    }

    void checkSafe(std::string_view text) {
        const std::string safe = mCalls.safe(text);
        require(isSafeLine(safe), "a safe text is none");
        require(mCalls.safe(safe) == safe, "a safe text changes when it is made safe");
        const std::string line = mCalls.line(text);
        require(isSafeLine(line), "a visible line is none");
        constexpr std::size_t kLongestEscape = 6;
        require(line.size() <= kLongestEscape * (kMostLineBytes + 16), "a line of the terminal is too long");
        for (const char byte : visibleText(text)) {
            const auto code = static_cast<unsigned char>(byte);
            require(code >= ' ' || code == '\n' || code == '\t', "a terminal would obey a text");
        }
    }

    TextCalls mCalls;
    FuzzedInstance mEffect;
};

std::vector<std::string> displayTextSeeds() {
    const auto use = [](TextUse kind, char item, const std::string& rest) {
        return std::string{static_cast<char>(kind), item} + rest;
    };
    std::vector<std::string> seeds;
    for (char item = 0; item < 14; ++item) {
        seeds.push_back(
            use(TextUse::kShown, item, textOfNumber(0.3) + textOfNumber(std::int32_t{4}) + "0.25"));
        seeds.push_back(use(TextUse::kInUnit, item, "\x80\1" + textOfNumber(0.7)));
        seeds.push_back(use(TextUse::kTyped, item,
                            "\x80\1"
                            "12"));
    }
    for (const char* text : {"-3.5 dB", "−3,5", "40 %", "1.2 s", "curve 5", "#8", "ON", "off"}) {
        for (const char item : {'\1', '\4', '\11', '\12'}) {
            seeds.push_back(use(TextUse::kTyped, item, std::string("\x40\0", 2) + text));
        }
    }
    seeds.push_back(
        use(TextUse::kShown, 1, textOfNumber(std::nan("")) + textOfNumber(std::int32_t{-1}) + "nan"));
    seeds.push_back(use(TextUse::kSafe, 'a', "\x1B[2J\xE2\x80\xAE\xF0\x9F\x8E\xB8\xC3\xED\xA0\x80\n\t\x7F"));
    seeds.push_back(use(TextUse::kSafe, 'a', std::string(1200, '\xE4')));
    return seeds;
}

// The planted faults.

AAX_Result showAnyLength(AAX_IACFEffectParameters& model, const char* id, double value, AAX_IString* text,
                         std::int32_t) {
    return model.GetParameterStringFromValue(id, value, text, Instance::kLongestText);
}

std::string safeOfAscii(std::string_view text) {
    return safeText(text.substr(0, text.find_first_of("\x1B\x7F"))) +
           std::string(text.substr(std::min(text.find_first_of("\x1B\x7F"), text.size())));
}

std::string lineOfText(std::string_view text) {
    return visibleText(text.substr(0, kMostLineBytes));
}

TypedValue typedWithoutRange(std::string_view id, std::string_view text,
                             const DemoGain_ValueText::Settings& settings) {
    const auto* const row = DemoGain_FindParameter(id);
    const auto quantity = row != nullptr ? DemoGain_ValueText::ParseInUnit(*row, text) : std::nullopt;
    return quantity ? TypedValue{quantity->mValue, {}} : typedValue(id, text, settings);
}

std::string writeWithoutSign(const SDemoGain_Parameter& row, double value,
                             const DemoGain_ValueText::Settings& settings) {
    const std::string text = DemoGain_ValueText::Write(row, value, settings);
    return text.starts_with('-') ? text.substr(1) : text;
}

} // namespace

FuzzSubject displayTextSubject() {
    return {
        "displayText",
        makerOf<DisplayTextTarget>(),
        displayTextSeeds(),
        {{"a text is longer than asked for", makerOf<DisplayTextTarget>(TextCalls{showAnyLength})},
         {"a typed value is not limited", makerOf<DisplayTextTarget>(TextCalls{.typed = typedWithoutRange})},
         {"a sign is not written", makerOf<DisplayTextTarget>(TextCalls{.write = writeWithoutSign})},
         {"escapes are left in a text", makerOf<DisplayTextTarget>(TextCalls{.safe = safeOfAscii})},
         {"a line has line ends", makerOf<DisplayTextTarget>(TextCalls{.line = lineOfText})}},
        {"Source/DemoGain_ValueText.cpp", "Surround/Settings/TrueValue.cpp",
         "Surround/Settings/Characters.cpp", "Apps/varno/CommandLine/VisibleText.cpp",
         "Interfaces/AAX_CNumberDisplayDelegate.h"}};
}

} // namespace varno::fuzz
