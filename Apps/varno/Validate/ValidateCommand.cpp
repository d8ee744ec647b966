#include "CommandLine/CommandTable.h"
#include "Commands.h"
#include "Settings/ModuleLoading.h"

namespace varno {
namespace {

constexpr std::string_view kValidateUsage[] = {"[OPTIONS] [BUNDLE]"};
constexpr std::string_view kValidateDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Checks a plug-in as its hosts will use it: a module NAME.aaxplugin, an LV2 bundle NAME.lv2 or a CLAP "
    "plug-in NAME.clap, this project's or anybody's. Each check runs in a process of its own, so that a "
    "crash or a check without end is a result like others.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "One line for each check: PASS; FAIL with what was seen and what was expected; NOTE, passed with "
    "something to know; SKIP with the reason why it was not made. A plug-in of which fewer than 60 % of the "
    "checks that apply could be made is not judged.",
    "The exit status is 0 where the plug-in passed, and 1 where a check failed or the plug-in is not "
    "judged."};
constexpr ArgumentEntry kValidateArguments[] = {
    {.name = "BUNDLE",
     .kind = ValueKind::kFile,
     .help = "The plug-in. Default: what VARNO_MODULE names, else the module that came with the program."}};
constexpr OptionEntry kValidateOptions[] = {
    {.name = "--level",
     .value = "LEVEL",
     .kind = ValueKind::kChoice,
     .choices = "quick full",
     .group = "Checks",
     .help =
         "quick takes seconds (the default), full takes up to hours and has more rounds and more checks."},
    {.name = "--plugin",
     .value = "ID",
     .kind = ValueKind::kText,
     .group = "Checks",
     .help = "Of a bundle with several plug-ins, check this one alone, by its identifier: the URI of an LV2 "
             "plug-in. Can be given several times."},
    {.name = "--seed",
     .value = "N",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 0, .most = 4294967295.0, .usual = 1},
     .group = "Checks",
     .help = "The start of all random choices."},
    {.name = "--list",
     .group = "Reports",
     .help = "Print all checks, and the formats that each applies to, instead of making them."},
    kJsonOption,
    kHelpOption,
};
constexpr ExampleEntry kValidateExamples[] = {
    {"varno validate", "The module that came with the program."},
    {"varno validate --level full ~/.lv2/amp.lv2", "Everything there is, of an LV2 bundle."},
    {"varno validate --json ~/.clap/amp.clap > amp.json", "For a script."},
    {"varno validate --plugin http://example.org/amp#stereo amps.lv2", "One of a bundle's plug-ins."},
    {"varno validate --list", "What is checked."},
};

} // namespace

CommandEntry validateCommand(RunCommand run) {
    return {.name = "validate",
            .summary = "Check a plug-in as its hosts will use it",
            .usage = kValidateUsage,
            .description = kValidateDescription,
            .arguments = kValidateArguments,
            .leastArguments = 0,
            .mostArguments = 1,
            .options = kValidateOptions,
            .examples = kValidateExamples,
            .run = run};
}

} // namespace varno
