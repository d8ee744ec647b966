/// The text of a parameter's real values.
#ifndef VARNO_INTERFACES_AAX_IDISPLAYDELEGATE_H
#define VARNO_INTERFACES_AAX_IDISPLAYDELEGATE_H

#include <cstdint>
#include <memory>

class AAX_CString;

/// What displays of all types have in common.
class AAX_IDisplayDelegateBase {
public:
    virtual ~AAX_IDisplayDelegateBase() = default;
};

/// A display for real values of type T (in the parameter's own units). Outputs must not be null. Without
/// state that changes after it has been set up, so that any number of calls may run at once.
template<class T>
class AAX_IDisplayDelegate : public AAX_IDisplayDelegateBase {
public:
    /// A new copy, owned by the caller. Never null. [any]
    virtual std::unique_ptr<AAX_IDisplayDelegate> Clone() const = 0;
    /// Writes the text of a value. False when it has none. [any]
    virtual bool ValueToString(T value, AAX_CString* outText) const = 0;
    /// Writes the text of a value meant for `maxChars` characters (negative counts as 0). False when it has
    /// none. [any]
    virtual bool ValueToString(T value, int32_t maxChars, AAX_CString* outText) const = 0;
    /// Writes the value of a text. False, with a zero value written, for a text that is no value. [any]
    virtual bool StringToValue(const AAX_CString& text, T* outValue) const = 0;
};

#endif
