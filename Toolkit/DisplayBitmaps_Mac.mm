#include "Toolkit/DisplayBitmaps.h"

namespace varno {

VSTGUI::CBitmap& displayBitmap(VSTGUI::CBitmap& bitmap) {
    return bitmap;
}

void forgetDisplayBitmaps() {
}

} // namespace varno
