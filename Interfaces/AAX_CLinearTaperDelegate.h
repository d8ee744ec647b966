/// A straight line between two real values.
#ifndef VARNO_INTERFACES_AAX_CLINEARTAPERDELEGATE_H
#define VARNO_INTERFACES_AAX_CLINEARTAPERDELEGATE_H

#include "AAX_ITaperDelegate.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <type_traits>

/// real = minimum + (maximum - minimum) x normalized, in double precision. The range may run downwards
/// (minimum above maximum) or be a single point, whose normalized value is 0.5. RealPrecision 0: real values
/// are not rounded, the only form there is.
template<class T, int32_t RealPrecision = 0>
class AAX_CLinearTaperDelegate final : public AAX_ITaperDelegate<T> {
    static_assert(std::is_floating_point_v<T>);
    static_assert(RealPrecision == 0);

public:
    /// The bounds are finite, in the parameter's units.
    explicit AAX_CLinearTaperDelegate(T minimum = T(0), T maximum = T(1))
        : mMinimum(minimum),
          mMaximum(maximum) {}

    std::unique_ptr<AAX_ITaperDelegate<T>> Clone() const override {
        return std::make_unique<AAX_CLinearTaperDelegate>(*this);
    }
    T GetMaximumValue() const override { return mMaximum; }
    T GetMinimumValue() const override { return mMinimum; }
    T ConstrainRealValue(T value) const override;
    T NormalizedToReal(double normalizedValue) const override;
    double RealToNormalized(T value) const override;

private:
    T mMinimum;
    T mMaximum;
};

template<class T, int32_t RealPrecision>
T AAX_CLinearTaperDelegate<T, RealPrecision>::ConstrainRealValue(T value) const {
    const auto [lower, upper] = std::minmax(mMinimum, mMaximum);
    return std::isnan(value) ? lower : std::clamp(value, lower, upper);
}

template<class T, int32_t RealPrecision>
T AAX_CLinearTaperDelegate<T, RealPrecision>::NormalizedToReal(double normalizedValue) const {
    const double minimum = mMinimum;
    const double maximum = mMaximum;
    return ConstrainRealValue(static_cast<T>(minimum + (maximum - minimum) * normalizedValue));
}

template<class T, int32_t RealPrecision>
double AAX_CLinearTaperDelegate<T, RealPrecision>::RealToNormalized(T value) const {
    if (mMinimum == mMaximum) {
        return 0.5;
    }
    const double minimum = mMinimum;
    const double maximum = mMaximum;
    return (static_cast<double>(ConstrainRealValue(value)) - minimum) / (maximum - minimum);
}

#endif
