/// A field for a line of text.
#ifndef VARNO_SURROUND_TEXTENTRY_H
#define VARNO_SURROUND_TEXTENTRY_H

#include "Toolkit/WidgetFrame.h"
#include "Window/HolderWindow.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <xcb/xcb.h>

namespace VSTGUI {
class CTextEdit;
} // namespace VSTGUI

namespace varno {

/// A field above the other windows of its parent, for one text at a time. Keys are passed to it, wherever the
/// input focus is. [main]
class TextEntry {
public:
    /// Receives what was entered; nothing where it was given up. Called once for each open(), when the field
    /// is closed.
    using Handler = std::function<void(std::optional<std::string> text)>;

    /// Makes it, closed. @param connection outlives this object
    TextEntry(XConnection& connection, xcb_window_t parent)
        : mConnection(connection),
          mParent(parent) {}
    TextEntry(const TextEntry&) = delete;
    TextEntry& operator=(const TextEntry&) = delete;

    /// Opens it with a text, all of it selected; one that is open is given up before.
    /// @param area in the parent, in pixels @param scale of the text
    void open(const WindowArea& area, double scale, const std::string& text, Handler handler);
    bool isOpen() const { return mField != nullptr; }
    /// A press of a mouse button in the parent: one beside the field gives it up.
    void pressed(WindowPlace place) {
        if (!mArea.contains(place)) {
            cancel();
        }
    }
    /// A press or a release. Return and Enter end it with its text, Escape and Tab give it up; every other
    /// key is the field's. @param symbol of a press, see KeyText
    void key(const xcb_key_press_event_t& event, xcb_keysym_t symbol);
    /// Gives it up, if it is open.
    void cancel() { finish(std::nullopt); }

private:
    struct Field {
        Field(XConnection& connection, xcb_window_t parent, int width, int height)
            : holder(connection, parent),
              frame(width, height) {}

        HolderWindow holder;
        WidgetFrame frame;
        VSTGUI::CTextEdit* edit = nullptr; ///< The frame's.
    };

    void finish(std::optional<std::string> text);
    void pass(xcb_key_press_event_t event) const;
    void releaseModifiers() const;
    void awaitKeys() const;

    XConnection& mConnection;
    xcb_window_t mParent;
    std::unique_ptr<Field> mField;
    WindowArea mArea; ///< Of the field, in the parent.
    Handler mHandler;
};

} // namespace varno

#endif
