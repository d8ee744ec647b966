#include "Commands.h"

#include "Session/LiveBackend.h"
#include "Session/WindowOptions.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"

namespace varno {
namespace {

constexpr std::string_view kPlayUsage[] = {"[OPTIONS]"};

constexpr std::string_view kPlayDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Plays live: what comes in goes through the effect and out again, until the user ends it. It is a "
    "client of a JACK server (jackd, or PipeWire by way of pw-jack) or, where none answers, of PulseAudio or "
    "ALSA by way of RtAudio.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Under JACK the ports are named in_l, in_r, out_l and out_r, with --mono in and out, and report "
    "the latency, one frame at quality 1x. The server may change its period and its sample rate meanwhile. "
    "Blocks that "
    "came too late are counted and reported.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Where there is a display the effect's editor opens, and closing it ends the program; Ctrl-S saves the "
    "settings as a state, and the bar changes the quality meanwhile. Otherwise single keys work in the "
    "terminal, below a line with the meters: up and "
    "down choose a parameter, left and right change it, b bypasses, s saves, q ends, ? lists all keys. Where "
    "standard input is no terminal, it plays until it receives a signal.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "SIGINT (Ctrl-C), SIGTERM and SIGHUP end it with exit status 0. It ends with 1 where no sound system "
    "answers, and when the sound system ends; a window with the bar then shows that and stays until it is "
    "closed, so that the settings can be saved.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "With --statistics, what the blocks took is printed in the end. A block is late that is not done when "
    "the next one begins. It counts as \"ours\" where the effect computed for longer than the block lasts, "
    "or "
    "waited; as \"interrupted\" where other work had the processor meanwhile; and as \"woken late\" where it "
    "took no longer than the block lasts, but began late: the system was late, or programs before it in the "
    "graph. Blocks that were never called for are \"lost\". \"waking\" is the time from a block's begin to "
    "the call. RtAudio does not state when a block began: an overrun that it reports counts as woken late "
    "unless the block before was late by itself, and there is no \"waking\". JACK's own count of overruns is "
    "of all its clients. The longest blocks are listed with their page faults and waits; --json lists a "
    "thousand, with the processor and the time when each began.",
    "Settings are applied in this order, and the later wins: the defaults, --state, --preset, --set in the "
    "order given. Those that are not saved at the end are printed on standard error, as options that bring "
    "them back.",
};

constexpr OptionEntry kPlayOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    kQualityOption,
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "The file that Ctrl-S or s writes. Default: that of --state, else varno-s.state, or "
             "varno-s-2.state and so on where that exists."},
    {.name = "--force",
     .shortName = "-f",
     .group = "Settings",
     .help = "Replace the file of --save-state where it exists."},
    {.name = "--backend",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "auto jack rtaudio",
     .group = "Sound",
     .help = "The sound system: jack, rtaudio (PulseAudio or ALSA), or auto for the first of them that "
             "answers (the default)."},
    {.name = "--mono",
     .excludes = "--stereo",
     .group = "Sound",
     .help = "One channel, through the mono variant."},
    {.name = "--stereo", .group = "Sound", .help = "Two channels, through the stereo variant (the default)."},
    {.name = "--name",
     .value = "NAME",
     .kind = ValueKind::kText,
     .group = "Sound",
     .help = "The name by which other programs see it. Default: varno."},
    {.name = "--connect",
     .excludes = "--no-connect",
     .group = "Sound",
     .help = "Connect the ports to the system's capture and playback (the default)."},
    {.name = "--no-connect",
     .group = "Sound",
     .help = "Leave the JACK ports unconnected, for a session manager or other programs to connect."},
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = kSampleRates,
     .group = "Sound",
     .help = "Sample rate for rtaudio; JACK has its own."},
    {.name = "--period",
     .value = "FRAMES",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 16, .most = 8192, .usual = kUsualPeriodFrames},
     .group = "Sound",
     .help = "Frames at a time for rtaudio; JACK has its own."},
    {.name = "--statistics",
     .group = "Reports",
     .help = "Measure each block, and print in the end a histogram of the times, their median, the 99.9th "
             "percentile and the worst, and what made blocks late."},
    {.name = "--json", .group = "Reports", .help = "Print the statistics as JSON, for scripts."},
    {.name = "--edit",
     .excludes = "--no-edit",
     .group = "Window",
     .help = "Open the editor (the default where DISPLAY is set)."},
    {.name = "--no-edit", .excludes = "--scale", .group = "Window", .help = "Stay in the terminal."},
    kScaleOption,
    kNoBarOption,
    {.name = "--quiet",
     .shortName = "-q",
     .group = "General",
     .help = "Print only errors and the settings that are not saved."},
    kModuleOption,
    kHelpOption,
};

constexpr ExampleEntry kPlayExamples[] = {
    {"varno play", "Between the system's inputs and outputs, with the editor."},
    {"pw-jack varno play --mono --set Hot=0.3", "One channel, on a desktop with PipeWire."},
    {"varno play --no-connect --no-edit --name drive --state bus.state",
     "For scripts: ports drive:in_l and so on, connected by jack_connect."},
    {"varno play --no-edit --json > statistics.json", "How it kept up, for a script, after Ctrl-C."},
};

} // namespace

CommandEntry playCommand(RunCommand run) {
    return {.name = "play",
            .summary = "Play live through the effect",
            .usage = kPlayUsage,
            .description = kPlayDescription,
            .arguments = {},
            .leastArguments = 0,
            .mostArguments = 0,
            .options = kPlayOptions,
            .examples = kPlayExamples,
            .run = run};
}

} // namespace varno
