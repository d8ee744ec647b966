/// Parameter values in their units, and as text that people read and type. Pure functions over the parameter
/// table; no locale changes what they write or read.
#ifndef VARNO_SOURCE_DEMOGAIN_VALUETEXT_H
#define VARNO_SOURCE_DEMOGAIN_VALUETEXT_H

#include "DemoGain_ParameterTable.h"
#include "DemoGain_SampleRates.h"

#include <optional>
#include <string>
#include <string_view>

namespace DemoGain_ValueText {

/// What the times depend on besides the value of their own parameter.
struct Settings {
    float mRatio = 0.5F; ///< "Ratio", normalized.
    float mUK = 0.0F;    ///< "UK", normalized.
    double mSampleRateHz =
        DemoGain_SampleRates::kReferenceHz; ///< Matters to the attack of the last curve only.
};

/// A value in the unit of its parameter, as somebody wrote it.
struct Quantity {
    double mValue; ///< As InUnit() returns it; not limited to the range.
    bool mHasUnit; ///< Whether the unit was written; never for choices.
};

/// The values that a parameter takes, in its unit.
struct Range {
    double mLow;
    double mHigh;
};

/// A normalized value in the parameter's unit: dB, percent, milliseconds, or the place of a choice, from 0.
/// What lies outside of 0 to 1 is limited to it first. [any]
double InUnit(const SDemoGain_Parameter& parameter, double normalized, const Settings& settings = {});

/// The normalized value for a value in the parameter's unit; the nearest end for one beyond the range. The
/// release time does not grow with its parameter everywhere: of several values with the same time, the
/// lowest. [any]
double Normalized(const SDemoGain_Parameter& parameter, double inUnit, const Settings& settings = {});

/// A normalized value as people say it: "-3.5 dB", "35.0 %", "2.43 ms", "1.28 s", "on", "5". [any]
std::string Write(const SDemoGain_Parameter& parameter, double normalized, const Settings& settings = {});

/// A value in the unit of a parameter that is no choice, as Write() writes it. [any]
std::string WriteInUnit(const SDemoGain_Parameter& parameter, double inUnit);

/// The value in the unit that a text means, read as Parse() reads it. [any]
std::optional<Quantity> ParseInUnit(const SDemoGain_Parameter& parameter, std::string_view text);

/// The normalized value that a text means, limited to the range; nothing where it is no value of the
/// parameter. A number with the unit or without, times also with "s", a comma for the point; choices by their
/// names. Capitals and blanks do not matter. [any]
std::optional<double> Parse(const SDemoGain_Parameter& parameter, std::string_view text,
                            const Settings& settings = {});

/// Whether the values in the unit depend on `Settings`: the times do. [any]
bool DependsOnOthers(const SDemoGain_Parameter& parameter);

/// The lowest and the highest value of the parameter's steps in its unit. [any]
Range RangeInUnit(const SDemoGain_Parameter& parameter, const Settings& settings = {});

/// What the editor's status line shows after a gesture that left a control at `value`, 0 to 1: `text`, and
/// with a scale the scaled value with two decimals. [any]
std::string WriteStatus(const char* text, const std::optional<SDemoGain_StatusScale>& scale, float value);

} // namespace DemoGain_ValueText

#endif
