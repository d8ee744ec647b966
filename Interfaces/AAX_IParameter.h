/// One automatable control value of the plug-in.
#ifndef VARNO_INTERFACES_AAX_IPARAMETER_H
#define VARNO_INTERFACES_AAX_IPARAMETER_H

#include "AAX.h"
#include "AAX_IParameterValue.h"
#include "AAX_IString.h"

#include <memory>

class AAX_CString;
class AAX_IAutomationDelegate;
class AAX_IDisplayDelegateBase;
class AAX_ITaperDelegateBase;

/// A parameter has a real value in the plug-in's own units, of one type, and a normalized value from 0 to 1,
/// tied together by its taper. Every setter asks the host's automation for the value when an automation
/// delegate is attached, and then the value changes only when the host answers (UpdateNormalizedValue);
/// without one it changes at once. Not synchronised: the host serialises the calls on one instance.
///
/// The typed operations (Bool, Int32, Float, Double) succeed only for the type of the real value and
/// answer false otherwise, with nothing written and nothing changed; so do operations with a null output.
class AAX_IParameter {
public:
    virtual ~AAX_IParameter() = default;
    /// A copy of identifier and current value, owned by the caller. Never null. [main]
    virtual std::unique_ptr<AAX_IParameterValue> CloneValue() const = 0;

    // What it is.

    /// The identifier, ASCII, at most 31 characters; borrowed, lives as long as the parameter. [any]
    virtual AAX_CParamID Identifier() const = 0;
    /// Sets the display name (copied). It may hold several spellings separated by line feeds. [main]
    virtual void SetName(const AAX_CString& name) = 0;
    /// The display name; borrowed, valid until the next SetName. [main]
    virtual const AAX_CString& Name() const = 0;
    /// Adds an alternative name (copied), kept under its length; it replaces an earlier one of that length.
    /// [main]
    virtual void AddShortenedName(const AAX_CString& name) = 0;
    /// The display name when it has at most `length` characters, when `length` is negative or when there are
    /// no shortened names; else the longest shortened name of at most `length` characters, and if all are
    /// longer the shortest one. Borrowed, valid until a name is changed. [main]
    virtual const AAX_CString& ShortenedName(int32_t length) const = 0;
    /// Removes all shortened names. [main]
    virtual void ClearShortenedNames() = 0;

    // Automation.

    /// Whether the host may automate the parameter. [any]
    virtual bool Automatable() const = 0;
    /// Attaches `delegate` (borrowed until replaced; null for none): the identifier is unregistered from the
    /// delegate before it and registered with the new one. [main]
    virtual void SetAutomationDelegate(AAX_IAutomationDelegate* delegate) = 0;
    /// Begins a gesture with the automation delegate, if there is one. Gestures nest. [main]
    virtual void Touch() = 0;
    /// Ends the innermost gesture with the automation delegate, if there is one. [main]
    virtual void Release() = 0;

    // The normalized value.

    /// Sets the value from a normalized one, passed once through the taper, which clamps it. [main]
    virtual void SetNormalizedValue(double normalizedValue) = 0;
    /// The current value, 0 to 1. [main]
    virtual double GetNormalizedValue() const = 0;
    /// Sets the default from a normalized value, which the taper clamps; the value stays. [main]
    virtual void SetNormalizedDefaultValue(double normalizedDefault) = 0;
    /// The default, 0 to 1. [main]
    virtual double GetNormalizedDefaultValue() const = 0;
    /// Sets the value to the default. [main]
    virtual void SetToDefaultValue() = 0;

    // Steps.

    /// Sets the number of steps in which controls move the parameter. 0 is an assertion failure and changes
    /// nothing. [main]
    virtual void SetNumberOfSteps(uint32_t numSteps) = 0;
    /// The number of steps, 1 or more. [main]
    virtual uint32_t GetNumberOfSteps() const = 0;
    /// The step nearest to the current value, from 0; halves round up. [main]
    virtual uint32_t GetStepValue() const = 0;
    /// The normalized value of a step, 0 to 1; a step past the last counts as the last. 0 for fewer than two
    /// steps. [main]
    virtual double GetNormalizedValueFromStep(uint32_t step) const = 0;
    /// The step nearest to a normalized value, from 0, clamped to the last; halves round up, a value that is
    /// not a number counts as 0. 0 for fewer than two steps. [main]
    virtual uint32_t GetStepValueFromNormalizedValue(double normalizedValue) const = 0;
    /// Sets the value to that of a step; nothing happens with fewer than two steps. [main]
    virtual void SetStepValue(uint32_t step) = 0;

    // Text of the current value.

    /// Writes the value as text. False when it has none. [main]
    virtual bool GetValueString(AAX_CString* outText) const = 0;
    /// Writes the value as text meant for `maxChars` characters (negative counts as 0). False when it has
    /// none. [main]
    virtual bool GetValueString(int32_t maxChars, AAX_CString* outText) const = 0;

    // Real values to normalized ones.

