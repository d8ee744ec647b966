#include "Surround/ValueTips.h"

namespace varno {
namespace {

// The setting that differs; nothing where several do, as after a preset.
std::optional<std::size_t> onlyDifference(const SettingValues& before, const SettingValues& now) {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (before[i] != now[i]) {
            if (found) {
                return std::nullopt;
            }
            found = i;
        }
    }
    return found;
}

} // namespace

ValueTips::Shown ValueTips::follow(std::optional<std::size_t> hovered, std::optional<std::size_t> held,
                                   const SettingValues& values, TimePoint now) {
    if (hovered != mHovered) {
        mHovered = hovered;
        mHoveredSince = now;
    }
    if (mValues && *mValues != values) {
        mChanged = onlyDifference(*mValues, values);
        mChangedAt = now;
    }
    mValues = values;
    if (held) {
        return {.hovered = {}, .setting = held};
    }
    if (mHovered && now - mHoveredSince >= kHoverTime) {
        return {.hovered = mHovered, .setting = {}};
    }
    const bool isRecent = mChanged && now - mChangedAt < kChangeTime;
    return {.hovered = {}, .setting = isRecent ? mChanged : std::nullopt};
}

} // namespace varno
