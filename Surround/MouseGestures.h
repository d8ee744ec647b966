/// What the surround does with the mouse over the editor's controls.
#ifndef VARNO_SURROUND_MOUSEGESTURES_H
#define VARNO_SURROUND_MOUSEGESTURES_H

#include "Host/ViewContainer.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace varno {

/// What follows from gestures. A control is named by its parameter. Called within a mouse offer of the
/// editor.
struct MouseGestureActions {
    std::function<void(const std::string& id)> reset;    ///< After a double click.
    std::function<void(const std::string& id)> openMenu; ///< After a right click was completed.
    /// A drag was cancelled: the values from before it are to be restored.
    std::function<void()> giveBack;
};

/// Answers the mouse offers of the editor: takes right clicks and the second press of a double click on a
/// knob, and the drags of a gesture that was cancelled. Everything else is the editor's. [main]
class MouseGestures {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// Between two presses of a double click at most.
    static constexpr std::chrono::milliseconds kDoubleClickTime{400};
    static constexpr int kDoubleClickPixels = 5;

    /// A point of the screen.
    struct Point {
        int x = 0;
        int y = 0;
    };

    explicit MouseGestures(MouseGestureActions actions)
        : mActions(std::move(actions)) {}

    /// @param pointer where the pointer is; nothing where it is not known
    /// @return whether the surround takes the action, and the editor does nothing
    bool offered(const MouseOffer& offer, const std::optional<Point>& pointer, TimePoint now);

    /// Whether a control is held by the left button and can be given back.
    bool isDragging() const { return mDragged.has_value() && !mIsCancelled; }
    /// The control that the left button holds; nothing where it holds none.
    const std::optional<std::string>& dragged() const { return mDragged; }
    /// Ends the drag under way and gives the old value back: the editor receives nothing of it any more but
    /// the release of the button. Does nothing where there is no drag.
    void cancel();

private:
    struct Press {
        std::string id;
        Point place;
        TimePoint time;
    };

    bool down(const std::string& id, std::uint32_t modifiers, const std::optional<Point>& pointer,
              TimePoint now);
    bool up();
    bool completesDoubleClick(const std::string& id, const std::optional<Point>& pointer,
                              TimePoint now) const;

    MouseGestureActions mActions;
    std::optional<Press> mLastPress;
    std::optional<std::string> mDragged; ///< Held by the left button, by the editor.
    bool mIsCancelled = false;
    std::optional<std::string> mTaken; ///< The press that the surround took; its release is taken too.
    bool mOpensMenu = false;
};

} // namespace varno

#endif
