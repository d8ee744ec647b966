#include "Surround/Settings/CompareSlots.h"

#include <utility>

namespace varno {

const SettingValues& CompareSlots::change(const SettingValues& now) {
    at(mPresent).values = now;
    mPresent = other();
    return at(mPresent).values;
}

void CompareSlots::copyToOther(const SettingValues& now) {
    SettingStep step{mPresent == CompareSlot::kA ? "Copy of A" : "Copy of B", {}};
    Slot& target = at(other());
    for (std::size_t i = 0; i < now.size(); ++i) {
        step.changes.push_back({i, target.values[i], now[i]});
    }
    target.values = now;
    target.preset = preset();
    target.history.add(std::move(step));
}

} // namespace varno
