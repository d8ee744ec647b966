#include "Surround/MouseGestures.h"

#include "Surround/FaceLayout.h"

#include <cstdlib>

namespace varno {
namespace {

constexpr std::uint32_t kHeldKeys =
    AAX_eModifiers_Shift | AAX_eModifiers_Control | AAX_eModifiers_Option | AAX_eModifiers_Command;

bool isKnob(const std::string& id) {
    const auto* const control = FaceLayout::controlOf(id);
    return control != nullptr && control->mKind == FaceLayout::Kind::kKnob;
}

bool isOfParameter(const std::string& id) {
    const auto* const control = FaceLayout::controlOf(id);
    return control != nullptr && FaceLayout::isOfParameter(*control);
}

} // namespace

bool MouseGestures::offered(const MouseOffer& offer, const std::optional<Point>& pointer, TimePoint now) {
    if (offer.parameters.size() != 1) {
        return false;
    }
    switch (offer.kind) {
    case MouseOffer::Kind::kDown:
        return down(offer.parameters.front(), offer.modifiers, pointer, now);
    case MouseOffer::Kind::kDrag:
        return mTaken.has_value() || mIsCancelled;
    case MouseOffer::Kind::kUp:
        return up();
    }
    return false;
}

bool MouseGestures::down(const std::string& id, std::uint32_t modifiers, const std::optional<Point>& pointer,
                         TimePoint now) {
    if ((modifiers & AAX_eModifiers_SecondaryButton) != 0) {
        mLastPress.reset();
        mOpensMenu = isOfParameter(id);
        mTaken = mOpensMenu ? std::optional(id) : std::nullopt;
        return mOpensMenu;
    }
    const bool isPlain = (modifiers & kHeldKeys) == 0;
    if (isPlain && completesDoubleClick(id, pointer, now)) {
        mLastPress.reset();
        mTaken = id;
        return true;
    }
    mLastPress = isPlain && pointer ? std::optional(Press{id, *pointer, now}) : std::nullopt;
    mDragged = id;
    mIsCancelled = false;
    return false;
}

bool MouseGestures::completesDoubleClick(const std::string& id, const std::optional<Point>& pointer,
                                         TimePoint now) const {
    return mLastPress && pointer && mLastPress->id == id && isKnob(id) &&
           now - mLastPress->time <= kDoubleClickTime &&
           std::abs(pointer->x - mLastPress->place.x) <= kDoubleClickPixels &&
           std::abs(pointer->y - mLastPress->place.y) <= kDoubleClickPixels;
}

bool MouseGestures::up() {
    if (const auto taken = std::exchange(mTaken, std::nullopt)) {
        (std::exchange(mOpensMenu, false) ? mActions.openMenu : mActions.reset)(*taken);
        return true;
    }
    mDragged.reset();
    mIsCancelled = false;
    return false;
}

void MouseGestures::cancel() {
    if (isDragging()) {
        mIsCancelled = true;
        mLastPress.reset();
        mActions.giveBack();
    }
}

} // namespace varno
