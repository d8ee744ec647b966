// Making, using and ending instances in every order.
#include "Validate/Check.h"

namespace varno::validate {
namespace {

constexpr double kLifeRateHz = 48000.0;
constexpr std::int32_t kLifeFrames = 64;

void checkInstance(Context& context) {
    const auto plugin = context.open();
    for (const PluginInfo& info : plugin->plugins()) {
        context.step("create " + info.id);
        (void)plugin->create(info, kLifeRateHz, kLifeFrames);
    }
    for (const std::string& complaint : plugin->takeComplaints()) {
        context.fail(complaint, "nothing against the rules of the format");
    }
}

constexpr Check kLifeChecks[] = {
    {.id = "life-instance", .title = "An instance is made and ended", .run = checkInstance},
};

} // namespace

std::span<const Check> lifeChecks() {
    return kLifeChecks;
}

} // namespace varno::validate
