#include "Commands.h"

#include "Edit/EditOptions.h"
#include "Session/LiveBackend.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"

namespace varno {
namespace {

constexpr std::string_view kEditUsage[] = {"[OPTIONS] [AUDIO]"};

constexpr std::string_view kEditDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Opens the effect's editor in a window of its own (X11, or Wayland through XWayland). The effect "
    "processes AUDIO in real time, in a loop: a mono file through the mono variant, a stereo file through "
    "the stereo one. Without AUDIO it processes silence. Its meters and its automatic volume follow. The bar "
    "changes the quality meanwhile; the next window begins with that of --quality again.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "The result is played through JACK or, where no JACK server answers, through PulseAudio or ALSA. JACK "
    "sets the sample rate, and AUDIO is converted to it. Where nothing answers, the effect runs without "
    "sound output. varno play processes live sound instead of a file.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Keys: Ctrl-Z and Ctrl-Y undo and redo, Tab walks through the controls, Ctrl with plus and minus changes "
    "the size. Ctrl-S saves the settings as a state, Ctrl-C copies them and Ctrl-V pastes them as a preset, "
    "Escape and Ctrl-Q close the window; Escape asks first where settings are not saved.",
    "Ctrl-S writes the file of --save-state, else that of --state, else varno-s.state in the working folder, "
    "or varno-s-2.state and so on where that exists already. Settings that are not saved when the window "
    "closes are printed on standard error, as options that bring them back.",
    "Settings are applied in this order, and the later wins: the defaults, --state, --preset, --set in the "
    "order given.",
};

constexpr ArgumentEntry kEditArguments[] = {
    {.name = "AUDIO",
     .kind = ValueKind::kFile,
     .help = "Audio file to loop: WAV, W64, RF64, AIFF, CAF, FLAC, Ogg and more; \"-\" is standard input."},
};

constexpr OptionEntry kEditOptions[] = {
    kSetOption,
    kPresetOption,
    kStateOption,
    kQualityOption,
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "The file that Ctrl-S writes."},
    kTruncatedOption,
    {.name = "--sound",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "auto jack rtaudio off",
     .group = "Sound",
     .help = "How the result is played: jack, rtaudio (PulseAudio or ALSA), auto for the first of them that "
             "answers (the default) or off."},
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kNumber,
     .numbers = kSampleRates,
     .group = "Sound",
     .help = "Sample rate without AUDIO."},
    {.name = "--channels",
     .value = "N",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 1, .most = kMostLiveChannels, .usual = kUsualChannels},
     .group = "Sound",
     .help = "Channels without AUDIO."},
    kScaleOption,
    kNoBarOption,
    {.name = "--screenshot",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Window",
     .help = "Show the window for a moment, write a picture of it (PNG) and exit."},
    {.name = "--after",
     .value = "SECONDS",
     .kind = ValueKind::kNumber,
     .numbers = {.least = 0, .most = 3600, .usual = kUsualPictureDelayS},
     .group = "Window",
     .help = "Make the picture so long after the start."},
    {.name = "--force",
     .shortName = "-f",
     .group = "Window",
     .help = "Replace the files of --screenshot and --save-state where they exist."},
    kModuleOption,
    kHelpOption,
};

constexpr ExampleEntry kEditExamples[] = {
    {"varno edit drums.wav", "Turn the knobs while the drums play."},
    {"varno edit --state bus.state drums.wav", "Go on with saved settings; Ctrl-S saves them again."},
    {"varno edit --scale 2 --set Hot=0.4 --screenshot editor.png",
     "A picture of the editor, twice as large."},
};

} // namespace

CommandEntry editCommand(RunCommand run) {
    return {.name = "edit",
            .summary = "Open the effect's editor, around a file in a loop",
            .usage = kEditUsage,
            .description = kEditDescription,
            .arguments = kEditArguments,
            .leastArguments = 0,
            .mostArguments = 1,
            .options = kEditOptions,
            .examples = kEditExamples,
            .run = run};
}

} // namespace varno
