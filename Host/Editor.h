/// An open editor.
#ifndef VARNO_HOST_EDITOR_H
#define VARNO_HOST_EDITOR_H

#include "AAX_IACFEffectGUI.h"
#include "ACF/ACFPtr.h"
#include "Host/PlugInObject.h"
#include "Host/ViewContainer.h"

#include <cstdint>
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
    /// Takes the view container away (null) or gives one.
    void setContainer(ViewContainer* container);
    /// The container that the editor lives in now, borrowed; null when there is none.
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
    std::uint32_t mBorrowed = 0; ///< References that the module has taken when it was given the container.
};

} // namespace varno

#endif
