#include "Surround/SurroundInput.h"

#include <X11/keysym.h>

#include <algorithm>
#include <chrono>
#include <utility>

namespace varno {
namespace {

constexpr std::uint32_t kMarkColour = 0xFFD9A0;
constexpr double kMarkDistance = 3.0;
constexpr double kMarkWidth = 2.0;
constexpr int kPageSteps = 5;

bool hasControl(const TypedKey& key) {
    return (key.modifiers & XCB_MOD_MASK_CONTROL) != 0;
}

// What begins a number.
bool beginsValue(const std::string& text) {
    return text.size() == 1 &&
           std::string_view("0123456789+-.,").find(text.front()) != std::string_view::npos;
}

std::string withSentence(const std::string& help, const std::string& sentence) {
    return sentence.empty() ? help : help + ' ' + sentence;
}

int stepsOf(xcb_keysym_t symbol) {
    switch (symbol) {
    case XK_Up:
    case XK_Right:
        return 1;
    case XK_Down:
    case XK_Left:
        return -1;
    case XK_Page_Up:
        return kPageSteps;
    case XK_Page_Down:
        return -kPageSteps;
    default:
        return 0;
    }
}

} // namespace

SurroundInput::SurroundInput(const SurroundPlace& place, xcb_window_t holder, ViewContainer& container,
                             InputSubject subject, bool hasBar)
    : mPlace(place),
      mContainer(container),
      mSubject(std::move(subject)),
      mFocus(hasBar),
      mGestures({.reset =
                     [this](const std::string& id) {
                         later([this, id] { mSubject.controls.reset(*FaceLayout::controlOf(id)); });
                     },
                 .openMenu =
                     [this](const std::string& id) {
                         later([this, id] { mSubject.menus.openControl(*FaceLayout::controlOf(id)); });
                     },
                 .giveBack = [this] { mSubject.edited.takeBackGesture(); }}),
      mHover(place.connection, place.frame),
      mPointer(place.connection, place.frame),
      mText(place.connection),
      mKeys(place.connection, place.frame, [this](const xcb_key_press_event_t& event) { keyCame(event); }),
      mWheel(place.connection, holder, [this](const WheelStep& step) { wheelCame(step); }),
      mMark(place.connection, place.frame, kMarkColour),
      mTip(place.connection, place.frame, place.style) {
    mContainer.setMouseHandler([this](const MouseOffer& offer) { return offered(offer); });
    mContainer.setModifierSource([this] { return heldKeys(); });
    addLegends();
}

SurroundInput::~SurroundInput() {
    mContainer.setMouseHandler({});
    mContainer.setModifierSource({});
}

// The mouse.

AAX_Result SurroundInput::offered(const MouseOffer& offer) {
    std::optional<MouseGestures::Point> pointer;
    if (const auto now = mPointer.now()) {
        pointer = MouseGestures::Point{now->rootPlace.x, now->rootPlace.y};
    }
    if (offer.kind == MouseOffer::Kind::kDown) {
        mSubject.menus.dismiss();
        mFocus.clear();
        showMark();
    }
    return mGestures.offered(offer, pointer, std::chrono::steady_clock::now()) ? AAX_SUCCESS
                                                                               : AAX_ERROR_UNIMPLEMENTED;
}

// While Control is held, knobs turn finely from the first pixel, as with Shift.
std::uint32_t SurroundInput::heldKeys() {
    const auto pointer = mPointer.now();
    return pointer && (pointer->modifiers & XCB_MOD_MASK_CONTROL) != 0 ? std::uint32_t{AAX_eModifiers_Shift}
                                                                       : 0;
}

void SurroundInput::wheelCame(const WheelStep& step) {
    const int x = static_cast<int>(step.place.x / mPlace.scale);
    const int y = static_cast<int>(step.place.y / mPlace.scale);
    const auto* const control = FaceLayout::parameterControlAt(x, y);
    const bool isUp = step.direction == WheelStep::Direction::kUp;
    if (control == nullptr || (!isUp && step.direction != WheelStep::Direction::kDown)) {
        return;
    }
    const bool isFine = (step.modifiers & (XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT)) != 0;
    mSubject.controls.step(*control, isUp ? 1 : -1, isFine);
}

// The name of a switch is a part of it for who clicks.

void SurroundInput::addLegends() {
    for (const FocusItem& item : mFocus.items()) {
        if (item.control != nullptr && item.control->mKind == FaceLayout::Kind::kOnOffButton) {
            mLegends.push_back(std::make_unique<InputArea>(
                mPlace.connection, mPlace.frame, [this, control = item.control](const ButtonEvent& event) {
                    legendPressed(*control, event);
                }));
            mLegends.back()->show();
        }
    }
}

void SurroundInput::placeLegends() {
    auto legend = mLegends.begin();
    for (const FocusItem& item : mFocus.items()) {
        if (item.control != nullptr && item.control->mKind == FaceLayout::Kind::kOnOffButton) {
            (*legend++)->setArea(mPlace.ofFace(FaceLayout::legendOf(*item.control)));
        }
    }
}

void SurroundInput::legendPressed(const FaceLayout::Control& control, const ButtonEvent& event) {
    constexpr int kLeft = 1;
    constexpr int kRight = 3;
    if (event.isDown && event.button == kLeft) {
        mSubject.menus.dismiss();
        mSubject.controls.press(control);
    } else if (!event.isDown && event.button == kRight) {
        mSubject.menus.openControl(control);
    }
}

// Keys.

void SurroundInput::keyCame(const xcb_key_press_event_t& event) {
    if (eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) != XCB_KEY_PRESS) {
        if (mSubject.menus.isEntryOpen()) {
            mSubject.menus.key(event, 0);
        }
        return;
    }
    const TypedKey key = mText.press(event);
    if (mSubject.menus.isOpen()) {
        mSubject.menus.key(event, key.symbol);
        return;
    }
    if (key.symbol == XK_Escape) {
        escape();
        return;
    }
    if (shortcut(event, key) || move(key)) {
        return;
    }
    if (const auto* const typed = beginsValue(key.text) ? typedControl() : nullptr; typed != nullptr) {
        mSubject.menus.openValue(*typed, "");
        mSubject.menus.key(event, key.symbol);
        return;
    }
    const FocusItem* const present = mFocus.present();
    if (present != nullptr && present->control != nullptr) {
        control(*present->control, key);
    } else if (present != nullptr && (key.symbol == XK_space || key.symbol == XK_Return)) {
        mSubject.pressBar(present->button->button);
    }
}

