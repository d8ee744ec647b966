#include "DemoGain_Oversampling.h"
#include "Measure/Measurements.h"
#include "Surround/Settings/NumberText.h"

#include <cmath>

namespace varno {
namespace {

// High enough that the DC blocker hardly turns its phase, low enough for many samples in a period.
constexpr double kTransferToneHz = 1000.0;
constexpr double kTransferS = 4.0;

// The routine's own output for a tone: its latency is known, that of a quality would turn the phase.
Samples outputOf(const EffectMaker& effect, double drive, Samples tone) {
    const auto instance = effect.make({{"Hot", textFromNumber(drive)}});
    float* channel = tone.data();
    instance->process(&channel, &channel, static_cast<std::int32_t>(tone.size()));
    return tone;
}

} // namespace

const Grid& transferDrives() {
    static const Grid drives = {0.0, 0.07, 0.2, 0.4, 0.7, 1.0};
    return drives;
}

Figure measureTransfer(const EffectMaker& effect, const Grid& drives) {
    Figure figure{.name = "transfer",
                  .explanation = "samples of the output over those of the input, in the last period of four "
                                 "seconds of a 1 kHz tone with a peak of 0 dBFS, by drive (Hot).",
                  .columns = {{"input", "INPUT", 4}}};
    const Samples tone = sine(kTransferToneHz, 0.0, kTransferS, effect.rateHz());
    const auto period = static_cast<std::size_t>(std::llround(effect.rateHz() / kTransferToneHz));
    constexpr std::size_t kLatency = kDemoGain_LatencyFrames;
    const std::size_t start = tone.size() - 1 - period - kLatency;
    for (std::size_t frame = start; frame <= start + period; ++frame) {
        figure.rows.push_back({double{tone[frame]}});
    }
    for (const double drive : drives) {
        figure.columns.push_back({"hot_" + textFromNumber(drive), "HOT " + textFromNumber(drive), 4});
        const Samples output = outputOf(effect, drive, tone);
        for (std::size_t row = 0; row < figure.rows.size(); ++row) {
            figure.rows[row].emplace_back(double{output[start + row + kLatency]});
        }
    }
    return figure;
}

} // namespace varno
