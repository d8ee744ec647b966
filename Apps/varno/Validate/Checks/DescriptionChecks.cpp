// What a plug-in states of itself.
#include "Validate/Check.h"

namespace varno::validate {
namespace {

void checkIdentifiers(Context& context) {
    const auto plugin = context.open();
    for (const PluginInfo& info : plugin->plugins()) {
        context.expect(!info.id.empty(), "a plug-in without identifier", "one");
    }
}

constexpr Check kDescriptionChecks[] = {
    {.id = "description-identifiers", .title = "Every plug-in has an identifier", .run = checkIdentifiers},
};

} // namespace

std::span<const Check> descriptionChecks() {
    return kDescriptionChecks;
}

} // namespace varno::validate
