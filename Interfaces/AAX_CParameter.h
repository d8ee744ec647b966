/// A parameter whose real value is of one type.
#ifndef VARNO_INTERFACES_AAX_CPARAMETER_H
#define VARNO_INTERFACES_AAX_CPARAMETER_H

#include "AAX_Assert.h"
#include "AAX_CParameterValue.h"
#include "AAX_CString.h"
#include "AAX_IAutomationDelegate.h"
#include "AAX_IDisplayDelegate.h"
#include "AAX_IParameter.h"
#include "AAX_ITaperDelegate.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>

/// The number of steps of a parameter that has not been given one: 128 for a continuous one, 2 for a discrete
/// one. Any other type is an assertion failure and has 1. [any]
inline uint32_t AAX_DefaultNumberOfSteps(AAX_EParameterType type) {
    switch (type) {
    case AAX_eParameterType_Continuous:
        return 128;
    case AAX_eParameterType_Discrete:
        return 2;
    }
    AAX_ASSERT(0);
    return 1;
}

/// The one implementation of AAX_IParameter, which documents each operation. T is bool, int32_t, float
/// or double.
template<class T>
class AAX_CParameter final : public AAX_IParameter {
public:
    /// Copies what it is given and keeps clones of the delegates, which remain the caller's. `identifier` is
    /// ASCII; more than 31 characters are an assertion failure and are cut. `defaultValue` is real. The
    /// parameter is continuous with 128 steps, and has its default value until set otherwise. Throws what
    /// cloning throws, with nothing left behind.
    AAX_CParameter(AAX_CParamID identifier, const AAX_IString& name, T defaultValue,
                   const AAX_ITaperDelegate<T>& taperDelegate, const AAX_IDisplayDelegate<T>& displayDelegate,
                   bool automatable = false);
    AAX_CParameter(const AAX_CParameter&) = delete;
    AAX_CParameter& operator=(const AAX_CParameter&) = delete;

    std::unique_ptr<AAX_IParameterValue> CloneValue() const override { return mValue.Clone(); }

    AAX_CParamID Identifier() const override { return mValue.Identifier(); }
    void SetName(const AAX_CString& name) override { mName = name; }
    const AAX_CString& Name() const override { return mName; }
    void AddShortenedName(const AAX_CString& name) override { mShortenedNames[name.Length()] = name; }
    const AAX_CString& ShortenedName(int32_t length) const override;
    void ClearShortenedNames() override { mShortenedNames.clear(); }

    bool Automatable() const override { return mAutomatable; }
    void SetAutomationDelegate(AAX_IAutomationDelegate* delegate) override;
    void Touch() override;
    void Release() override;

    void SetNormalizedValue(double normalizedValue) override;
    double GetNormalizedValue() const override { return mTaperDelegate->RealToNormalized(mValue.Get()); }
    void SetNormalizedDefaultValue(double normalizedDefault) override;
    double GetNormalizedDefaultValue() const override { return mTaperDelegate->RealToNormalized(mDefault); }
    void SetToDefaultValue() override { SetValue(mDefault); }
    /// Sets the real value; the taper clamps it. [main]
    void SetValue(T value) { RequestNormalizedValue(mTaperDelegate->RealToNormalized(value)); }

    void SetNumberOfSteps(uint32_t numSteps) override;
    uint32_t GetNumberOfSteps() const override { return mNumSteps; }
    uint32_t GetStepValue() const override { return GetStepValueFromNormalizedValue(GetNormalizedValue()); }
    double GetNormalizedValueFromStep(uint32_t step) const override;
    uint32_t GetStepValueFromNormalizedValue(double normalizedValue) const override;
    void SetStepValue(uint32_t step) override;

    bool GetValueString(AAX_CString* outText) const override;
    bool GetValueString(int32_t maxChars, AAX_CString* outText) const override;

    bool GetNormalizedValueFromBool(bool value, double* outNormalizedValue) const override {
        return NormalizedFromReal(value, outNormalizedValue);
    }
    bool GetNormalizedValueFromInt32(int32_t value, double* outNormalizedValue) const override {
        return NormalizedFromReal(value, outNormalizedValue);
    }
    bool GetNormalizedValueFromFloat(float value, double* outNormalizedValue) const override {
        return NormalizedFromReal(value, outNormalizedValue);
    }
    bool GetNormalizedValueFromDouble(double value, double* outNormalizedValue) const override {
        return NormalizedFromReal(value, outNormalizedValue);
    }
    bool GetNormalizedValueFromString(const AAX_CString& text, double* outNormalizedValue) const override;

