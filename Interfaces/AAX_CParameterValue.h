/// A parameter's value of one type.
#ifndef VARNO_INTERFACES_AAX_CPARAMETERVALUE_H
#define VARNO_INTERFACES_AAX_CPARAMETERVALUE_H

#include "AAX_Assert.h"
#include "AAX_IParameterValue.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <type_traits>

/// Bytes of an identifier with its terminator.
enum { eParemeterDefaultMaxIdentifierSize = 32 };

/// An identifier and a real value of type T.
template<class T>
class AAX_CParameterValue final : public AAX_IParameterValue {
public:
    /// Copies `identifier` (null counts as empty). One of more than 31 characters is an assertion failure and
    /// is cut to its first 31.
    explicit AAX_CParameterValue(AAX_CParamID identifier, T value = T());

    std::unique_ptr<AAX_IParameterValue> Clone() const override {
        return std::make_unique<AAX_CParameterValue>(mIdentifier, mValue);
    }
    AAX_CParamID Identifier() const override { return mIdentifier; }
    bool GetValueAsBool(bool* outValue) const override { return GetValueAs(outValue); }
    bool GetValueAsInt32(int32_t* outValue) const override { return GetValueAs(outValue); }
    bool GetValueAsFloat(float* outValue) const override { return GetValueAs(outValue); }
    bool GetValueAsDouble(double* outValue) const override { return GetValueAs(outValue); }
    bool GetValueAsString(AAX_IString* /*outValue*/) const override { return false; }

    /// The real value. [any]
    T Get() const { return mValue; }
    /// Replaces the real value. [main]
    void Set(T value) { mValue = value; }

private:
    template<class U>
    bool GetValueAs(U* outValue) const;

    char mIdentifier[eParemeterDefaultMaxIdentifierSize] = {};
    T mValue;
};

template<class T>
AAX_CParameterValue<T>::AAX_CParameterValue(AAX_CParamID identifier, T value)
    : mValue(value) {
    if (identifier != nullptr) {
        const std::size_t len = std::strlen(identifier);
        AAX_ASSERT(len < eParemeterDefaultMaxIdentifierSize);
        std::copy_n(identifier, std::min<std::size_t>(len, eParemeterDefaultMaxIdentifierSize - 1),
                    mIdentifier);
    }
}

template<class T>
template<class U>
bool AAX_CParameterValue<T>::GetValueAs(U* outValue) const {
    if constexpr (std::is_same_v<T, U>) {
        if (outValue != nullptr) {
            *outValue = mValue;
            return true;
        }
    }
    return false;
}

#endif
