/// The effect in the host, with every contract checked.
#ifndef VARNO_TESTS_INTEGRATION_HOSTEDEFFECT_H
#define VARNO_TESTS_INTEGRATION_HOSTEDEFFECT_H

#include "DemoGain_SampleRates.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/HostFixture.h"
#include "Tests/Support/RenderChecker.h"

#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace varno::test {

/// Normalized values by identifier.
using ParameterValues = std::map<std::string, double>;

/// An instance with buffers of up to 256 frames.
std::unique_ptr<Instance> makeInstance(const std::shared_ptr<Module>& module, std::int32_t channels = 2,
                                       double sampleRateHz = 48000.0);

/// Sets all values by automation.
void automate(Instance& instance, const ParameterValues& values);
/// The current values of all parameters.
ParameterValues valuesOf(const Instance& instance);
/// Random values of all parameters but the bypass, as exact as a float.
ParameterValues randomValues(std::mt19937& ioEngine);
/// The same parameters for automation and for the literal evaluation.
ParameterValues automationOf(const AlgParameters& parameters);

/// Processes buffers with the instance, for renderChecked.
BufferProcessor processorOf(Instance& instance);
/// The instance's output for a signal, in buffers of several lengths; any fault fails the test.
Signal render(Instance& instance, const Signal& input);

/// The module that is linked into this program, in the host, at the sample rates of the effect; what is made
/// from it is local to the test.
class HostedEffect : public HostFixture {
protected:
    HostedEffect()
        : HostFixture(linkedEntryPoints()) {
        options.sampleRates = {DemoGain_SampleRates::kLowestHz, DemoGain_SampleRates::kHighestHz};
    }
};

} // namespace varno::test

#endif
