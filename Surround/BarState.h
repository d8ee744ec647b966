/// What the bar shows. Plain data.
#ifndef VARNO_SURROUND_BARSTATE_H
#define VARNO_SURROUND_BARSTATE_H

#include "Surround/BarLayout.h"
#include "Surround/Settings/QualityText.h"

#include <array>
#include <optional>
#include <string>

namespace varno {

/// The state of buttons and texts.
struct BarState {
    bool isBypassed = false;
    /// The module's own bypass, which hosts and command lines set as a parameter.
    bool isModuleBypassed = false;
    bool isB = false; ///< The second slot of settings is in use.
    bool canUndo = false;
    bool canRedo = false;
    std::string preset; ///< Name of the present one; empty for none.
    bool isPresetChanged = false;
    Quality quality;
    bool isCurveShown = false;
    std::string size; ///< "100 %".
    std::string message;

    bool operator==(const BarState&) const = default;
};

/// A meter of a level, in dB of full scale; nothing for silence.
struct LevelReading {
    std::optional<double> nowDB;
    std::optional<double> peakDB; ///< Held.

    bool operator==(const LevelReading&) const = default;
};

/// The state of the meters.
struct BarMeters {
    std::array<LevelReading, BarLayout::kLevelMeters> levels; ///< In the order of the bar.
    double reductionNowDB = 0.0;                              ///< 0 or negative.
    double reductionDB = 0.0; ///< 0 or negative, the largest of the last time.

    bool operator==(const BarMeters&) const = default;
};

} // namespace varno

#endif
