// The binary as the system's loader sees it, and what loading it does to a process.
#include "Validate/Check.h"

namespace varno::validate {
namespace {

void checkOpening(Context& context) {
    context.step("open");
    const auto plugin = context.open();
    context.expect(!plugin->plugins().empty(), "no plug-in", "at least one");
}

constexpr Check kBinaryChecks[] = {
    {.id = "binary-opens", .title = "The binary is loaded and describes a plug-in", .run = checkOpening},
};

} // namespace

std::span<const Check> binaryChecks() {
    return kBinaryChecks;
}

} // namespace varno::validate
