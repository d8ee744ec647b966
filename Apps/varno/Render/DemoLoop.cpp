#include "Render/DemoLoop.h"

#include "Render/DemoVoices.h"

#include <algorithm>
#include <cmath>
#include <string_view>

// NOLINTBEGIN(readability-magic-numbers): the numbers are the score and the sound of the demo, each beside
// what it shapes
namespace varno {
namespace {

constexpr std::int64_t kStepFrames = kDemoLoopFrames / 64; // a sixteenth: 4 bars of 16
constexpr double kStepS = static_cast<double>(kStepFrames) / kDemoLoopRateHz;
constexpr int kStepsPerBar = 16;
constexpr int kBars = 4;
constexpr double kPeakLin = 0.70794578438413791; // -3 dBFS

using Mix = std::array<std::vector<double>, kDemoLoopChannels>;

// Adds a note; what exceeds the end continues at the start, so that the loop repeats without a gap.
void add(Mix& mix, const Note& note, std::int64_t start, double left, double right) {
    auto at = static_cast<std::size_t>(start % kDemoLoopFrames);
    for (const double sample : note) {
        mix[0][at] += left * sample;
        mix[1][at] += right * sample;
        at = at + 1 == mix[0].size() ? 0 : at + 1;
    }
}

std::int64_t stepStart(int bar, int step) {
    return (bar * kStepsPerBar + step) * kStepFrames;
}

// One bar as text, a sixteenth per character: '.' is a rest, other characters a hit.
template<typename Play>
void playPattern(std::string_view pattern, int bar, Play play) {
    for (int step = 0; step < kStepsPerBar; ++step) {
        if (const char hit = pattern[static_cast<std::size_t>(step)]; hit != '.') {
            play(stepStart(bar, step), hit);
        }
    }
}

void playKick(Mix& mix) {
    constexpr std::string_view kPatterns[kBars] = {
        "x.....x...x.....",
        "x.....x...x..x..",
        "x.....x...x.....",
        "x..x..x...x.x...",
    };
    const Note note = kickNote();
    for (int bar = 0; bar < kBars; ++bar) {
        playPattern(kPatterns[bar], bar, [&](std::int64_t start, char) { add(mix, note, start, 0.9, 0.9); });
    }
}

// 'X' is a full hit, 'g' a ghost note.
void playSnare(Mix& mix) {
    constexpr std::string_view kPatterns[kBars] = {
        "....X..g....X...",
        "....X..g.g..X..g",
        "....X..g....X...",
        "....X..g.g..X.Xg",
    };
    const Note body = snareBodyNote();
    const Note wires[] = {snareWiresNote(1), snareWiresNote(2)};
    for (int bar = 0; bar < kBars; ++bar) {
        playPattern(kPatterns[bar], bar, [&](std::int64_t start, char hit) {
            const double level = hit == 'X' ? 0.85 : 0.14;
            add(mix, body, start, 0.6 * level, 0.6 * level);
            add(mix, wires[0], start, level, 0.25 * level);
            add(mix, wires[1], start, 0.25 * level, level);
        });
    }
}

// 'x' is accented, 'o' open.
void playHats(Mix& mix) {
    constexpr std::string_view kPattern = "x.h.x.h.x.h.x.o.";
    constexpr std::string_view kBusyPattern = "x.hhx.h.xhh.x.o.";
    const Note closed = hatNote(0.022, 3);
    const Note open = hatNote(0.11, 4);
    for (int bar = 0; bar < kBars; ++bar) {
        playPattern(bar % 2 == 0 ? kPattern : kBusyPattern, bar, [&](std::int64_t start, char hit) {
            const double level = hit == 'h' ? 0.16 : 0.24;
            add(mix, hit == 'o' ? open : closed, start, 0.6 * level, level);
        });
    }
}

void playShaker(Mix& mix) {
    const Note note = shakerNote(5);
    for (int bar = 0; bar < kBars; ++bar) {
        playPattern("sSsSsSsSsSsSsSsS", bar, [&](std::int64_t start, char hit) {
            const double level = hit == 'S' ? 0.09 : 0.045;
            add(mix, note, start, level, 0.3 * level);
        });
    }
}

struct BassStep {
    int step;      // of the bar
    double steps;  // how long it sounds
    int pitch;     // index into the bar's pitches: root, fifth, octave, seventh
    double accent; // 0 to 1
};

void playBass(Mix& mix) {
    constexpr double kPitchesHz[kBars][4] = {
        {55.000, 82.407, 110.000, 97.999}, // A
        {55.000, 82.407, 110.000, 97.999}, // A
        {43.654, 65.406, 87.307, 77.782},  // F
        {48.999, 73.416, 97.999, 87.307},  // G
    };
    constexpr BassStep kLine[] = {
        {0, 2.5, 0, 0.6},  {3, 1.0, 0, 0.2},  {6, 1.6, 2, 0.9},  {8, 1.0, 0, 0.3},
        {10, 1.8, 0, 0.6}, {12, 1.0, 3, 0.4}, {14, 1.6, 1, 0.8},
    };
    for (int bar = 0; bar < kBars; ++bar) {
        for (const BassStep& note : kLine) {
            add(mix, bassNote(kPitchesHz[bar][note.pitch], note.steps * kStepS, note.accent),
                stepStart(bar, note.step), 0.42, 0.42);
        }
    }
}

// The first reflections of a small room, each on the opposite side.
void addRoom(Mix& mix) {
    struct Reflection {
        double delayS;
        double level;
    };
    constexpr Reflection kReflections[kDemoLoopChannels][3] = {
        {{0.0113, 0.16}, {0.0271, 0.10}, {0.0419, 0.06}},
        {{0.0137, 0.16}, {0.0233, 0.10}, {0.0457, 0.06}},
    };
    const Mix dry = mix;
    for (std::size_t c = 0; c < mix.size(); ++c) {
        for (const Reflection& reflection : kReflections[c]) {
            const auto delay = static_cast<std::size_t>(reflection.delayS * kDemoLoopRateHz);
            const std::vector<double>& from = dry[1 - c];
            for (std::size_t i = 0; i < from.size(); ++i) {
                mix[c][(i + delay) % from.size()] += reflection.level * from[i];
            }
        }
    }
}

double peakOf(const Mix& mix) {
    double peak = 0.0;
    for (const std::vector<double>& channel : mix) {
        for (const double sample : channel) {
            peak = std::max(peak, std::abs(sample));
        }
    }
    return peak;
}

} // namespace

StereoSamples makeDemoLoop() {
    Mix mix;
    for (std::vector<double>& channel : mix) {
        channel.resize(static_cast<std::size_t>(kDemoLoopFrames));
    }
    playSnare(mix);
    playHats(mix);
    playShaker(mix);
    addRoom(mix); // kick and bass stay dry and in the middle
    playKick(mix);
    playBass(mix);
    const double gain = kPeakLin / peakOf(mix);
    StereoSamples samples;
    for (std::size_t c = 0; c < samples.size(); ++c) {
        for (const double sample : mix[c]) {
            samples[c].push_back(static_cast<float>(gain * sample));
        }
    }
    return samples;
}

} // namespace varno
// NOLINTEND(readability-magic-numbers)
