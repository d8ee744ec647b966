#include "Toolkit/DisplayBitmaps.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/platform/linux/cairobitmap.h"
#include "vstgui/lib/platform/linux/x11platform.h"

#include <cairo/cairo-xcb.h>
#include <xcb/xcb.h>

#include <map>
#include <memory>

namespace varno {

namespace {

using Drawing = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;
using VSTGUI::Cairo::SurfaceHandle;

// A surface of the server, which has no size that could be asked for.
class ServerBitmap final : public VSTGUI::Cairo::Bitmap {
public:
    ServerBitmap(const SurfaceHandle& pixels, const VSTGUI::Cairo::Bitmap& original)
        : Bitmap(pixels),
          mSize(original.getSize()) {
        setScaleFactor(original.getScaleFactor());
    }
    const VSTGUI::CPoint& getSize() const override { return mSize; }

private:
    VSTGUI::CPoint mSize;
};

struct Copy {
    VSTGUI::SharedPointer<VSTGUI::CBitmap> original; // so that its address is not that of another one
    VSTGUI::SharedPointer<VSTGUI::CBitmap> onServer; // null where it cannot be made
};

std::map<const VSTGUI::CBitmap*, Copy>& copies() {
    static std::map<const VSTGUI::CBitmap*, Copy> all;
    return all;
}

// Null where the server cannot have it, as what has no content or more pixels than a side may have.
VSTGUI::SharedPointer<VSTGUI::CBitmap> copyOnServer(const VSTGUI::CBitmap& bitmap) {
    const auto platformBitmap = bitmap.getPlatformBitmap();
    const auto* const original = dynamic_cast<const VSTGUI::Cairo::Bitmap*>(platformBitmap.get());
    if (original == nullptr || !original->getSurface()) {
        return nullptr;
    }
    xcb_connection_t* connection = VSTGUI::X11::RunLoop::instance().getXcbConnection();
    xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    SurfaceHandle ofServer;
    ofServer.assign(cairo_xcb_surface_create_for_bitmap(connection, screen, screen->root, 1, 1));
    SurfaceHandle surface;
    surface.assign(cairo_surface_create_similar(ofServer, CAIRO_CONTENT_COLOR_ALPHA,
                                                static_cast<int>(original->getSize().x),
                                                static_cast<int>(original->getSize().y)));
    const Drawing drawing(cairo_create(surface), &cairo_destroy);
    cairo_set_operator(drawing.get(), CAIRO_OPERATOR_SOURCE);
    cairo_set_source_surface(drawing.get(), original->getSurface(), 0.0, 0.0);
    cairo_paint(drawing.get());
    if (cairo_status(drawing.get()) != CAIRO_STATUS_SUCCESS ||
        cairo_surface_get_type(surface) != CAIRO_SURFACE_TYPE_XCB) {
        return nullptr;
    }
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(
        VSTGUI::PlatformBitmapPtr(VSTGUI::makeOwned<ServerBitmap>(surface, *original)));
}

} // namespace

VSTGUI::CBitmap& displayBitmap(VSTGUI::CBitmap& bitmap) {
    if (VSTGUI::X11::RunLoop::get() == nullptr) {
        return bitmap; // no frame is open
    }
    const auto [entry, isNew] = copies().try_emplace(&bitmap);
    if (isNew) {
        entry->second = {VSTGUI::shared(&bitmap), copyOnServer(bitmap)};
    }
    return entry->second.onServer != nullptr ? *entry->second.onServer : bitmap;
}

void forgetDisplayBitmaps() {
    copies().clear();
}

} // namespace varno