    bool GetBoolFromNormalizedValue(double normalizedValue, bool* outValue) const override {
        return RealFromNormalized(normalizedValue, outValue);
    }
    bool GetInt32FromNormalizedValue(double normalizedValue, int32_t* outValue) const override {
        return RealFromNormalized(normalizedValue, outValue);
    }
    bool GetFloatFromNormalizedValue(double normalizedValue, float* outValue) const override {
        return RealFromNormalized(normalizedValue, outValue);
    }
    bool GetDoubleFromNormalizedValue(double normalizedValue, double* outValue) const override {
        return RealFromNormalized(normalizedValue, outValue);
    }
    bool GetStringFromNormalizedValue(double normalizedValue, AAX_CString& outText) const override;
    bool GetStringFromNormalizedValue(double normalizedValue, int32_t maxChars,
                                      AAX_CString& outText) const override;

    bool SetValueFromString(const AAX_CString& text) override;
    bool GetValueAsBool(bool* outValue) const override { return mValue.GetValueAsBool(outValue); }
    bool GetValueAsInt32(int32_t* outValue) const override { return mValue.GetValueAsInt32(outValue); }
    bool GetValueAsFloat(float* outValue) const override { return mValue.GetValueAsFloat(outValue); }
    bool GetValueAsDouble(double* outValue) const override { return mValue.GetValueAsDouble(outValue); }
    bool GetValueAsString(AAX_IString* outValue) const override;
    bool SetValueWithBool(bool value) override { return SetValueWith(value); }
    bool SetValueWithInt32(int32_t value) override { return SetValueWith(value); }
    bool SetValueWithFloat(float value) override { return SetValueWith(value); }
    bool SetValueWithDouble(double value) override { return SetValueWith(value); }
    bool SetValueWithString(const AAX_IString& value) override {
        return SetValueFromString(AAX_CString(value));
    }

    void SetType(AAX_EParameterType type) override { mType = type; }
    AAX_EParameterType GetType() const override { return mType; }
    void SetOrientation(int32_t orientation) override { mOrientation = orientation; }
    int32_t GetOrientation() const override { return mOrientation; }

    void SetTaperDelegate(AAX_ITaperDelegateBase& delegate, bool preserveValue) override;
    void SetDisplayDelegate(AAX_IDisplayDelegateBase& delegate) override;

    void UpdateNormalizedValue(double normalizedValue) override;

private:
    // The typed operations for a U: they succeed when U is T.
    template<class U>
    bool NormalizedFromReal(U value, double* outNormalizedValue) const;
    template<class U>
    bool RealFromNormalized(double normalizedValue, U* outValue) const;
    template<class U>
    bool SetValueWith(U value);

    /// Asks the automation delegate for a normalized value, or takes it at once without one.
    void RequestNormalizedValue(double normalizedValue);
    /// Takes a normalized value and announces it even if it is the stored one.
    void TakeNormalizedValue(double normalizedValue);
    /// Width of a step as a normalized value; for two steps or more.
    double StepWidth() const { return 1.0 / (mNumSteps - 1); }

    AAX_CString mName;
    std::map<uint32_t, AAX_CString> mShortenedNames; ///< By their length in characters.
    bool mAutomatable;
    uint32_t mNumSteps = 0;
    AAX_EParameterType mType = AAX_eParameterType_Continuous;
    int32_t mOrientation = 0;
    std::unique_ptr<AAX_ITaperDelegate<T>> mTaperDelegate;
    std::unique_ptr<AAX_IDisplayDelegate<T>> mDisplayDelegate;
    AAX_IAutomationDelegate* mAutomationDelegate = nullptr; ///< Borrowed.
    bool mNeedNotify = true; ///< The next update is stored and announced even if nothing changes.
    AAX_CParameterValue<T> mValue;
    T mDefault;
};

