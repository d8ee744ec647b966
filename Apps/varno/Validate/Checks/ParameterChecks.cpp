// Parameters: their values, and the texts that people see and type.
#include "Validate/Check.h"
#include "Validate/Checks/AttemptChecks.h"
#include "Validate/Checks/Effects.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <limits>

namespace varno::validate {
namespace {

constexpr int kPoints = 1001;

double pointOf(const Parameter& parameter, int point, int points) {
    const double part = static_cast<double>(point) / static_cast<double>(std::max(points - 1, 1));
    return point == points - 1 ? parameter.maximum
                               : parameter.minimum + part * (parameter.maximum - parameter.minimum);
}

int pointsOf(const Parameter& parameter) {
    return parameter.steps > 1 ? std::min(parameter.steps, kPoints) : kPoints;
}

bool isInRange(const Parameter& parameter, double value) {
    return value >= parameter.minimum && value <= parameter.maximum;
}

void checkRanges(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        const auto& parameters = instance->parameters();
        for (std::size_t index = 0; index < parameters.size(); ++index) {
            const Parameter& parameter = parameters[index];
            const bool isRange = std::isfinite(parameter.minimum) && std::isfinite(parameter.maximum) &&
                                 parameter.minimum <= parameter.maximum;
            if (!context.expect(isRange, "no range of " + parameter.name, "two finite bounds in order")) {
                continue;
            }
            context.expect(isInRange(parameter, parameter.defaultValue),
                           parameter.name + " has a default of " + std::to_string(parameter.defaultValue),
                           "one in its range");
            for (const double value : {parameter.minimum, parameter.maximum}) {
                instance->set(index, value);
                const double found = instance->get(index);
                constexpr double kRounding = 1e-6; // of its range
                context.expect(
                    std::fabs(found - value) <= kRounding * (parameter.maximum - parameter.minimum),
                    parameter.name + " at " + std::to_string(found) + " when set to " + std::to_string(value),
                    "the value that was set");
            }
            instance->set(index, parameter.defaultValue);
        }
    });
}

// One text by point, empty where it was refused.
using Texts = std::vector<std::string>;

Texts textsOf(PluginInstance& instance, std::size_t index) {
    const Parameter& parameter = instance.parameters()[index];
    Texts texts;
    for (int point = 0; point < pointsOf(parameter); ++point) {
        texts.push_back(instance.text(index, pointOf(parameter, point, pointsOf(parameter))).value_or(""));
    }
    return texts;
}

// A text that was shown is read as a value that is shown in the same way. @return whether all were
bool checkTexts(Context& context, PluginInstance& instance, std::size_t index, const Texts& texts,
                const std::string& locale) {
    const Parameter& parameter = instance.parameters()[index];
    for (const std::string& text : texts) {
        const std::string named =
            std::string(parameter.name).append(" \"").append(text).append("\" in the locale ").append(locale);
        const auto value = instance.value(index, text);
        if (!context.expect(!text.empty(), "no text for a value of " + parameter.name, "one") ||
            !context.expect(value.has_value(), named + " is not read", "the text that it shows itself") ||
            !context.expect(isInRange(parameter, *value), named + " is read as " + std::to_string(*value),
                            "a value in its range")) {
            return false;
        }
        const std::string again = instance.text(index, *value).value_or("");
        if (!context.expect(again == text,
                            std::string(named).append(" becomes \"").append(again).append("\""),
                            "the same text again")) {
            return false;
        }
    }
    return true;
}

void checkTextsIn(Context& context, const Effect& effect, const std::string& locale,
                  std::vector<Texts>& ioPlainTexts) {
    const auto instance = effect.create();
    const Capabilities can = instance->capabilities();
    if (!can.hasValueTexts || !can.readsTexts) {
        context.skip("the format or the plug-in has no texts of values");
    }
    for (std::size_t index = 0; index < instance->parameters().size(); ++index) {
        context.step(effect.info.id + ", " + instance->parameters()[index].name + " in " + locale);
        if (ioPlainTexts.size() <= index) {
            ioPlainTexts.push_back(textsOf(*instance, index));
        }
        // What was written down in one locale is read in another.
        if (checkTexts(context, *instance, index, ioPlainTexts[index], locale)) {
            checkTexts(context, *instance, index, textsOf(*instance, index), locale);
        }
    }
}

void checkTextsInLocales(Context& context) {
    std::string missing;
    forEachEffect(context, [&](const Effect& effect) {
        std::vector<Texts> plainTexts;
        missing.clear();
        for (const char* const locale : {"C", "de_DE.UTF-8", "tr_TR.UTF-8"}) {
            if (std::setlocale(LC_ALL, locale) == nullptr) {
                missing += (missing.empty() ? "" : ", ") + std::string(locale);
                continue;
            }
            checkTextsIn(context, effect, locale, plainTexts);
            const std::string after = std::setlocale(LC_ALL, nullptr);
            context.expect(after == locale, "the locale " + after, "the caller's, " + std::string(locale));
        }
        std::setlocale(LC_ALL, "C");
    });
    if (!missing.empty()) {
        context.note("not in locales that are not installed: " + missing);
    }
}

void checkExtremes(Context& context) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const std::string texts[] = {"",
                                 " ",
                                 "-",
                                 "1e999",
                                 "-1e999",
                                 "nan",
                                 "inf",
                                 "-inf",
                                 "0x1p3",
                                 "1,5",
                                 "1 000",
                                 "%s%n",
                                 "\xFF\xFE",
                                 "\xE2\x88\x92 3 dB",
                                 "99999999999999999999",
                                 std::string(1000000, '9'),
                                 std::string(1000000, 'x')};
    const double values[] = {-kInfinity, kInfinity, std::numeric_limits<double>::quiet_NaN(),
                             1e308,      -1e308,    std::numeric_limits<double>::denorm_min()};
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        const Capabilities can = instance->capabilities();
        if (!can.hasValueTexts && !can.readsTexts) {
            context.skip("the format or the plug-in has no texts of values");
        }
        for (std::size_t index = 0; index < instance->parameters().size(); ++index) {
            const Parameter& parameter = instance->parameters()[index];
            for (const std::string& text : texts) {
                constexpr std::size_t kMostShown = 20;
                const std::string shown = text.substr(0, kMostShown);
                context.step(effect.info.id + ", " + parameter.name + " from \"" + shown + "\"");
                const auto value = instance->value(index, text);
                context.expect(!value || isInRange(parameter, *value),
                               parameter.name + " reads \"" + shown + "\" as " +
                                   std::to_string(value.value_or(0.0)),
                               "a value in its range, or none");
            }
            for (const double value : values) {
                context.step(effect.info.id + ", " + parameter.name + " of " + std::to_string(value));
                (void)instance->text(index, value);
            }
        }
    });
}

constexpr Formats kWithTexts = Format::kModule | Format::kClap;

constexpr Check kParameterChecks[] = {
    {.id = "parameters-ranges",
     .title = "Parameters have a range with their default in it, and reach both ends",
     .run = checkRanges},
    {.id = "parameters-texts",
     .title = "Texts of values are read as they were shown, in every locale",
     .formats = kWithTexts,
     .timeLimitS = 60,
     .run = checkTextsInLocales},
    {.id = "parameters-extremes",
     .title = "Texts and values of any kind are refused or in range",
     .formats = kWithTexts,
     .run = checkExtremes},
    {.id = "parameters-unknown",
     .title = "Calls with unknown identifiers give an error or nothing, and change nothing",
     .run = checkUnknownIdentifiers},
};

} // namespace

std::span<const Check> parameterChecks() {
    return kParameterChecks;
}

} // namespace varno::validate
