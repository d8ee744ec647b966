/// Numbers as text.
#ifndef VARNO_INTERFACES_AAX_CNUMBERDISPLAYDELEGATE_H
#define VARNO_INTERFACES_AAX_CNUMBERDISPLAYDELEGATE_H

#include "AAX_CString.h"
#include "AAX_IDisplayDelegate.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <type_traits>

/// Fixed-point numbers with Precision decimal places. SpaceAfter 0: nothing follows the number, the only form
/// there is, since no unit is shown.
template<class T, uint32_t Precision = 2, uint32_t SpaceAfter = 0>
class AAX_CNumberDisplayDelegate final : public AAX_IDisplayDelegate<T> {
    static_assert(std::is_floating_point_v<T>);
    static_assert(SpaceAfter == 0);

public:
    std::unique_ptr<AAX_IDisplayDelegate<T>> Clone() const override {
        return std::make_unique<AAX_CNumberDisplayDelegate>(*this);
    }
    bool ValueToString(T value, AAX_CString* outText) const override;
    /// Cuts what does not fit, and a decimal point that would then stand last. [any]
    bool ValueToString(T value, int32_t maxChars, AAX_CString* outText) const override;
    /// Takes a leading number; what follows it is ignored. [any]
    bool StringToValue(const AAX_CString& text, T* outValue) const override;
};

template<class T, uint32_t Precision, uint32_t SpaceAfter>
bool AAX_CNumberDisplayDelegate<T, Precision, SpaceAfter>::ValueToString(T value,
                                                                         AAX_CString* outText) const {
    outText->Clear();
    outText->AppendNumber(value, static_cast<int>(Precision));
    return true;
}

template<class T, uint32_t Precision, uint32_t SpaceAfter>
bool AAX_CNumberDisplayDelegate<T, Precision, SpaceAfter>::ValueToString(T value, int32_t maxChars,
                                                                         AAX_CString* outText) const {
    AAX_CString text;
    ValueToString(value, &text);
    const auto limit = static_cast<uint32_t>(std::max(maxChars, 0));
    uint32_t length = std::min(text.Length(), limit);
    if (length >= 1 && length == limit && text[length - 1] == '.') {
        --length;
    }
    text.SubString(0, length, outText);
    return true;
}

template<class T, uint32_t Precision, uint32_t SpaceAfter>
bool AAX_CNumberDisplayDelegate<T, Precision, SpaceAfter>::StringToValue(const AAX_CString& text,
                                                                         T* outValue) const {
    double number = 0.0;
    const bool isNumber = text.ToDouble(&number);
    *outValue = static_cast<T>(number);
    return isNumber;
}

#endif
