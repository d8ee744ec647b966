#include "Tests/Integration/Editor/EditorWindow.h"

#include "Host/HostError.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace varno::test {

namespace layout = DemoGain_ViewLayout;

const layout::Control& controlOf(const std::string& id) {
    const auto* const found =
        std::ranges::find_if(layout::kControls, [&id](const auto& control) { return control.mID == id; });
    if (found == std::end(layout::kControls)) {
        throw std::invalid_argument("no control " + id);
    }
    return *found;
}

Area areaOf(const layout::Control& control) {
    const layout::Bitmap& bitmap = layout::BitmapOf(control.mArt);
    return {control.mX, control.mY, bitmap.mWidth, bitmap.mHeight};
}

Area areaOf(const std::string& id) {
    return areaOf(controlOf(id));
}

Area viewArea() {
    const layout::Bitmap& background = layout::BitmapOf(layout::Art::kBackground);
    return {0, 0, background.mWidth, background.mHeight};
}

Area statusArea() {
    constexpr layout::Edges edges = layout::kStatusLabel;
    return {edges.mLeft, edges.mTop, edges.mRight - edges.mLeft, edges.mBottom - edges.mTop};
}

EditorWindow::EditorWindow(const EditorSurroundings& surroundings, Instance& instance, Place onScreen)
    : mClient(surroundings.client),
      mLoop(surroundings.loop),
      mInstance(&instance),
      mOnScreen(onScreen),
      mWindow(mClient, {onScreen.x, onScreen.y, viewArea().width, viewArea().height}),
      mContainer(ACFPtr<ViewContainer>::Adopt(new ViewContainer(instance.module().context()))) {
    mContainer->setDesktop(surroundings.withDesktop ? &mLoop : nullptr);
    mContainer->setMouseHandler([this](const MouseOffer& offer) {
        mOffers.push_back(offer);
        return mAnswer ? mAnswer(offer) : AAX_ERROR_UNIMPLEMENTED;
    });
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the container carries a window's number as a pointer
    mContainer->setView(AAX_eViewContainerType_X11, reinterpret_cast<void*>(std::uintptr_t{mWindow.id()}));
    mEditor = instance.openEditor(*mContainer);
    if (mEditor == nullptr) {
        throw HostError("the effect has no editor");
    }
    mLoop.add(this, [this] {
        mEditor->timer();
        if (mInstance != nullptr) {
            mInstance->idle();
        }
    });
}

void EditorWindow::close() {
    mLoop.remove(this);
    if (mEditor != nullptr) {
        mEditor->close();
    }
    destroyWindow();
}

Picture EditorWindow::picture(const Area& area) const {
    return Picture::ofWindow(mClient, mWindow.id(), area);
}

} // namespace varno::test
