#include "Validate/ValidateRun.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "Settings/InstalledFiles.h"
#include "Settings/ModuleLoading.h"
#include "Validate/CheckProcess.h"
#include "Validate/Report.h"

namespace varno::validate {
namespace {

CheckSetup setupOf(const CommandLine& line) {
    CheckSetup setup;
    setup.path = line.arguments().empty()
                     ? moduleLocation({}, environmentVariable(kModuleVariable), programFolder())
                     : std::filesystem::path(line.arguments().front());
    const auto format = formatOf(setup.path);
    if (!format) {
        throw UsageError(setup.path.string() +
                         ": expected a plug-in named NAME.aaxplugin, NAME.lv2 or NAME.clap");
    }
    if (!std::filesystem::exists(setup.path)) {
        throw WorkError(setup.path.string() + ": does not exist");
    }
    setup.format = *format;
    setup.level = line.value("--level") == "full" ? Level::kFull : Level::kQuick;
    setup.seed = line.number<std::uint32_t>("--seed").value_or(1);
    setup.selection = PluginSelection(line.values("--plugin"));
    return setup;
}

// A wrong name is the caller's mistake, no finding. What else goes wrong when it is opened, checks report.
void requireSelected(const CheckSetup& setup) {
    constexpr Check kOpening = {.id = "selection", .title = "", .run = [](Context& context) {
                                    try {
                                        (void)context.open();
                                    } catch (const UnknownPlugin& unknown) {
                                        context.skip(unknown.what());
                                    }
                                }};
    if (const CheckResult result = runInChild(kOpening, setup); result.verdict == Verdict::kSkip) {
        throw UsageError(setup.path.string() + ": " + result.findings.front().seen);
    }
}

} // namespace

int runValidate(const CommandLine& line) {
    const bool isJson = line.has("--json");
    if (line.has("--list")) {
        printOut(isJson ? checkListJson() : checkListText());
        return kExitSuccess;
    }
    const CheckSetup setup = setupOf(line);
    if (!setup.selection.ids().empty()) {
        requireSelected(setup);
    }
    std::vector<CheckedCheck> checked;
    for (const Check& check : allChecks()) {
        if (applies(check, setup.format, setup.level)) {
            checked.push_back({&check, runInChild(check, setup)});
            if (!isJson) {
                printOut(checkLines(checked.back()));
            }
        }
    }
    const Counts counts = countVerdicts(checked);
    printOut(isJson ? reportJson(setup, checked) : countLine(counts));
    return judge(counts) == Judgement::kPassed ? kExitSuccess : kExitWorkFailed;
}

} // namespace varno::validate