bool SurroundInput::shortcut(const xcb_key_press_event_t& event, const TypedKey& key) {
    if (!hasControl(key)) {
        return false;
    }
    const bool hasShift = (key.modifiers & XCB_MOD_MASK_SHIFT) != 0;
    switch (key.symbol) {
    case XK_z:
    case XK_Z:
        mSubject.pressBar(hasShift ? BarLayout::Button::kRedo : BarLayout::Button::kUndo);
        return true;
    case XK_y:
        mSubject.pressBar(BarLayout::Button::kRedo);
        return true;
    case XK_s:
        mSubject.save();
        return true;
    case XK_plus:
    case XK_equal:
    case XK_KP_Add:
        later([this] { mSubject.changeSize(1); });
        return true;
    case XK_minus:
    case XK_KP_Subtract:
        later([this] { mSubject.changeSize(-1); });
        return true;
    case XK_c:
    case XK_v:
        mSubject.editor.key(event);
        return true;
    default:
        return false;
    }
}

bool SurroundInput::move(const TypedKey& key) {
    const bool isBack =
        key.symbol == XK_ISO_Left_Tab || (key.symbol == XK_Tab && (key.modifiers & XCB_MOD_MASK_SHIFT) != 0);
    if (key.symbol != XK_Tab && !isBack) {
        return false;
    }
    mFocus.move(!isBack);
    showMark();
    if (const auto* const control = mFocus.present()->control; control != nullptr) {
        mTips.announce(settingOf(control->mID), std::chrono::steady_clock::now());
    }
    return true;
}

void SurroundInput::control(const FaceLayout::Control& control, const TypedKey& key) {
    ControlActions& controls = mSubject.controls;
    if (const int steps = stepsOf(key.symbol); steps != 0) {
        controls.step(control, steps, (key.modifiers & (XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL)) != 0);
        return;
    }
    switch (key.symbol) {
    case XK_Home:
    case XK_End:
        controls.toEnd(control, key.symbol == XK_End);
        break;
    case XK_Delete:
    case XK_BackSpace:
        controls.reset(control);
        break;
    case XK_space:
        controls.press(control);
        break;
    case XK_Return:
    case XK_KP_Enter:
        if (FaceLayout::isOfParameter(control)) {
            mSubject.menus.openValue(control, controls.value(control));
        }
        break;
    default:
        break;
    }
}

