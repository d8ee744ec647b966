#include "LV2/Description/PortTexts.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace varno {

namespace {

using enum ValueMeaning;

constexpr ParameterPortText kParameters[] = {
    {"Gain", Level, "Input gain, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"HP", Plain, "Keeps what lies below 120 Hz from driving the gain reduction."},
    {"Band", Plain, "Lets high frequencies drive the gain reduction harder."},
    {"Atk", Plain, "Attack of the gain reduction: fast at 0, slow at 1."},
    {"Rls", Plain, "Release of the gain reduction: fast at 0, slow at 1."},
    {"ASw", Plain,
     "Lets the editor match the output volume to the input level; without the editor it does nothing."},
    {"UK", Plain, "Changes the release of the gain reduction."},
    {"Volume", Level, "Output volume, from -20 dB at 0 over 0 dB at 0.5 to +20 dB at 1."},
    {"Hot", Plain, "Drive into the clipper and shaper."},
    {"Ratio", Curve, "Chooses one of eight gain reduction curves."},
    {"Mix", Plain, "Share of the dry signal: none at 0, nothing else at 1."},
    {"HSw", Plain, "Biases the clipper, for more harmonics."},
    {"LinkSw", Plain, "Both stereo channels share one gain reduction."},
};

struct MeterText {
    const char* symbol;
    const char* comment;
};

constexpr MeterText kMeters[] = {
    {"grl", "Gain reduction: 1 is a reduction by 32 dB. A peak stays for 40 ms at least."},
    {"grr", "Gain reduction, the same as that of the left channel. A peak stays for 40 ms at least."},
    {"inrms", "Averaged input level of the first channel, linear: 1 is full scale."},
    {"outrms", "Averaged output level of the first channel before the volume, linear: 1 is full scale."},
};

template<class Row, class Key>
const Row& requireRow(std::span<const Row> rows, std::string_view name, Key key) {
    const auto found = std::ranges::find(rows, name, key);
    if (found == rows.end()) {
        throw std::out_of_range("there is no text about the port of " + std::string(name));
    }
    return *found;
}

} // namespace

std::span<const ParameterPortText> parameterPortTexts() {
    return kParameters;
}

const ParameterPortText& parameterPortText(std::string_view parameterID) {
    return requireRow(parameterPortTexts(), parameterID, &ParameterPortText::parameterID);
}

const char* meterComment(std::string_view symbol) {
    return requireRow(std::span<const MeterText>(kMeters), symbol, &MeterText::symbol).comment;
}

} // namespace varno
