#ifndef VARNO_WINDOW_POINTERQUERY_H
#define VARNO_WINDOW_POINTERQUERY_H

#include "Window/Geometry.h"
#include "Window/XConnection.h"

#include <cstdint>
#include <optional>

namespace varno {

/// Where the pointer is, and what is held down.
struct PointerState {
    WindowPlace place;     ///< In the window that is asked about, also outside of it.
    WindowPlace rootPlace; ///< On the screen.
    /// Whether the window, or one in it, is the one under the pointer: not where another is above.
    bool isInside = false;
    std::uint16_t modifiers = 0; ///< See heldModifiers.
    /// Button n as bit n - 1.
    unsigned buttons = 0;

    bool operator==(const PointerState&) const = default;
};

/// Asks the server for the pointer, relative to a window of any client. [main]
class PointerQuery {
public:
    /// @param connection outlives this object
    PointerQuery(XConnection& connection, xcb_window_t window);
    PointerQuery(const PointerQuery&) = delete;
    PointerQuery& operator=(const PointerQuery&) = delete;
    ~PointerQuery();

    /// Where it is now, after one round trip to the server, or two after the window was put into another
    /// one; nothing while the pointer is on another screen, or without such a window.
    std::optional<PointerState> now();

    /// Sends the question, unless one is without an answer still.
    void ask();
    /// The answer to ask() once it is there, without waiting; then the next question can be sent. Nothing
    /// until then, and as with now().
    std::optional<PointerState> answer();

private:
    struct Question {
        xcb_query_tree_cookie_t parent;
        xcb_query_pointer_cookie_t inside;
        xcb_query_pointer_cookie_t above;
    };

    Question send() const;
    void discard();
    std::optional<PointerState> evaluate(const xcb_query_tree_reply_t* tree,
                                         const xcb_query_pointer_reply_t* inside,
                                         const xcb_query_pointer_reply_t* above);

    XConnection& mConnection;
    xcb_window_t mWindow;
    xcb_window_t mParent = XCB_WINDOW_NONE; ///< As the last answer had it.
    bool mIsParentNew = false;              ///< The last answer was about another parent than the question.
    std::optional<Question> mQuestion;
};

} // namespace varno

#endif
