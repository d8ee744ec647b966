/// A data model, parameters and chunks for tests.
#ifndef VARNO_TESTS_SUPPORT_TESTEFFECT_H
#define VARNO_TESTS_SUPPORT_TESTEFFECT_H

#include "AAX.h"
#include "AAX_CBinaryDisplayDelegate.h"
#include "AAX_CBinaryTaperDelegate.h"
#include "AAX_CEffectParameters.h"
#include "AAX_CLinearTaperDelegate.h"
#include "AAX_CNumberDisplayDelegate.h"
#include "AAX_CParameter.h"
#include "AAX_CString.h"
#include "AAX_IParameter.h"
#include "ACF/ACFPtr.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace varno::test {

inline constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

/// What a chunk's data area begins with.
inline const std::string kChunkMarker = "\1\1\1\1";

/// A chunk record on the heap, without a byte behind its data area, so that an address sanitizer sees every
/// access beyond it. Filled with 0xEE where nothing is given.
class ChunkRecord {
public:
    /// Room for `size` bytes of data area; the header's size field has that size.
    explicit ChunkRecord(std::size_t size)
        : mSize(size),
          mBytes(new char[kAAX_PlugInChunkHeaderSize + size]) {
        std::memset(mBytes.get(), 0xEE, kAAX_PlugInChunkHeaderSize + size);
        get()->fSize = static_cast<std::int32_t>(size);
        get()->fVersion = 7;
        get()->fChunkID = AAX_FourCC("elck");
    }
    /// A chunk with a data area.
    explicit ChunkRecord(std::string_view data)
        : ChunkRecord(data.size()) {
        std::memcpy(mBytes.get() + kAAX_PlugInChunkHeaderSize, data.data(), data.size());
    }

    AAX_SPlugInChunk* get() { return reinterpret_cast<AAX_SPlugInChunk*>(mBytes.get()); }
    AAX_SPlugInChunk* operator->() { return get(); }

    /// The data area.
    std::string data() const { return {mBytes.get() + kAAX_PlugInChunkHeaderSize, mSize}; }
    /// The name field with all of its 32 bytes.
    std::string name() { return {get()->fName, sizeof(get()->fName)}; }

private:
    std::size_t mSize;
    std::unique_ptr<char[]> mBytes;
};

using FloatTaper = AAX_CLinearTaperDelegate<float, 0>;
using FloatDisplay = AAX_CNumberDisplayDelegate<float, 2, 0>;

/// A float parameter from 0 to 1 that shows two decimals.
inline std::unique_ptr<AAX_CParameter<float>> makeFloatParameter(const char* identifier = "Gain",
                                                                 float defaultValue = 0.5F,
                                                                 const FloatTaper& taper = FloatTaper()) {
    return std::make_unique<AAX_CParameter<float>>(identifier, AAX_CString("Input Gain"), defaultValue, taper,
                                                   FloatDisplay(), true);
}

/// A switch that shows "bypass" and "on".
inline std::unique_ptr<AAX_CParameter<bool>> makeBoolParameter(const char* identifier = "Bypass") {
    return std::make_unique<AAX_CParameter<bool>>(identifier, AAX_CString("Bypass"), false,
                                                  AAX_CBinaryTaperDelegate<bool>(),
                                                  AAX_CBinaryDisplayDelegate<bool>("bypass", "on"), true);
}

/// A double parameter from 0 to 1 that shows two decimals.
inline std::unique_ptr<AAX_CParameter<double>> makeDoubleParameter(const char* identifier = "Fine") {
    return std::make_unique<AAX_CParameter<double>>(identifier, AAX_CString("Fine"), 0.5,
                                                    AAX_CLinearTaperDelegate<double, 0>(),
                                                    AAX_CNumberDisplayDelegate<double, 2, 0>(), true);
}

/// The real value of a float parameter.
inline float realValue(const AAX_IParameter& parameter) {
    float value = -1.0F;
    parameter.GetValueAsFloat(&value);
    return value;
}

/// A parameter that has values of several types at once: those that the test gives it. Records the setters
/// that succeed; calls `before` at the start of each operation, which may throw.
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

/// A data model whose parts a test can reach; `onInit` is its EffectInit.
class TestEffect : public AAX_CEffectParameters {
public:
    using AAX_CEffectParameters::FilterParameterIDOnSave;
    using AAX_CEffectParameters::mChunkSize;
    using AAX_CEffectParameters::mNumChunkedParameters;
    using AAX_CEffectParameters::mNumPlugInChanges;
    using AAX_CEffectParameters::mPacketDispatcher;
    using AAX_CEffectParameters::mParameterManager;

    std::function<AAX_Result(TestEffect&)> onInit = [](TestEffect&) { return AAX_SUCCESS; };

    /// Adds a parameter, which must not be there yet. Returns it, borrowed.
    template<class Parameter>
    Parameter* add(std::unique_ptr<Parameter> parameter) {
        Parameter* const added = parameter.get();
        if (mParameterManager.AddParameter(added)) {
            static_cast<void>(parameter.release());
        }
        return added;
    }

protected:
    AAX_Result EffectInit() override { return onInit(*this); }
};

/// A new effect; the test holds its one reference.
inline ACFPtr<TestEffect> makeTestEffect() {
    return ACFPtr<TestEffect>::Retain(new TestEffect);
}

} // namespace varno::test

#endif
