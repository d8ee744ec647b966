/// The effect in the host, for targets that give it settings.
#ifndef VARNO_TESTS_FUZZ_FUZZEDINSTANCE_H
#define VARNO_TESTS_FUZZ_FUZZEDINSTANCE_H

#include "Host/Instance.h"
#include "Surround/Settings/EffectHost.h"
#include "Tests/Fuzz/FuzzTarget.h"

#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace varno::fuzz {

/// An instance of the linked module, all of whose values are at 0.25 or, of the master bypass, at 0.
class FuzzedInstance {
public:
    FuzzedInstance()
        : mInstance(Module::linked(linkedEntryPoints(), effectHostOptions()), {}) {
        for (const ParameterInfo& parameter : mInstance.parameters()) {
            mInstance.setNormalized(parameter.id, parameter.isMasterBypass ? 0.0 : 0.25);
        }
        mStart = values();
    }

    Instance& get() { return mInstance; }

    /// The values of all parameters.
    std::vector<double> values() {
        std::vector<double> values;
        values.reserve(mStart.size());
        for (const ParameterInfo& parameter : mInstance.parameters()) {
            double value = std::nan("");
            mInstance.dataModel().GetParameterNormalizedValue(parameter.id.c_str(), &value);
            values.push_back(value);
        }
        return values;
    }

    /// Whether nothing has changed since the start.
    bool isAtStart() { return values() == mStart; }

    /// The values now. @throws Broken where one is out of its range, or the host has seen a broken contract
    std::vector<double> soundValues() {
        std::vector<double> found = values();
        for (const double value : found) {
            require(value >= 0.0 && value <= 1.0, "a value is out of its range");
        }
        for (const Violation& violation : mInstance.module().monitor()->takeViolations()) {
            throw Broken("broken contract: " + violation.text);
        }
        return found;
    }

    /// The values of the start.
    const std::vector<double>& start() const { return mStart; }

    /// Brings them back. @param now the present values
    void restart(const std::vector<double>& now) {
        for (std::size_t i = 0; i < mStart.size(); ++i) {
            if (now[i] != mStart[i]) {
                mInstance.setNormalized(mInstance.parameters()[i].id, mStart[i]);
            }
        }
        require(now == mStart || isAtStart(), "automation does not bring the values of the start back");
    }

private:
    Instance mInstance;
    std::vector<double> mStart;
};

} // namespace varno::fuzz

#endif
