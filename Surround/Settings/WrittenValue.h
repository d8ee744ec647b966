/// Values of parameters as scripts and command lines write them.
#ifndef VARNO_SURROUND_SETTINGS_WRITTENVALUE_H
#define VARNO_SURROUND_SETTINGS_WRITTENVALUE_H

#include "DemoGain_ValueText.h"
#include "Host/Instance.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// A parameter and a value for it, as a user wrote them.
struct ParameterText {
    std::string id;
    std::string value;
};

/// What a text means as a value.
struct WrittenValue {
    std::optional<double> normalized; ///< 0 to 1.
    std::string refusal;              ///< One line where there is no value: what was found and expected.
};

/// Reads a value. A number is that normalized value, 0 to 1; a number with a unit is a true value ("-3 dB",
/// "2.4 ms", "40 %"), "#5" the fifth curve, and other texts are those that the parameter itself shows
/// ("bypass") or a switch has ("off", "on"). @param text of a parameter that the instance has
/// @param settings that times belong to [main]
WrittenValue writtenValue(const Instance& instance, const ParameterText& text,
                          const DemoGain_ValueText::Settings& settings);

/// One line about a name that no parameter has. @param listedBy where they are listed: "varno params lists"
/// [any]
std::string unknownParameter(const Instance& instance, const std::string& id, const std::string& listedBy);

/// Puts the values that depend on others behind them: an attack in milliseconds means the curve and UK of the
/// same list, wherever they stand in it. [any]
void sortForSetting(std::vector<ParameterText>& texts);

/// The true value of a parameter at a normalized value, as writtenValue() reads it: "-3.0 dB", "#5", "on";
/// empty for a parameter that Varno-S does not have. @param settings that times belong to [any]
std::string trueText(const std::string& id, double normalized, const DemoGain_ValueText::Settings& settings);

/// The true value of a parameter of an instance as it is now; empty as above. [main]
std::string trueText(const Instance& instance, const std::string& id);

} // namespace varno

#endif