    /// Writes the normalized value, 0 to 1, of a bool. False for a parameter of another type. [main]
    virtual bool GetNormalizedValueFromBool(bool value, double* outNormalizedValue) const = 0;
    /// Writes the normalized value, 0 to 1, of an integer. False for a parameter of another type. [main]
    virtual bool GetNormalizedValueFromInt32(int32_t value, double* outNormalizedValue) const = 0;
    /// Writes the normalized value, 0 to 1, of a float. False for a parameter of another type. [main]
    virtual bool GetNormalizedValueFromFloat(float value, double* outNormalizedValue) const = 0;
    /// Writes the normalized value, 0 to 1, of a double. False for a parameter of another type. [main]
    virtual bool GetNormalizedValueFromDouble(double value, double* outNormalizedValue) const = 0;
    /// Writes the normalized value, 0 to 1, of a text. False for a text that is no value. [main]
    virtual bool GetNormalizedValueFromString(const AAX_CString& text, double* outNormalizedValue) const = 0;

    // Normalized values to real ones.

    /// Writes the bool of a normalized value. False for a parameter of another type. [main]
    virtual bool GetBoolFromNormalizedValue(double normalizedValue, bool* outValue) const = 0;
    /// Writes the integer of a normalized value. False for a parameter of another type. [main]
    virtual bool GetInt32FromNormalizedValue(double normalizedValue, int32_t* outValue) const = 0;
    /// Writes the float of a normalized value. False for a parameter of another type. [main]
    virtual bool GetFloatFromNormalizedValue(double normalizedValue, float* outValue) const = 0;
    /// Writes the double of a normalized value. False for a parameter of another type. [main]
    virtual bool GetDoubleFromNormalizedValue(double normalizedValue, double* outValue) const = 0;
    /// Writes the text of a normalized value. False when it has none. [main]
    virtual bool GetStringFromNormalizedValue(double normalizedValue, AAX_CString& outText) const = 0;
    /// Writes the text of a normalized value meant for `maxChars` characters (negative counts as 0). False
    /// when it has none. [main]
    virtual bool GetStringFromNormalizedValue(double normalizedValue, int32_t maxChars,
                                              AAX_CString& outText) const = 0;

    // The real value.

    /// Sets the value from its text. False, with nothing set, for a text that is no value. [main]
    virtual bool SetValueFromString(const AAX_CString& text) = 0;
    /// Writes the value of a bool parameter. False for another type. [main]
    virtual bool GetValueAsBool(bool* outValue) const = 0;
    /// Writes the value of an integer parameter. False for another type. [main]
    virtual bool GetValueAsInt32(int32_t* outValue) const = 0;
    /// Writes the value of a float parameter. False for another type. [main]
    virtual bool GetValueAsFloat(float* outValue) const = 0;
    /// Writes the value of a double parameter. False for another type. [main]
    virtual bool GetValueAsDouble(double* outValue) const = 0;
    /// Writes the value as text, whatever its type. False when it has none. [main]
    virtual bool GetValueAsString(AAX_IString* outValue) const = 0;
    /// Sets the value of a bool parameter. False for another type. [main]
    virtual bool SetValueWithBool(bool value) = 0;
    /// Sets the value of an integer parameter. False for another type. [main]
    virtual bool SetValueWithInt32(int32_t value) = 0;
    /// Sets the value of a float parameter; the taper clamps it. False for another type. [main]
    virtual bool SetValueWithFloat(float value) = 0;
    /// Sets the value of a double parameter; the taper clamps it. False for another type. [main]
    virtual bool SetValueWithDouble(double value) = 0;
    /// Sets the value from its text, whatever its type. False, with nothing set, for a text that is no value.
    /// [main]
    virtual bool SetValueWithString(const AAX_IString& value) = 0;

    // How controls show it.

    /// Sets whether the values are steps; the number of steps stays. [main]
    virtual void SetType(AAX_EParameterType type) = 0;
    /// Whether the values are steps. [main]
    virtual AAX_EParameterType GetType() const = 0;
    /// Sets the orientation of the parameter's control, host-defined bits. [main]
    virtual void SetOrientation(int32_t orientation) = 0;
    /// The orientation of the parameter's control, host-defined bits, 0 unless set. [main]
    virtual int32_t GetOrientation() const = 0;

    // Strategies.

    /// Replaces the taper by a clone of `delegate`, which must be one for the parameter's type (another is an
    /// assertion failure and changes nothing). With `preserveValue` the real value and default stay, clamped
    /// into the new range; without, the normalized ones stay and the real ones follow the new taper. The
    /// value is stored at once, also with automation, and announced as current. [main]
    virtual void SetTaperDelegate(AAX_ITaperDelegateBase& delegate, bool preserveValue) = 0;
    /// Replaces the display by a clone of `delegate`, which must be one for the parameter's type (another is
    /// an assertion failure and changes nothing). [main]
    virtual void SetDisplayDelegate(AAX_IDisplayDelegateBase& delegate) = 0;

    /// Called by the host when the parameter has a new value: stores the real value of `normalizedValue` and
    /// announces it to the automation delegate, unless it is the stored one already and has been announced.
    /// A value that is not a number becomes the taper's lower bound. [main]
    virtual void UpdateNormalizedValue(double normalizedValue) = 0;
};

#endif
