#include "Settings/ParameterValue.h"

#include "CommandLine/CommandError.h"

namespace varno {
namespace {

std::string prefix(const std::string& where) {
    return where.empty() ? "" : where + ": ";
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
    throw CommandError(prefix(where) + unknownParameter(instance, id, "varno params lists"), exitStatus);
}

double normalizedFromText(const Instance& instance, const ParameterText& text,
                          const DemoGain_ValueText::Settings& settings, const std::string& where,
                          int exitStatus) {
    requireParameter(instance, text.id, where, exitStatus);
    const WrittenValue value = writtenValue(instance, text, settings);
    if (!value.normalized) {
        throw CommandError(prefix(where) + value.refusal, exitStatus);
    }
    return *value.normalized;
}

} // namespace varno
