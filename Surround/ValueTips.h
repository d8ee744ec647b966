/// Which control's value is shown beside it. A plain value.
#ifndef VARNO_SURROUND_VALUETIPS_H
#define VARNO_SURROUND_VALUETIPS_H

#include "Surround/Settings/SettingValues.h"

#include <chrono>
#include <cstddef>
#include <optional>

namespace varno {

/// Follows what is pointed at, held and changed. Things are numbers of the caller's. [any]
class ValueTips {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// How long the pointer rests on something before its tip appears.
    static constexpr std::chrono::milliseconds kHoverTime{500};
    /// How long the value of a setting that has changed is shown.
    static constexpr std::chrono::milliseconds kChangeTime{1000};

    /// What is to be shown.
    struct Shown {
        std::optional<std::size_t> hovered; ///< What the pointer rests on.
        std::optional<std::size_t> setting; ///< Else a setting that is held or has changed, without help.
    };

    /// @param hovered what is under the pointer; nothing for nothing
    /// @param held the setting that a gesture holds
    Shown follow(std::optional<std::size_t> hovered, std::optional<std::size_t> held,
                 const SettingValues& values, TimePoint now);

    /// Shows the value of a setting as if it had changed; nothing: shows none.
    void announce(std::optional<std::size_t> setting, TimePoint now) {
        mChanged = setting;
        mChangedAt = now;
    }

private:
    std::optional<std::size_t> mHovered;
    TimePoint mHoveredSince;
    std::optional<SettingValues> mValues;
    std::optional<std::size_t> mChanged;
    TimePoint mChangedAt;
};

} // namespace varno

#endif
