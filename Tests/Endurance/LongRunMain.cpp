// usage: varno_endurance_audio FACTOR SECONDS SEED
// So many seconds of sound as fast as it goes, at the quality FACTOR. Prints lines "progress SECONDS" and, in
// the end, what was found as one line of JSON.
#include "Surround/Settings/EffectHost.h"
#include "Tests/Endurance/LongRun.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <nlohmann/json.hpp>

namespace {

using namespace varno::test; // NOLINT(google-build-using-namespace): the program is a part of it

int playFor(std::int32_t factor, double seconds, std::uint32_t seed) {
    const auto monitor = std::make_shared<varno::ContractMonitor>();
    LongRunReport report;
    {
        varno::HostOptions options = varno::effectHostOptions();
        options.monitor = monitor;
        const auto module = varno::Module::linked(varno::linkedEntryPoints(), options);
        report = runForLong([&] { return std::make_unique<LongRunEffect>(module, factor); },
                            {.frames = static_cast<std::int64_t>(seconds * kLongRunRateHz),
                             .seed = seed,
                             .onProgress = [](std::int64_t frames) {
                                 std::printf("progress %.0f\n", static_cast<double>(frames) / kLongRunRateHz);
                                 std::fflush(stdout);
                             }});
    }
    const nlohmann::json found = {{"buffers", report.buffers},
                                  {"changes", report.changes},
                                  {"bad inputs", report.badInputs},
                                  {"bad buffers", report.badBuffers},
                                  {"bad meters", report.badMeters},
                                  {"position error", report.positionError},
                                  {"resident bytes", report.residentBytes},
                                  {"allocated bytes", report.allocatedBytes},
                                  {"difference after silence, dBFS", report.differenceAfterSilenceDB},
                                  {"difference after reset", report.differenceAfterReset},
                                  {"broken contracts", monitor->takeViolations().size()}};
    std::printf("%s\n", found.dump().c_str());
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** words) {
    if (count != 4) {
        std::fprintf(stderr, "usage: varno_endurance_audio FACTOR SECONDS SEED\n");
        return 2;
    }
    try {
        return playFor(std::atoi(words[1]), std::atof(words[2]),
                       static_cast<std::uint32_t>(std::strtoul(words[3], nullptr, 10)));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "varno_endurance_audio: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
