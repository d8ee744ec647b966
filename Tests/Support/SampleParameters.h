/// Parameters of each type, for tests.
#ifndef VARNO_TESTS_SUPPORT_SAMPLEPARAMETERS_H
#define VARNO_TESTS_SUPPORT_SAMPLEPARAMETERS_H

#include "AAX_CBinaryDisplayDelegate.h"
#include "AAX_CBinaryTaperDelegate.h"
#include "AAX_CLinearTaperDelegate.h"
#include "AAX_CNumberDisplayDelegate.h"
#include "AAX_CParameter.h"

#include <memory>

namespace varno::test {

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

} // namespace varno::test

#endif
