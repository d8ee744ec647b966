/// A parameter that answers to several types at once, or throws, for tests.
#ifndef VARNO_TESTS_SUPPORT_FAKEPARAMETER_H
#define VARNO_TESTS_SUPPORT_FAKEPARAMETER_H

#include "AAX_CString.h"
#include "AAX_IParameter.h"

#include <functional>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Has the real values that the test gives it, writes down the setters that succeed and does what the test
/// wants before each operation.
class FakeParameter : public AAX_IParameter {
public:
    explicit FakeParameter(const char* identifier)
        : mIdentifier(identifier) {}
    ~FakeParameter() override {
        if (onDestruction) {
            onDestruction();
        }
    }

    std::optional<bool> asBool;
    std::optional<std::int32_t> asInt32;
    std::optional<float> asFloat;
    std::optional<double> asDouble;
    std::optional<std::string> asString;
    std::uint32_t steps = 2;
    std::vector<std::string> sets; ///< The setters that succeeded, with their values.
    std::function<void()> before = [] {};
    std::function<void()> onDestruction;

    bool GetValueAsBool(bool* out) const override { return get(asBool, out); }
    bool GetValueAsInt32(std::int32_t* out) const override { return get(asInt32, out); }
    bool GetValueAsFloat(float* out) const override { return get(asFloat, out); }
    bool GetValueAsDouble(double* out) const override { return get(asDouble, out); }
    bool GetValueAsString(AAX_IString* out) const override {
        std::string text;
        const bool isThere = get(asString, &text);
        if (isThere) {
            out->Set(text.c_str());
        }
        return isThere;
    }
    bool SetValueWithBool(bool value) override { return set("bool", asBool, value); }
    bool SetValueWithInt32(std::int32_t value) override { return set("int32", asInt32, value); }
    bool SetValueWithFloat(float value) override { return set("float", asFloat, value); }
    bool SetValueWithDouble(double value) override { return set("double", asDouble, value); }
    bool SetValueWithString(const AAX_IString& value) override {
        return set("string", asString, std::string(value.Get()));
    }

    AAX_CParamID Identifier() const override { return mIdentifier.c_str(); }
    const AAX_CString& Name() const override { return mName; }
    const AAX_CString& ShortenedName(std::int32_t) const override {
        before();
        return mName;
    }
    std::uint32_t GetNumberOfSteps() const override { return answer(steps); }

    std::unique_ptr<AAX_IParameterValue> CloneValue() const override { return nullptr; }
    void SetName(const AAX_CString& name) override { mName = name; }
    void AddShortenedName(const AAX_CString&) override {}
    void ClearShortenedNames() override {}
    bool Automatable() const override { return answer(true); }
    void SetAutomationDelegate(AAX_IAutomationDelegate*) override { before(); }
    void Touch() override { before(); }
    void Release() override { before(); }
    void SetNormalizedValue(double) override { before(); }
    double GetNormalizedValue() const override { return answer(0.0); }
    void SetNormalizedDefaultValue(double) override { before(); }
    double GetNormalizedDefaultValue() const override { return answer(0.0); }
    void SetToDefaultValue() override {}
    void SetNumberOfSteps(std::uint32_t) override {}
    std::uint32_t GetStepValue() const override { return 0; }
    double GetNormalizedValueFromStep(std::uint32_t) const override { return 0.0; }
    std::uint32_t GetStepValueFromNormalizedValue(double) const override { return 0; }
    void SetStepValue(std::uint32_t) override {}
    bool GetValueString(AAX_CString*) const override { return answer(false); }
    bool GetValueString(std::int32_t, AAX_CString*) const override { return answer(false); }
    bool GetNormalizedValueFromBool(bool, double*) const override { return false; }
    bool GetNormalizedValueFromInt32(std::int32_t, double*) const override { return false; }
    bool GetNormalizedValueFromFloat(float, double*) const override { return false; }
    bool GetNormalizedValueFromDouble(double, double*) const override { return false; }
    bool GetNormalizedValueFromString(const AAX_CString&, double*) const override { return answer(false); }
    bool GetBoolFromNormalizedValue(double, bool*) const override { return false; }
    bool GetInt32FromNormalizedValue(double, std::int32_t*) const override { return false; }
    bool GetFloatFromNormalizedValue(double, float*) const override { return false; }
    bool GetDoubleFromNormalizedValue(double, double*) const override { return false; }
    bool GetStringFromNormalizedValue(double, AAX_CString&) const override { return answer(false); }
    bool GetStringFromNormalizedValue(double, std::int32_t, AAX_CString&) const override {
        return answer(false);
    }
    bool SetValueFromString(const AAX_CString&) override { return false; }
    void SetType(AAX_EParameterType) override {}
    AAX_EParameterType GetType() const override { return answer(AAX_eParameterType_Discrete); }
    void SetOrientation(std::int32_t) override {}
    std::int32_t GetOrientation() const override { return answer(0); }
    void SetTaperDelegate(AAX_ITaperDelegateBase&, bool) override {}
    void SetDisplayDelegate(AAX_IDisplayDelegateBase&) override {}
    void UpdateNormalizedValue(double) override { before(); }

private:
    template<class T>
    T answer(T value) const {
        before();
        return value;
    }
    template<class T>
    bool get(const std::optional<T>& value, T* out) const {
        before();
        if (value.has_value()) {
            *out = *value;
        }
        return value.has_value();
    }
    template<class T>
    bool set(const char* type, std::optional<T>& stored, const T& value) {
        before();
        if (stored.has_value()) {
            stored = value;
            std::ostringstream text;
            text << type << " " << value;
            sets.push_back(text.str());
        }
        return stored.has_value();
    }

    std::string mIdentifier;
    AAX_CString mName{"Fake"};
};

} // namespace varno::test

#endif
