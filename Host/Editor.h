/// An open editor, and how a front end shows one in a window.
#ifndef VARNO_HOST_EDITOR_H
#define VARNO_HOST_EDITOR_H

#include "AAX_IACFEffectGUI.h"
#include "ACF/ACFPtr.h"
#include "Host/PlugInObject.h"
#include "Host/ViewContainer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace varno {

class Instance;

/// Made by Instance::openEditor, closed when destroyed or when its instance ends. Every operation takes part
/// in the instance's [main] calls. [main]
class Editor {
public:
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor();

    /// The host's timer, to be called about 30 times a second.
    void timer();
    /// The view's size in pixels; zero while the editor has no view.
    AAX_Point size() const;
    /// Has a part of the view drawn (pixels).
    void draw(AAX_Rect part);
    /// Marks or unmarks a parameter's control.
    void highlight(const std::string& id, bool isHighlighted, AAX_EHighlightColor colour);
    /// Hands over a notification of `size` bytes (borrowed).
    void notify(AAX_CTypeID type, const void* data, std::uint32_t size);
    /// Sets the view container, or removes it (null).
    void setContainer(ViewContainer* container);
    /// The present container of the editor, borrowed; null when there is none.
    ViewContainer* container() const { return mContainer.Get(); }
    /// Takes the container back and ends the editor; all other operations then do nothing.
    void close();

private:
    friend class Instance;
    using Object = PlugInObject<AAX_IACFEffectGUI>;

    Editor(Instance& instance, std::unique_ptr<Object> object, ViewContainer& container);
    void parameterUpdated(const std::string& id);
    void settle(ViewContainer* container, std::uint32_t before) const;

    Instance* mInstance; ///< Null once closed.
    std::unique_ptr<Object> mObject;
    ACFPtr<ViewContainer> mContainer;
    std::uint32_t mBorrowed = 0; ///< References that the module has taken when it received the container.
};

/// A size in whole pixels.
struct PixelSize {
    int width = 0;
    int height = 0;

    /// Whether there is nothing to show.
    bool isEmpty() const { return width < 1 || height < 1; }
    bool operator==(const PixelSize&) const = default;
};

/// An editor in an X11 window of a front end: view container, editor and timer calls. [main]
class EditorView {
public:
    /// Gives the window a size, never an empty one.
    using Resize = std::function<void(PixelSize)>;

    /// Nothing is open yet. `instance` and `desktop` outlive this object. `resize` answers the editor's
    /// requests for a size, during `open` too.
    EditorView(Instance& instance, Desktop& desktop, Resize resize);

    /// Opens the editor in the window with the number `window`. Returns the size of its view, which is empty
    /// when the effect has no editor or the editor shows nothing. Throws HostError when the editor's
    /// initialisation fails.
    PixelSize open(std::uint32_t window);
    /// Closes the open editor, which can be opened again.
    void close() { mEditor.reset(); }
    /// Answers mouse offers of the editor and reports modifier keys to it.
    ViewContainer& container() { return *mContainer; }
    /// Whether the effect has made an editor.
    bool isOpen() const { return mEditor != nullptr; }
    /// The size of the open editor's view.
    PixelSize size() const;
    /// The host's timer for data model and editor, if one is open, to be called about 30 times a second.
    void timer();

private:
    Instance& mInstance;
    ACFPtr<ViewContainer> mContainer;
    std::unique_ptr<Editor> mEditor;
};

} // namespace varno

#endif
