/// What can be chosen with the keyboard.
#ifndef VARNO_SURROUND_FOCUSLIST_H
#define VARNO_SURROUND_FOCUSLIST_H

#include "Surround/BarLayout.h"
#include "Surround/FaceLayout.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// A button of the bar or a control of the face.
struct FocusItem {
    const BarLayout::ButtonRow* button = nullptr; ///< Null for a control.
    const FaceLayout::Control* control = nullptr; ///< Null for a button.

    std::string name() const;
    /// One sentence.
    std::string help() const;
};

/// All of them in reading order, and which one is chosen. A plain value. [any]
class FocusList {
public:
    /// Nothing is chosen. @param hasBar whether the bar's buttons are among them
    explicit FocusList(bool hasBar);

    const std::vector<FocusItem>& items() const { return mItems; }
    /// The chosen one; null for none.
    const FocusItem* present() const { return mPresent ? &mItems.at(*mPresent) : nullptr; }
    /// Chooses the next or the one before, around the ends; the first or the last where none is chosen.
    void move(bool isForward);
    /// Chooses the first for which `isIt` holds. @return whether there is one; else nothing changes
    bool choose(const std::function<bool(const FocusItem&)>& isIt);
    void clear() { mPresent.reset(); }

private:
    std::vector<FocusItem> mItems;
    std::optional<std::size_t> mPresent;
};

} // namespace varno

#endif
