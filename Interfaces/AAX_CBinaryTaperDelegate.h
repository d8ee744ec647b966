/// Off and on as 0 and 1.
#ifndef VARNO_INTERFACES_AAX_CBINARYTAPERDELEGATE_H
#define VARNO_INTERFACES_AAX_CBINARYTAPERDELEGATE_H

#include "AAX_ITaperDelegate.h"

#include <memory>

/// Only 0 and what lies below it is false; every normalized value above 0, however small, is true.
template<class T>
class AAX_CBinaryTaperDelegate final : public AAX_ITaperDelegate<T> {
public:
    std::unique_ptr<AAX_ITaperDelegate<T>> Clone() const override {
        return std::make_unique<AAX_CBinaryTaperDelegate>(*this);
    }
    T GetMaximumValue() const override { return true; }
    T GetMinimumValue() const override { return false; }
    T ConstrainRealValue(T value) const override { return value; }
    T NormalizedToReal(double normalizedValue) const override { return normalizedValue > 0.0; }
    double RealToNormalized(T value) const override { return value ? 1.0 : 0.0; }
};

#endif
