#include "Settings/ParameterValue.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/NumberText.h"

namespace varno {
namespace {

std::string prefix(const std::string& where) {
    return where.empty() ? "" : where + ": ";
}

// "0 to 1", and the texts of a parameter that has names for its steps.
std::string expectedValues(const Instance& instance, const ParameterInfo& parameter) {
    std::string expected = "0 to 1";
    if (parameter.type == AAX_eParameterType_Discrete) {
        for (int step = 0; step < parameter.steps; ++step) {
            expected += step + 1 == parameter.steps ? " or " : ", ";
            expected += inQuotes(instance.textOf(parameter.id, normalizedOfStep(step, parameter.steps)));
        }
    }
    return expected;
}

} // namespace

ParameterText parameterTextFromOption(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0 || equals + 1 == text.size()) {
        throw UsageError("--set " + text + ": expected ID=VALUE, for instance Hot=0.5");
    }
    return {text.substr(0, equals), text.substr(equals + 1)};
}

const ParameterInfo& requireParameter(const Instance& instance, const std::string& id,
                                      const std::string& where, int exitStatus) {
    if (const ParameterInfo* parameter = instance.parameter(id)) {
        return *parameter;
    }
    std::vector<std::string> known;
    for (const auto& parameter : instance.parameters()) {
        known.push_back(parameter.id);
    }
    const std::string proposal = suggestion(id, known);
    throw CommandError(prefix(where) + "unknown parameter " + inQuotes(id) +
                           (proposal.empty() ? "; expected one that varno params lists" : proposal),
                       exitStatus);
}

double normalizedFromText(const Instance& instance, const ParameterText& text, const std::string& where,
                          int exitStatus) {
    const auto& parameter = requireParameter(instance, text.id, where, exitStatus);
    const auto number = numberFromText<double>(text.value);
    // Comparisons with a value that is not a number are false.
    if (number && *number >= 0.0 && *number <= 1.0) {
        return *number;
    }
    if (!number) {
        const auto normalized = instance.fromText(text.id, text.value);
        if (normalized && instance.textOf(text.id, *normalized) == text.value) {
            return *normalized;
        }
    }
    throw CommandError(prefix(where) + text.id + " takes " + expectedValues(instance, parameter) +
                           ", found " + inQuotes(text.value),
                       exitStatus);
}

double normalizedOfStep(int step, int steps) {
    return static_cast<double>(step) / (steps - 1);
}

} // namespace varno
