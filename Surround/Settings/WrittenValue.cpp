#include "Surround/Settings/WrittenValue.h"

#include "DemoGain_ParameterTable.h"
#include "Host/HostError.h"
#include "Surround/Settings/NumberText.h"
#include "Surround/Settings/Suggestion.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <string_view>

namespace varno {
namespace {

constexpr char kNumberMark = '#'; // "Ratio=#5": the bare number 5 would be a normalized value

// A bare number is a normalized value: a true value has its unit, and the number of a choice the mark.
std::optional<double> normalizedFromMarkedText(const SDemoGain_Parameter& row, std::string_view text,
                                               const DemoGain_ValueText::Settings& settings) {
    if (hasNumberedChoices(row)) {
        if (!text.starts_with(kNumberMark)) {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return normalizedFromTrueText(row, text, settings, UnitText::kRequired);
}

// The true values that a parameter takes: `"-20.0 dB" to "+20.0 dB"`.
std::string trueRange(const SDemoGain_Parameter& row, const DemoGain_ValueText::Settings& settings) {
    if (hasNumberedChoices(row)) {
        const auto& texts = row.mUnit.mTexts;
        return quoted(kNumberMark + std::string(texts.front())) + " to " +
               quoted(kNumberMark + std::string(texts.back()));
    }
    const auto range = DemoGain_ValueText::RangeInUnit(row, settings);
    return quoted(DemoGain_ValueText::WriteInUnit(row, range.mLow)) + " to " +
           quoted(DemoGain_ValueText::WriteInUnit(row, range.mHigh));
}

// "0 to 1" and the texts of a parameter that has names for its steps, or its true values.
std::string expectedValues(const Instance& instance, const ParameterInfo& parameter,
                           const DemoGain_ValueText::Settings& settings) {
    std::vector<std::string> texts;
    const auto add = [&texts](const std::string& text) {
        if (std::find(texts.begin(), texts.end(), text) == texts.end()) {
            texts.push_back(text);
        }
    };
    const auto* const row = DemoGain_FindParameter(parameter.id);
    if (parameter.type == AAX_eParameterType_Discrete) {
        for (int step = 0; step < parameter.steps; ++step) {
            add(quoted(instance.textOf(parameter.id, normalizedOfStep(step, parameter.steps))));
        }
    }
    if (row != nullptr && hasNamedChoices(*row)) {
        for (const char* const choice : row->mUnit.mTexts) {
            add(quoted(choice));
        }
    } else if (row != nullptr) {
        add(trueRange(*row, settings));
    }
    std::string expected = "0 to 1";
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        expected += (text + 1 == texts.end() ? " or " : ", ") + *text;
    }
    return expected;
}

} // namespace

WrittenValue writtenValue(const Instance& instance, const ParameterText& text,
                          const DemoGain_ValueText::Settings& settings) {
    const auto number = numberFromText<double>(text.value);
    // Comparisons with a value that is not a number are false.
    if (number && *number >= 0.0 && *number <= 1.0) {
        return {*number, {}};
    }
    if (!number) {
        const auto normalized = instance.fromText(text.id, text.value);
        if (normalized && instance.textOf(text.id, *normalized) == text.value) {
            return {*normalized, {}};
        }
        const auto* const row = DemoGain_FindParameter(text.id);
        if (const auto value = row != nullptr ? normalizedFromMarkedText(*row, text.value, settings)
                                              : std::optional<double>()) {
            return {*value, {}};
        }
    }
    return {std::nullopt, text.id + " takes " +
                              expectedValues(instance, *instance.parameter(text.id), settings) + ", found " +
                              quoted(text.value)};
}

std::string unknownParameter(const Instance& instance, const std::string& id, const std::string& listedBy) {
    std::vector<std::string> known;
    for (const auto& parameter : instance.parameters()) {
        known.push_back(parameter.id);
    }
    const std::string proposal = suggestion(id, known);
    return "unknown parameter " + quoted(id) +
           (proposal.empty() ? "; expected one that " + listedBy : proposal);
}

void sortForSetting(std::vector<ParameterText>& texts) {
    std::stable_partition(texts.begin(), texts.end(),
                          [](const ParameterText& text) { return !dependsOnOthers(text.id); });
}

std::string trueText(const std::string& id, double normalized, const DemoGain_ValueText::Settings& settings) {
    const auto* const row = DemoGain_FindParameter(id);
    if (row == nullptr) {
        return {};
    }
    const std::string text = DemoGain_ValueText::Write(*row, normalized, settings);
    return hasNumberedChoices(*row) ? kNumberMark + text : text;
}

std::string trueText(const Instance& instance, const std::string& id) {
    return trueText(id, instance.normalized(id), unitSettings(instance));
}

} // namespace varno
