#include "Play/MeterLine.h"

#include "DemoGain_MeterLaw.h"
#include "Session/LiveStatus.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <set>

namespace varno {
namespace {

constexpr int kDecimals = 1;
constexpr double kQuietestDB = -99.9; // wider numbers would move the line
constexpr std::size_t kLevelColumns = 5;
constexpr std::int32_t kNoKind = -1; // of a meter without a kind

std::string aligned(const std::string& text) {
    return std::string(kLevelColumns - std::min(kLevelColumns, text.size()), ' ') + text;
}

MeterLine::Level levelOf(const MeterDescription& meter, std::int32_t kind, double value) {
    switch (kind) {
    case AAX_eMeterKind_Input:
        return {"in", levelTextDB(value)};
    case AAX_eMeterKind_Output:
        return {"out", levelTextDB(value)};
    case AAX_eMeterKind_GainReduction:
        return {"reduction", decimalText(value / -DemoGain::kMeterPerDB, kDecimals)};
    default:
        return {meter.name, levelTextDB(value)};
    }
}

} // namespace

std::string levelTextDB(double linear) {
    const double levelDB = decibels(linear);
    return levelDB < kQuietestDB ? "-inf" : decimalText(levelDB, kDecimals);
}

std::vector<MeterLine::Level> meterLevels(const Instance& instance) {
    std::vector<MeterLine::Level> levels;
    std::set<std::int32_t> shown;
    const auto& meters = instance.effect().meters;
    const std::size_t taps = std::min(meters.size(), instance.meters().ids().size());
    for (std::size_t tap = 0; tap < taps; ++tap) {
        const auto kind = integerProperty(meters[tap].properties, AAX_eProperty_Meter_Kind).value_or(kNoKind);
        if (kind == kNoKind || shown.insert(kind).second) {
            levels.push_back(levelOf(meters[tap], kind, instance.meters().value(tap)));
        }
    }
    return levels;
}

std::string MeterLine::text(std::size_t columns) const {
    std::string line;
    for (const auto& level : levels) {
        line += level.label + ' ' + aligned(level.levelDB) + " dB  ";
    }
    line += isBypassed ? "bypassed  " : "";
    line += '[' + parameter + ']';
    if (overruns > 0) {
        line += "  " + overrunText(overruns);
    }
    return line.substr(0, columns);
}

} // namespace varno
