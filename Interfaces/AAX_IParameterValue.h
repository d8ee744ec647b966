/// A parameter's value apart from its parameter.
#ifndef VARNO_INTERFACES_AAX_IPARAMETERVALUE_H
#define VARNO_INTERFACES_AAX_IPARAMETERVALUE_H

#include "AAX.h"
#include "AAX_IString.h"

#include <memory>

/// The identifier and the real value (in the plug-in's own units) of a parameter at one moment.  A typed
/// getter succeeds only for the type that the value has.
class AAX_IParameterValue {
public:
    virtual ~AAX_IParameterValue() = default;
    /// A new copy of identifier and value, owned by the caller. Never null. [any]
    virtual std::unique_ptr<AAX_IParameterValue> Clone() const = 0;
    /// The identifier of the parameter, at most 31 characters; borrowed, lives as long as this object. [any]
    virtual AAX_CParamID Identifier() const = 0;
    /// Writes the value when it is a bool. False, with nothing written, when it is not or `outValue` is null.
    /// [any]
    virtual bool GetValueAsBool(bool* outValue) const = 0;
    /// Writes the value when it is a 32-bit integer. False, with nothing written, when it is not or
    /// `outValue` is null. [any]
    virtual bool GetValueAsInt32(int32_t* outValue) const = 0;
    /// Writes the value when it is a float. False, with nothing written, when it is not or `outValue` is
    /// null. [any]
    virtual bool GetValueAsFloat(float* outValue) const = 0;
    /// Writes the value when it is a double. False, with nothing written, when it is not or `outValue` is
    /// null. [any]
    virtual bool GetValueAsDouble(double* outValue) const = 0;
    /// Writes the value when it is a text. False, with nothing written, when it is not or `outValue` is null.
    /// [any]
    virtual bool GetValueAsString(AAX_IString* outValue) const = 0;
};

#endif
