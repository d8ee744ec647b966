#include "CommandTable.h"

#include "CommonOptions.h"
#include "EditEntry.h"
#include "PlayEntry.h"

#include <algorithm>

namespace varno {
namespace {

// render

constexpr std::string_view kRenderUsage[] = {
    "[OPTIONS] INPUT OUTPUT",
    "[OPTIONS] --out-dir DIR INPUT...",
    "[OPTIONS]",
};

constexpr std::string_view kRenderDescription[] = {
    "Renders INPUT through the effect into OUTPUT: a mono file through the mono variant, a stereo file "
    "through the stereo one, at sample rates from 16 to 384 kHz. OUTPUT has exactly the input's frames (and "
    "those of --tail), its sample rate, and its sample format unless --format or the extension of OUTPUT "
    "says otherwise; tags, cue points and broadcast data are carried over. The processed signal comes one "
    "sample later than the dry one; that is not compensated.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "With --out-dir every INPUT is rendered to a file of the same name in DIR, several side by side with "
    "--jobs. One that fails does not stop the others.",
    "Without INPUT and OUTPUT a demo is made: varno-demo-dry.wav, a loop of drums and bass (8 s, stereo, "
    "48 kHz), and varno-demo.wav, the same through the effect at a setting that one hears. Both replace "
    "files of these names.",
    "Settings are applied in this order, and the later wins: the defaults (for the demo, its own setting), "
    "--state, --preset, --set in the order given, and --automate at its times.",
    "The same input and settings give the same bytes on every run and with every --block. A render that "
    "fails or is interrupted leaves no output, and the input is never touched.",
};

constexpr ArgumentEntry kRenderArguments[] = {
    {.name = "INPUT",
     .kind = ValueKind::kFile,
     .help = "Audio file: WAV, W64, RF64, AIFF, CAF, FLAC, Ogg and more; \"-\" is standard input."},
    {.name = "OUTPUT",
     .kind = ValueKind::kFile,
     .help = "File to write; its extension tells the container. \"-\" is standard output, a WAV file; the "
             "summary then goes to standard error."},
};

constexpr OptionEntry kRenderOptions[] = {
    kSet,
    kPreset,
    kState,
    {.name = "--automate",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Move parameters during the render, each at the exact sample: CSV lines "
             "time_s,parameter,value with values as --set takes them."},
    {.name = "--save-preset",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Write the settings that the render starts with as a preset."},
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "Write the settings that the render starts with as a state."},
    {.name = "--out-dir",
     .value = "DIR",
     .kind = ValueKind::kDirectory,
     .group = "Output",
     .help = "Render every INPUT to a file of the same name in this folder."},
    {.name = "--format",
     .value = "FORMAT",
     .kind = ValueKind::kChoice,
     .choices = "pcm16 pcm24 pcm32 float double",
     .group = "Output",
     .help = "Sample format: pcm16, pcm24, pcm32, float or double. Default: the input's."},
    {.name = "--dither",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "tpdf none",
     .group = "Output",
     .help = "What to add where the output has fewer bits than the input: tpdf (the default) or none."},
    {.name = "--tail",
     .value = "SECONDS",
     .kind = ValueKind::kText,
     .group = "Output",
     .help = "Go on for this long after the end of the input, with silence going in."},
    {.name = "--force", .shortName = "-f", .group = "Output", .help = "Replace outputs that exist."},
    {.name = "--dry-run",
     .shortName = "-n",
     .group = "Output",
     .help = "Check everything and tell what would be written, but render and write nothing."},
    {.name = "--meters",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Reports",
     .help = "Write the four meters as CSV, one line per block: its start in seconds and the most that each "
             "meter showed in it."},
    {.name = "--json",
     .group = "Reports",
     .help = "Print the summary as JSON, one object per input, each on a line."},
    {.name = "--quiet",
     .shortName = "-q",
     .group = "Reports",
     .help = "Print errors only: no progress, no summary, no warnings."},
    {.name = "--block",
     .value = "FRAMES",
     .kind = ValueKind::kText,
     .group = "Processing",
     .help = "Most frames that the effect is given at a time, 1 to 16384. Default: 512."},
    {.name = "--jobs",
     .shortName = "-j",
     .value = "N",
     .kind = ValueKind::kText,
     .group = "Processing",
     .help = "Inputs rendered at the same time, 1 to 256. Default: 1."},
    kModule,
    kHelp,
};

constexpr ExampleEntry kRenderExamples[] = {
    {"varno render", "Hear what it does: varno-demo-dry.wav and varno-demo.wav."},
    {"varno render --set Hot=0.4 --set Ratio=1 drums.wav drums-hot.wav",
     "More drive and the steepest curve."},
    {"varno render --preset drum-bus --out-dir wet --jobs 4 stems/*.wav",
     "A folder of stems, four at a time."},
    {"flac -dc song.flac | varno render --format pcm24 - - | flac - -o wet.flac", "In a pipe."},
};

// describe

constexpr std::string_view kDescribeUsage[] = {"[OPTIONS]"};
constexpr std::string_view kDescribeDescription[] = {
    "Prints what the module tells a host about itself: names, identifiers, category, variants with every "
    "field of their processing context, properties, meters, procedures and resources."};
constexpr OptionEntry kDescribeOptions[] = {kJson, kModule, kHelp};
constexpr ExampleEntry kDescribeExamples[] = {
    {"varno describe", "Everything, to be read."},
    {"varno describe --json | jq '.effects[].id'", "One thing, for a script."},
};

// params

constexpr std::string_view kParamsUsage[] = {"[OPTIONS]", "[OPTIONS] ID"};
constexpr std::string_view kParamsDescription[] = {
    "Lists the parameters: index, identifier, name, type, number of steps, default and present value. With "
    "an ID it shows that one parameter and the text of each of its steps. The present value is the default "
    "unless a setting is given."};
constexpr ArgumentEntry kParamsArguments[] = {
    {.name = "ID", .kind = ValueKind::kParameter, .help = "Identifier of a parameter, for instance Hot."}};
constexpr OptionEntry kParamsOptions[] = {
    kSet,
    kPreset,
    kState,
    kJson,
    {.name = "--ids", .group = "Reports", .help = "Print the identifiers alone, one per line."},
    kModule,
    kHelp,
};
constexpr ExampleEntry kParamsExamples[] = {
    {"varno params Ratio", "The eight curves and the values that choose them."},
    {"varno params --preset bus.txt", "What a preset holds."},
};

// presets

constexpr std::string_view kPresetsUsage[] = {"[OPTIONS]", "[OPTIONS] NAME|FILE"};
constexpr std::string_view kPresetsDescription[] = {
    "Lists the presets that come with the effect, and what each is for. With a NAME or a FILE it prints that "
    "preset, which is a preset again when it goes to a file, and its values as the parameters show them."};
constexpr ArgumentEntry kPresetsArguments[] = {
    {.name = "NAME|FILE",
     .kind = ValueKind::kPreset,
     .help =
         "A factory preset by its name, in capitals or not, or a preset's file. What has a dot or a slash "
         "is a file."}};
constexpr OptionEntry kPresetsOptions[] = {
    kJson,
    {.name = "--names", .group = "Reports", .help = "Print the names alone, one per line."},
    kModule,
    kHelp,
};
constexpr ExampleEntry kPresetsExamples[] = {
    {"varno presets drum-bus", "What a preset holds."},
    {"varno render --preset drum-bus drums.wav drums-bus.wav", "Apply one."},
    {"varno presets drum-bus > my-drums.txt", "A copy to be changed, for --preset my-drums.txt."},
};

// completion

constexpr std::string_view kCompletionUsage[] = {"SHELL"};
constexpr std::string_view kCompletionDescription[] = {
    "Prints a script that completes commands, options, values, files and parameters in a shell."};
constexpr ArgumentEntry kCompletionArguments[] = {
    {.name = "SHELL", .kind = ValueKind::kChoice, .choices = "bash", .help = "The shell: bash."}};
constexpr OptionEntry kHelpOnly[] = {kHelp};
constexpr ExampleEntry kCompletionExamples[] = {
    {"source <(varno completion bash)", "For the running shell."},
    {"varno completion bash > ~/.local/share/bash-completion/completions/varno", "For every shell to come."},
};

// man

constexpr std::string_view kManUsage[] = {""};
constexpr std::string_view kManDescription[] = {"Prints the manual page in roff."};
constexpr ExampleEntry kManExamples[] = {{"varno man | man -l -", "Read it."}};

constexpr CommandEntry kCommands[] = {
    {.name = "render",
     .summary = "Render audio files through the effect",
     .usage = kRenderUsage,
     .description = kRenderDescription,
     .arguments = kRenderArguments,
     .leastArguments = 0,
     .mostArguments = kAnyNumber,
     .options = kRenderOptions,
     .examples = kRenderExamples},
    kEditEntry,
    kPlayEntry,
    {.name = "describe",
     .summary = "Print what the module tells a host",
     .usage = kDescribeUsage,
     .description = kDescribeDescription,
     .arguments = {},
     .leastArguments = 0,
     .mostArguments = 0,
     .options = kDescribeOptions,
     .examples = kDescribeExamples},
    {.name = "params",
     .summary = "List the parameters, or show one with its steps",
     .usage = kParamsUsage,
     .description = kParamsDescription,
     .arguments = kParamsArguments,
     .leastArguments = 0,
     .mostArguments = 1,
     .options = kParamsOptions,
     .examples = kParamsExamples},
    {.name = "presets",
     .summary = "List the factory presets, or show one",
     .usage = kPresetsUsage,
     .description = kPresetsDescription,
     .arguments = kPresetsArguments,
     .leastArguments = 0,
     .mostArguments = 1,
     .options = kPresetsOptions,
     .examples = kPresetsExamples},
    {.name = "completion",
     .summary = "Print the completion script of a shell",
     .usage = kCompletionUsage,
     .description = kCompletionDescription,
     .arguments = kCompletionArguments,
     .leastArguments = 1,
     .mostArguments = 1,
     .options = kHelpOnly,
     .examples = kCompletionExamples},
    {.name = "man",
     .summary = "Print the manual page",
     .usage = kManUsage,
     .description = kManDescription,
     .arguments = {},
     .leastArguments = 0,
     .mostArguments = 0,
     .options = kHelpOnly,
     .examples = kManExamples},
};

constexpr OptionEntry kProgramOptions[] = {
    kHelp,
    {.name = "--version", .group = "General", .help = "Print the version and exit."},
};

constexpr std::string_view kProgramDescription[] = {
    "Varno-S is a saturation and overdrive effect with a dynamics section. This program loads it as a host "
    "does, renders audio files through it, plays live through it and opens its editor."};

constexpr NoteEntry kExitStatusNotes[] = {
    {"0", "Everything was done."},
    {"1", "The work failed: a file, its content, a device. Standard error says why, in one line."},
    {"2", "Wrong usage: an option, a parameter, a value."},
    {"130, 143",
     "Ended by SIGINT or SIGTERM (as a shell reports it), with unfinished outputs removed. (varno play, "
     "which has no other end, ends with 0 then.)"},
};

constexpr NoteEntry kEnvironmentNotes[] = {
    {kModuleVariable, "The bundle to use where --module is not given."},
    {"DISPLAY", "The X server on which the editor's window opens."},
    {"JACK_DEFAULT_SERVER", "The name of the JACK server."},
    {"GDK_SCALE", "How much the editor is enlarged, in the place of the desktop's own scale."}};

} // namespace

std::span<const CommandEntry> commands() {
    return kCommands;
}

std::span<const OptionEntry> programOptions() {
    return kProgramOptions;
}

std::span<const std::string_view> programDescription() {
    return kProgramDescription;
}

std::span<const NoteEntry> exitStatusNotes() {
    return kExitStatusNotes;
}

std::span<const NoteEntry> environmentNotes() {
    return kEnvironmentNotes;
}

const CommandEntry* findCommand(std::string_view name) {
    const auto found = std::ranges::find(kCommands, name, &CommandEntry::name);
    return found == std::end(kCommands) ? nullptr : found;
}

} // namespace varno
