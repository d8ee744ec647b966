#ifndef VARNO_APPS_VARNO_USAGE_EDITENTRY_H
#define VARNO_APPS_VARNO_USAGE_EDITENTRY_H

#include "CommandTable.h"
#include "CommonOptions.h"

namespace varno {

inline constexpr std::string_view kEditUsage[] = {"[OPTIONS] [AUDIO]"};

inline constexpr std::string_view kEditDescription[] = {
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Opens the effect's editor in a window of its own (X11, or Wayland through XWayland). The effect hears "
    "AUDIO in real time and again from its start: a mono file through the mono variant, a stereo file "
    "through the stereo one. Without AUDIO it hears silence. Its meters and its automatic volume follow.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "One hears the effect through JACK or, where no JACK server answers, through PulseAudio or ALSA; JACK's "
    "sample rate counts, and AUDIO is converted to it. Where nothing answers, the effect goes on unheard. "
    "varno play lets it hear what comes in instead of a file.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "Keys: Ctrl-S saves the settings as a state, Ctrl-C copies them and Ctrl-V pastes them as a preset, "
    "Escape and Ctrl-Q close the window.",
    "Ctrl-S writes the file of --save-state, else that of --state, else varno-s.state in the working folder, "
    "or varno-s-2.state and so on where that exists already. Settings that are not saved when the window "
    "closes are printed on standard error, as options that bring them back.",
    "Settings are applied in this order, and the later wins: the defaults, --state, --preset, --set in the "
    "order given.",
};

inline constexpr ArgumentEntry kEditArguments[] = {
    {.name = "AUDIO",
     .kind = ValueKind::kFile,
     .help = "Audio file to loop: WAV, W64, RF64, AIFF, CAF, FLAC, Ogg and more; \"-\" is standard input."},
};

inline constexpr OptionEntry kEditOptions[] = {
    kSet,
    kPreset,
    kState,
    {.name = "--save-state",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Settings",
     .help = "The file that Ctrl-S writes."},
    {.name = "--sound",
     .value = "KIND",
     .kind = ValueKind::kChoice,
     .choices = "auto jack rtaudio off",
     .group = "Sound",
     .help = "How AUDIO is heard: jack, rtaudio (PulseAudio or ALSA), auto for the first of them that "
             "answers (the default) or off."},
    {.name = "--rate",
     .value = "HZ",
     .kind = ValueKind::kText,
     .group = "Sound",
     .help = "Sample rate without AUDIO, 16000 to 384000. Default: 48000."},
    {.name = "--channels",
     .value = "N",
     .kind = ValueKind::kText,
     .group = "Sound",
     .help = "Channels without AUDIO, 1 or 2. Default: 2."},
    kScale,
    {.name = "--screenshot",
     .value = "FILE",
     .kind = ValueKind::kFile,
     .group = "Window",
     .help = "Show the window for a moment, write a picture of it (PNG) and exit."},
    {.name = "--after",
     .value = "SECONDS",
     .kind = ValueKind::kText,
     .group = "Window",
     .help = "Make the picture so long after the start. Default: 0.5."},
    {.name = "--force",
     .shortName = "-f",
     .group = "Window",
     .help = "Replace the files of --screenshot and --save-state where they exist."},
    kModule,
    kHelp,
};

inline constexpr ExampleEntry kEditExamples[] = {
    {"varno edit drums.wav", "Turn the knobs, and hear and see what they do to the drums."},
    {"varno edit --state bus.state drums.wav", "Go on with saved settings; Ctrl-S saves them again."},
    {"varno edit --scale 2 --set Hot=0.4 --screenshot editor.png",
     "A picture of the editor, twice as large."},
};

inline constexpr CommandEntry kEditEntry = {.name = "edit",
                                            .summary = "Open the effect's editor, around a file in a loop",
                                            .usage = kEditUsage,
                                            .description = kEditDescription,
                                            .arguments = kEditArguments,
                                            .leastArguments = 0,
                                            .mostArguments = 1,
                                            .options = kEditOptions,
                                            .examples = kEditExamples};

} // namespace varno

#endif