// What a number that is typed is for.
const FaceLayout::Control* SurroundInput::typedControl() {
    const FocusItem* const item = mFocus.present() != nullptr ? mFocus.present() : pointedAt(mPointer.now());
    const bool isValue =
        item != nullptr && item->control != nullptr && FaceLayout::isOfParameter(*item->control);
    return isValue ? item->control : nullptr;
}

bool SurroundInput::escape() {
    if (mSubject.menus.isOpen()) {
        mSubject.menus.dismiss();
    } else if (mGestures.isDragging()) {
        mGestures.cancel();
    } else if (mFocus.present() != nullptr) {
        mFocus.clear();
        showMark();
    } else {
        return false;
    }
    return true;
}

// What is shown.

WindowArea SurroundInput::areaOf(const FocusItem& item) const {
    return item.button != nullptr ? mPlace.ofBar(item.button->place)
                                  : mPlace.ofFace(FaceLayout::boxOf(*item.control));
}

void SurroundInput::showMark() {
    const FocusItem* const present = mFocus.present();
    if (present == nullptr) {
        mMark.hide();
        return;
    }
    const WindowArea area = areaOf(*present);
    const int distance = mPlace.style.pixels(kMarkDistance);
    mMark.setFrame(
        {area.x - distance, area.y - distance, area.width + 2 * distance, area.height + 2 * distance},
        mPlace.style.pixels(kMarkWidth));
    mMark.show();
}

void SurroundInput::arrange() {
    mSubject.menus.dismiss();
    mTip.hide();
    mTip.setStyle(mPlace.style);
    placeLegends();
    showMark();
}

bool SurroundInput::choose(const std::function<bool(const FocusItem&)>& isIt) {
    const bool isThere = mFocus.choose(isIt);
    showMark();
    return isThere;
}

const FocusItem* SurroundInput::itemAt(WindowPlace place) const {
    const auto found = std::ranges::find_if(
        mFocus.items(), [&](const FocusItem& item) { return areaOf(item).contains(place); });
    return found == mFocus.items().end() ? nullptr : &*found;
}

const FocusItem* SurroundInput::pointedAt(const std::optional<PointerState>& pointer) const {
    return pointer && pointer->isInside && pointer->buttons == 0 ? itemAt(pointer->place) : nullptr;
}

void SurroundInput::showTip(ValueTips::TimePoint now) {
    std::optional<std::size_t> hovered;
    if (mHovered != nullptr && !mSubject.menus.isOpen()) {
        hovered = static_cast<std::size_t>(mHovered - mFocus.items().data());
    }
    const auto held = mGestures.dragged() ? settingOf(*mGestures.dragged()) : std::nullopt;
    auto shown = mTips.follow(hovered, held, mSubject.edited.values(), now);
    if (mSubject.menus.isOpen()) {
        shown = {}; // it would cover what is typed or chosen
    }
    if (shown.hovered) {
        const FocusItem& item = mFocus.items().at(*shown.hovered);
        const std::string value = item.control != nullptr ? mSubject.controls.value(*item.control)
                                                          : mSubject.barTip(item.button->button);
        mTip.show(mPlace.onScreen(areaOf(item)), value.empty() ? item.name() : item.name() + "  " + value,
                  withSentence(item.help(), mSubject.hostText(item)));
    } else if (shown.setting) {
        const auto* const changed = FaceLayout::controlOf(settingID(*shown.setting));
        mTip.show(mPlace.onScreen(mPlace.ofFace(FaceLayout::boxOf(*changed))),
                  settingName(*shown.setting) + "  " + mSubject.controls.value(*changed), "");
    } else {
        mTip.hide();
    }
    mTip.tick();
}

void SurroundInput::tick() {
    for (const auto& action : std::exchange(mLater, {})) {
        action();
    }
    if (const auto pointer = mHover.answer()) {
        mHovered = pointedAt(pointer);
        if (pointer->isInside && pointer->buttons != 0) {
            mSubject.menus.pressed(pointer->place);
        }
    }
    mKeys.takeBack();
    mHover.ask(); // sends both questions
    showTip(std::chrono::steady_clock::now());
}

} // namespace varno