template<class T>
AAX_CParameter<T>::AAX_CParameter(AAX_CParamID identifier, const AAX_IString& name, T defaultValue,
                                  const AAX_ITaperDelegate<T>& taperDelegate,
                                  const AAX_IDisplayDelegate<T>& displayDelegate, bool automatable)
    : mName(name),
      mAutomatable(automatable),
      mTaperDelegate(taperDelegate.Clone()),
      mDisplayDelegate(displayDelegate.Clone()),
      mValue(identifier),
      mDefault(defaultValue) {
    mNumSteps = AAX_DefaultNumberOfSteps(mType);
    SetToDefaultValue();
}

template<class T>
const AAX_CString& AAX_CParameter<T>::ShortenedName(int32_t length) const {
    if (length < 0 || mName.Length() <= static_cast<uint32_t>(length) || mShortenedNames.empty()) {
        return mName;
    }
    const auto firstTooLong = mShortenedNames.upper_bound(static_cast<uint32_t>(length));
    return firstTooLong == mShortenedNames.begin() ? firstTooLong->second : std::prev(firstTooLong)->second;
}

template<class T>
void AAX_CParameter<T>::SetAutomationDelegate(AAX_IAutomationDelegate* delegate) {
    if (mAutomationDelegate != nullptr) {
        mAutomationDelegate->UnregisterParameter(Identifier());
    }
    mAutomationDelegate = delegate;
    if (mAutomationDelegate != nullptr) {
        mAutomationDelegate->RegisterParameter(Identifier());
    }
}

template<class T>
void AAX_CParameter<T>::Touch() {
    if (mAutomationDelegate != nullptr) {
        mAutomationDelegate->PostTouchRequest(Identifier());
    }
}

template<class T>
void AAX_CParameter<T>::Release() {
    if (mAutomationDelegate != nullptr) {
        mAutomationDelegate->PostReleaseRequest(Identifier());
    }
}

template<class T>
void AAX_CParameter<T>::SetNormalizedValue(double normalizedValue) {
    SetValue(mTaperDelegate->NormalizedToReal(normalizedValue));
}

template<class T>
void AAX_CParameter<T>::SetNormalizedDefaultValue(double normalizedDefault) {
    mDefault = mTaperDelegate->ConstrainRealValue(mTaperDelegate->NormalizedToReal(normalizedDefault));
}

template<class T>
void AAX_CParameter<T>::RequestNormalizedValue(double normalizedValue) {
    if (mAutomationDelegate == nullptr) {
        TakeNormalizedValue(normalizedValue);
        return;
    }
    Touch();
    mAutomationDelegate->PostSetValueRequest(Identifier(), normalizedValue);
    Release();
}

template<class T>
void AAX_CParameter<T>::TakeNormalizedValue(double normalizedValue) {
    mNeedNotify = true;
    UpdateNormalizedValue(normalizedValue);
}

template<class T>
void AAX_CParameter<T>::UpdateNormalizedValue(double normalizedValue) {
    const T realValue = mTaperDelegate->NormalizedToReal(normalizedValue);
    if (!mNeedNotify && realValue == mValue.Get()) {
        return;
    }
    mValue.Set(realValue);
    if (mAutomationDelegate != nullptr) {
        const double announced = std::isnan(normalizedValue) ? GetNormalizedValue() : normalizedValue;
        mAutomationDelegate->PostCurrentValue(Identifier(), announced);
    }
    mNeedNotify = false;
}

template<class T>
void AAX_CParameter<T>::SetNumberOfSteps(uint32_t numSteps) {
    AAX_ASSERT(0 < numSteps);
    if (numSteps > 0) {
        mNumSteps = numSteps;
    }
}

template<class T>
double AAX_CParameter<T>::GetNormalizedValueFromStep(uint32_t step) const {
    return mNumSteps <= 1 ? 0.0 : std::clamp(step * StepWidth(), 0.0, 1.0);
}

template<class T>
uint32_t AAX_CParameter<T>::GetStepValueFromNormalizedValue(double normalizedValue) const {
    if (mNumSteps <= 1 || std::isnan(normalizedValue)) {
        return 0;
    }
    // The division by the width, and not a multiplication, decides which way values near a half round.
    const double step = normalizedValue / StepWidth() + 0.5;
    return static_cast<uint32_t>(std::clamp(step, 0.0, static_cast<double>(mNumSteps - 1)));
}

