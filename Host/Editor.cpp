#include "Host/Editor.h"

#include "Host/Instance.h"
#include "Host/InstanceHost.h"

#include <cmath>
#include <utility>

namespace varno {

namespace {

std::uint32_t referencesTo(const ViewContainer* container) {
    return container != nullptr ? container->references() : 0;
}

PixelSize pixels(const AAX_Point& size) {
    return {static_cast<int>(std::lround(size.horz)), static_cast<int>(std::lround(size.vert))};
}

} // namespace

Editor::Editor(Instance& instance, std::unique_ptr<Object> object, ViewContainer& container)
    : mInstance(&instance),
      mObject(std::move(object)) {
    mInstance->mEditor = this;
    setContainer(&container);
}

Editor::~Editor() {
    close();
}

void Editor::close() {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::close");
    setContainer(nullptr);
    mObject.reset();
    mInstance->mEditor = nullptr;
    mInstance = nullptr;
}

void Editor::setContainer(ViewContainer* container) {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::setContainer");
    const ACFPtr<ViewContainer> last = std::move(mContainer);
    mContainer = ACFPtr<ViewContainer>::Retain(container);
    const std::uint32_t lastReferences = referencesTo(last.Get());
    const std::uint32_t references = referencesTo(container);
    mObject->use().SetViewContainer(container);
    if (last.Get() == container) {
        mBorrowed += referencesTo(container) - references;
        return;
    }
    settle(last.Get(), lastReferences);
    mBorrowed = referencesTo(container) - references;
}

// The module may keep the references that it asked for, since a container is only borrowed.
void Editor::settle(ViewContainer* container, std::uint32_t before) const {
    if (container != nullptr) {
        container->giveBack(mBorrowed - (before - container->references()));
    }
}

void Editor::timer() {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::timer");
    mObject->use().TimerWakeup();
}

AAX_Point Editor::size() const {
    AAX_Point size;
    if (mInstance != nullptr) {
        const MainGate::Scope scope(mInstance->host().state().gate, "Editor::size");
        mObject->use().GetViewSize(&size);
    }
    return size;
}

void Editor::draw(AAX_Rect part) {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::draw");
    mObject->use().Draw(&part);
}

void Editor::highlight(const std::string& id, bool isHighlighted, AAX_EHighlightColor colour) {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::highlight");
    mObject->use().SetControlHighlightInfo(id.c_str(), static_cast<std::uint8_t>(isHighlighted), colour);
}

void Editor::notify(AAX_CTypeID type, const void* data, std::uint32_t size) {
    if (mInstance == nullptr) {
        return;
    }
    const MainGate::Scope scope(mInstance->host().state().gate, "Editor::notify");
    mObject->use().NotificationReceived(type, data, size);
}

void Editor::parameterUpdated(const std::string& id) {
    mObject->use().ParameterUpdated(id.c_str());
}

EditorView::EditorView(Instance& instance, Desktop& desktop, Resize resize)
    : mInstance(instance),
      mContainer(ACFPtr<ViewContainer>::Adopt(new ViewContainer(instance.module().context()))) {
    mContainer->setDesktop(&desktop);
    mContainer->setSizeHandler([resize = std::move(resize)](const AAX_Point& wanted) -> AAX_Result {
        const PixelSize size = pixels(wanted);
        if (size.isEmpty()) {
            return AAX_ERROR_INVALID_VIEW_SIZE;
        }
        resize(size);
        return AAX_SUCCESS;
    });
}

PixelSize EditorView::open(std::uint32_t window) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): native views are pointers, and X11 has numbers
    void* const view = reinterpret_cast<void*>(static_cast<std::uintptr_t>(window));
    mContainer->setView(AAX_eViewContainerType_X11, view);
    mEditor = mInstance.openEditor(*mContainer);
    return mEditor ? size() : PixelSize{};
}

PixelSize EditorView::size() const {
    return pixels(mEditor->size());
}

void EditorView::timer() {
    mInstance.timer();
    if (mEditor) {
        mEditor->timer();
    }
}

} // namespace varno
