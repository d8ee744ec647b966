/// The mapping between a parameter's real and normalized values.
#ifndef VARNO_INTERFACES_AAX_ITAPERDELEGATE_H
#define VARNO_INTERFACES_AAX_ITAPERDELEGATE_H

#include <memory>

/// What tapers of all types have in common.
class AAX_ITaperDelegateBase {
public:
    virtual ~AAX_ITaperDelegateBase() = default;
};

/// A taper for real values of type T (in the parameter's own units). Without state that changes, so that any
/// number of calls may run at once.
template<class T>
class AAX_ITaperDelegate : public AAX_ITaperDelegateBase {
public:
    /// A new copy, owned by the caller. Never null. [any]
    virtual std::unique_ptr<AAX_ITaperDelegate> Clone() const = 0;
    /// The real value at the normalized value 1. [any]
    virtual T GetMaximumValue() const = 0;
    /// The real value at the normalized value 0. [any]
    virtual T GetMinimumValue() const = 0;
    /// The nearest real value in range; the lower bound for one that is not a number. [any]
    virtual T ConstrainRealValue(T value) const = 0;
    /// The real value of a normalized one; below 0, above 1 and what is not a number are constrained. [any]
    virtual T NormalizedToReal(double normalizedValue) const = 0;
    /// The normalized value, 0 to 1, of a real one, which is constrained first. [any]
    virtual double RealToNormalized(T value) const = 0;
};

#endif
