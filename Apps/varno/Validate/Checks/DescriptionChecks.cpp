// What a plug-in states of itself.
#include "Validate/Check.h"
#include "Validate/Checks/ModuleRegistrationChecks.h"
#include "Validate/Silence.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <sstream>
#include <utility>

namespace varno::validate {
namespace {

constexpr double kDescriptionRateHz = 48000.0;
constexpr std::int32_t kDescriptionFrames = 64;

std::string nameOf(const PluginInfo& info) {
    return info.id + " (" + std::to_string(info.inputs) + " in, " + std::to_string(info.outputs) + " out)";
}

std::string nameOf(const PluginInfo& info, const Parameter& parameter) {
    return "parameter " + parameter.id + " of " + nameOf(info);
}

// Calls `check(info, instance)` with an instance of each plug-in that this program can run.
template<class Action>
void forEachInstance(Context& context, Plugin& plugin, Action check) {
    for (const PluginInfo& info : plugin.plugins()) {
        if (!info.obstacle.empty()) {
            continue;
        }
        context.step("create " + nameOf(info));
        const auto instance = plugin.create(info, kDescriptionRateHz, kDescriptionFrames);
        context.step("use " + nameOf(info));
        check(info, *instance);
    }
}

void checkComplete(Context& context) {
    const auto plugin = context.open();
    for (const PluginInfo& info : plugin->plugins()) {
        context.expect(!info.id.empty(), "a plug-in without identifier", "one");
        context.expect(!info.name.empty(), "no name of " + nameOf(info), "one for people");
        context.expect(info.inputs >= 0 && info.outputs >= 0 && info.inputs + info.outputs > 0,
                       "no audio of " + nameOf(info), "an input or an output");
    }
    forEachInstance(context, *plugin, [&](const PluginInfo& info, const PluginInstance& instance) {
        for (const Parameter& parameter : instance.parameters()) {
            const std::string name = nameOf(info, parameter);
            context.expect(!parameter.id.empty(), "no identifier of a parameter of " + nameOf(info), "one");
            context.expect(!parameter.name.empty(), "no name of " + name, "one for people");
            const bool isRange = std::isfinite(parameter.minimum) && std::isfinite(parameter.maximum) &&
                                 parameter.minimum < parameter.maximum;
            context.expect(isRange,
                           name + " from " + std::to_string(parameter.minimum) + " to " +
                               std::to_string(parameter.maximum),
                           "finite ends, the lower one first");
            context.expect(
                parameter.defaultValue >= parameter.minimum && parameter.defaultValue <= parameter.maximum,
                "default " + std::to_string(parameter.defaultValue) + " of " + name, "one within its range");
        }
    });
}

void checkUnique(Context& context) {
    const auto plugin = context.open();
    std::set<std::string> plugins;
    for (const PluginInfo& info : plugin->plugins()) {
        context.expect(plugins.insert(nameOf(info)).second, "more than one " + nameOf(info), "one");
    }
    forEachInstance(context, *plugin, [&](const PluginInfo& info, const PluginInstance& instance) {
        std::set<std::string> parameters;
        int bypasses = 0;
        for (const Parameter& parameter : instance.parameters()) {
            context.expect(parameters.insert(parameter.id).second, "more than one " + nameOf(info, parameter),
                           "one");
            bypasses += parameter.isBypass ? 1 : 0;
        }
        context.expect(bypasses <= 1, std::to_string(bypasses) + " bypasses of " + nameOf(info),
                       "at most one");
    });
}

void checkDefaults(Context& context) {
    const auto plugin = context.open();
    forEachInstance(context, *plugin, [&](const PluginInfo& info, PluginInstance& instance) {
        const auto& parameters = instance.parameters();
        for (std::size_t index = 0; index < parameters.size(); ++index) {
            // Values of the format may have single precision.
            constexpr double kPrecision = 1e-6;
            const Parameter& parameter = parameters[index];
            const double value = instance.get(index);
            context.expect(std::abs(value - parameter.defaultValue) <=
                               kPrecision * std::max(1.0, parameter.maximum - parameter.minimum),
                           "value " + std::to_string(value) + " of " + nameOf(info, parameter) +
                               " in a new instance",
                           "its default " + std::to_string(parameter.defaultValue));
        }
    });
}

// All that is described, as text.
std::string textOf(Context& context) {
    std::ostringstream text;
    text.precision(std::numeric_limits<double>::max_digits10);
    const auto plugin = context.open();
    forEachInstance(context, *plugin, [&](const PluginInfo& info, const PluginInstance& instance) {
        text << nameOf(info) << ' ' << info.name << '\n';
        for (const Parameter& each : instance.parameters()) {
            text << each.id << ' ' << each.name << ' ' << each.minimum << ' ' << each.maximum << ' '
                 << each.defaultValue << ' ' << each.steps << ' ' << each.isBypass << ' '
                 << each.isAutomatable << '\n';
        }
    });
    return text.str();
}

// The first line that differs.
std::pair<std::string, std::string> difference(const std::string& left, const std::string& right) {
    std::istringstream lefts(left);
    std::istringstream rights(right);
    std::string one;
    std::string other;
    while (std::getline(lefts, one) && std::getline(rights, other)) {
        if (one != other) {
            return {one, other};
        }
    }
    return {"a description of " + std::to_string(left.size()) + " bytes", std::to_string(right.size())};
}

void checkRepeatable(Context& context) {
    const std::string first = textOf(context);
    const std::string second = textOf(context);
    if (first != second) {
        const auto [before, after] = difference(first, second);
        context.fail(after + " when it is opened again", before + " as before");
    }
}

// Every value at both of its ends, with buffers between them.
void moveAll(PluginInstance& instance, const PluginInfo& info) {
    Silence silence(info, kDescriptionFrames);
    for (std::size_t index = 0; index < instance.parameters().size(); ++index) {
        const Parameter& parameter = instance.parameters()[index];
        for (const double value : {parameter.minimum, parameter.maximum, parameter.defaultValue}) {
            instance.set(index, value);
            silence.through(instance);
        }
    }
}

void checkContracts(Context& context) {
    const auto plugin = context.open();
    forEachInstance(context, *plugin,
                    [&](const PluginInfo& info, PluginInstance& instance) { moveAll(instance, info); });
    for (const std::string& complaint : plugin->takeComplaints()) {
        context.fail(complaint, "description, parameters and packets that fit together");
    }
}

constexpr Check kDescriptionChecks[] = {
    {.id = "description-complete",
     .title = "Plug-ins and parameters have identifiers, names and ranges",
     .run = checkComplete},
    {.id = "description-unique",
     .title = "No two plug-ins and no two parameters are the same",
     .run = checkUnique},
    {.id = "description-defaults",
     .title = "A new instance has the defaults that are stated",
     .run = checkDefaults},
    {.id = "description-same-twice",
     .title = "The description is the same when it is read again",
     .run = checkRepeatable},
    {.id = "description-contracts",
     .title = "What is described fits the packets and ports that are seen",
     .run = checkContracts},
    {.id = "description-throwing-host",
     .title = "What the host throws while a module is described becomes a result code",
     .formats = static_cast<Formats>(Format::kModule),
     .run = checkRegistrationWithThrowingHost},
    {.id = "description-failing-memory",
     .title = "Each allocation of a module that is described may fail",
     .formats = static_cast<Formats>(Format::kModule),
     .timeLimitS = 60,
     .run = checkRegistrationWithoutMemory},
};

} // namespace

std::span<const Check> descriptionChecks() {
    return kDescriptionChecks;
}

} // namespace varno::validate