template<class T>
void AAX_CParameter<T>::SetStepValue(uint32_t step) {
    if (mNumSteps >= 2) {
        SetNormalizedValue(GetNormalizedValueFromStep(step));
    }
}

template<class T>
bool AAX_CParameter<T>::GetValueString(AAX_CString* outText) const {
    return outText != nullptr && mDisplayDelegate->ValueToString(mValue.Get(), outText);
}

template<class T>
bool AAX_CParameter<T>::GetValueString(int32_t maxChars, AAX_CString* outText) const {
    return outText != nullptr && mDisplayDelegate->ValueToString(mValue.Get(), maxChars, outText);
}

template<class T>
bool AAX_CParameter<T>::GetNormalizedValueFromString(const AAX_CString& text,
                                                     double* outNormalizedValue) const {
    T realValue = T();
    return mDisplayDelegate->StringToValue(text, &realValue) &&
           NormalizedFromReal(realValue, outNormalizedValue);
}

template<class T>
bool AAX_CParameter<T>::GetStringFromNormalizedValue(double normalizedValue, AAX_CString& outText) const {
    return mDisplayDelegate->ValueToString(mTaperDelegate->NormalizedToReal(normalizedValue), &outText);
}

template<class T>
bool AAX_CParameter<T>::GetStringFromNormalizedValue(double normalizedValue, int32_t maxChars,
                                                     AAX_CString& outText) const {
    return mDisplayDelegate->ValueToString(mTaperDelegate->NormalizedToReal(normalizedValue), maxChars,
                                           &outText);
}

template<class T>
bool AAX_CParameter<T>::SetValueFromString(const AAX_CString& text) {
    T realValue = T();
    return mDisplayDelegate->StringToValue(text, &realValue) && SetValueWith(realValue);
}

template<class T>
bool AAX_CParameter<T>::GetValueAsString(AAX_IString* outValue) const {
    AAX_CString text;
    if (outValue == nullptr || !GetValueString(&text)) {
        return false;
    }
    outValue->Set(text.Get());
    return true;
}

template<class T>
void AAX_CParameter<T>::SetTaperDelegate(AAX_ITaperDelegateBase& delegate, bool preserveValue) {
    const auto* typedDelegate = dynamic_cast<const AAX_ITaperDelegate<T>*>(&delegate);
    AAX_ASSERT(typedDelegate != nullptr);
    if (typedDelegate == nullptr) {
        return;
    }
    std::unique_ptr<AAX_ITaperDelegate<T>> taper = typedDelegate->Clone();
    const double value = preserveValue ? taper->RealToNormalized(mValue.Get()) : GetNormalizedValue();
    mDefault = preserveValue ? taper->ConstrainRealValue(mDefault)
                             : taper->NormalizedToReal(GetNormalizedDefaultValue());
    mTaperDelegate = std::move(taper);
    TakeNormalizedValue(value);
}

template<class T>
void AAX_CParameter<T>::SetDisplayDelegate(AAX_IDisplayDelegateBase& delegate) {
    const auto* typedDelegate = dynamic_cast<const AAX_IDisplayDelegate<T>*>(&delegate);
    AAX_ASSERT(typedDelegate != nullptr);
    if (typedDelegate != nullptr) {
        mDisplayDelegate = typedDelegate->Clone();
    }
}

template<class T>
template<class U>
bool AAX_CParameter<T>::NormalizedFromReal(U value, double* outNormalizedValue) const {
    if constexpr (std::is_same_v<T, U>) {
        if (outNormalizedValue != nullptr) {
            *outNormalizedValue = mTaperDelegate->RealToNormalized(value);
            return true;
        }
    }
    return false;
}

template<class T>
template<class U>
bool AAX_CParameter<T>::RealFromNormalized(double normalizedValue, U* outValue) const {
    if constexpr (std::is_same_v<T, U>) {
        if (outValue != nullptr) {
            *outValue = mTaperDelegate->NormalizedToReal(normalizedValue);
            return true;
        }
    }
    return false;
}

template<class T>
template<class U>
bool AAX_CParameter<T>::SetValueWith(U value) {
    if constexpr (std::is_same_v<T, U>) {
        SetValue(value);
        return true;
    }
    return false;
}

#endif
