#include "Tests/Apps/varno/Validate/PlantedFaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

// Each check fails on a plug-in that has the fault it looks for, and every other check of its group passes
// there.

namespace varno::test {
namespace {

const PlantedFault kFaults[] = {
    {"exported.aaxplugin", {"binary-symbols"}, "binary"},
    {"search-folder.aaxplugin", {"binary-dependencies"}, "binary"},
    {"lazy.aaxplugin", {"binary-binding"}, "binary"},
    {"writable-relocations.aaxplugin", {"binary-hardening"}, "binary"},
    {"executable-stack.aaxplugin", {"binary-hardening"}, "binary"},
    {"text-relocation.aaxplugin", {"binary-hardening"}, "binary"},
    {"thread.aaxplugin", {"binary-reloading"}, "binary"},
    {"handler.aaxplugin", {"binary-reloading"}, "binary"},
    {"variable.aaxplugin", {"binary-reloading"}, "binary"},
    {"locale.aaxplugin", {"binary-reloading"}, "binary"},
    {"descriptor.aaxplugin", {"binary-reloading"}, "binary"},
    {"memory.aaxplugin", {"binary-reloading"}, "binary"},
    {"slow.aaxplugin", {"binary-cold-start"}, "binary"},
    {"display.aaxplugin", {"binary-no-display"}, "binary"},
    // What cannot be opened fails all that open it.
    {"no-name.aaxplugin",
     {"binary-cold-start", "binary-no-display", "binary-opens", "binary-reloading"},
     "binary"},
    {"no-manufacturer.aaxplugin", {"description-contracts"}, "description"},
    {"variant-twice.aaxplugin", {"description-unique"}, "description"},
    {"changing-name.aaxplugin", {"description-same-twice"}, "description"},
    {"parameter-twice.aaxplugin", {"description-unique"}, "description"},
    {"nameless.aaxplugin", {"description-complete"}, "description"},
    {"starts-elsewhere.aaxplugin", {"description-defaults"}, "description"},
    {"no-packet.aaxplugin", {"description-contracts"}, "description"},
    {"other-field.aaxplugin", {"description-contracts"}, "description"},
    {"throws-described.aaxplugin", {"description-throwing-host"}, "description"},
    {"describes-without-memory.aaxplugin", {"description-failing-memory"}, "description"},
    {"clicks.aaxplugin", {"audio-automation"}, "audio"},
    {"keeps-itself.aaxplugin",
     {"life-callbacks", "life-failing-memory", "life-instance", "life-orders", "life-raw-orders",
      "life-recycling", "life-throwing-host", "life-withheld"},
     "life"},
    {"instance-memory.aaxplugin", {"life-recycling"}, "life"},
    {"second-life-crash.aaxplugin", {"life-raw-orders"}, "life"},
    {"second-life-hang.aaxplugin", {"life-raw-orders"}, "life"},
    {"early-crash.aaxplugin", {"life-raw-orders"}, "life"},
    {"needs-transport.aaxplugin", {"life-callbacks", "life-throwing-host", "life-withheld"}, "life"},
    {"needs-two.aaxplugin", {"life-withheld"}, "life"},
    {"throws.aaxplugin", {"life-throwing-host"}, "life"},
    {"failed-allocation.aaxplugin", {"life-failing-memory"}, "life"},
    {"order-crash.aaxplugin", {"life-callbacks", "life-orders", "life-raw-orders"}, "life"},
    {"called-back.aaxplugin", {"life-callbacks"}, "life"},
    {"knows-everything.aaxplugin", {"parameters-unknown"}, "parameters"},
    {"needs-identifier.aaxplugin", {"parameters-unknown"}, "parameters"},
    {"takes-every-chunk.aaxplugin", {"state-foreign"}, "state"},
    {"refused-chunks.aaxplugin", {"state-foreign"}, "state"},
    {"depends-on-buffers.aaxplugin", {"audio-slicing"}, "audio"},
    {"needs-own-outputs.aaxplugin", {"audio-buffers"}, "audio"},
    {"ignores-bypass.aaxplugin", {"bypass-null"}, "bypass"},
};

class PlantedFaults : public testing::TestWithParam<PlantedFault> {
protected:
    // So that a check without a display finds nothing that the machine lacks.
    PlantedFaults() { ::setenv("DISPLAY", ":987", 0); }
};

TEST_P(PlantedFaults, areFoundByTheirChecksAlone) {
    std::string report;
    EXPECT_EQ(failedChecks(GetParam().plugin, GetParam().group, report), GetParam().found) << report;
}

INSTANTIATE_TEST_SUITE_P(All, PlantedFaults, testing::ValuesIn(kFaults));

TEST(PlantedFaultsCheck, ThePluginWithoutFaultPasses) {
    std::string report;
    EXPECT_EQ(failedChecks("sound.aaxplugin", {}, report), std::set<std::string>{}) << report;
}

// Those of sound, state and parameters are the same for every format: FaultyFormatsTest has the rest of them.
TEST(PlantedFaultsCheck, EveryCheckFindsOne) {
    for (const validate::Check& check : validate::allChecks()) {
        const auto group = check.group();
        if (group != "binary" && group != "description" && group != "life") {
            continue;
        }
        const auto finds = [&](const PlantedFault& fault) {
            return fault.found.contains(std::string(check.id));
        };
        EXPECT_TRUE(std::ranges::any_of(kFaults, finds)) << check.id;
    }
}

} // namespace
} // namespace varno::test
