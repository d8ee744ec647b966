#include "Artwork/Artwork.h"

#include "Artwork/Knob.h"
#include "Artwork/Meter.h"
#include "Artwork/Panel.h"
#include "Artwork/Placement.h"
#include "Artwork/PresetButton.h"
#include "Artwork/RatioSwitch.h"
#include "Artwork/Switch.h"

#include <stdexcept>

namespace varno {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Bitmap;

void drawPicture(Painter& painter, Art art, int picture) {
    const SavedState saved(painter);
    painter.box(pictureBox(art));
    cairo_clip(painter.cairo());
    switch (art) {
    case Art::Background:
        return drawPanel(painter);
    case Art::Knob:
        return drawKnob(painter, picture);
    case Art::MeterOff:
        return drawDarkMeter(painter);
    case Art::MeterOn:
        return drawLitMeter(painter);
    case Art::Switch:
        return drawSwitch(painter, picture);
    case Art::Ratio:
        return drawRatioSwitch(painter, picture);
    case Art::Copy:
        return drawCopyButton(painter, picture);
    case Art::Paste:
        return drawPasteButton(painter, picture);
    }
    throw std::logic_error("unknown bitmap");
}

Canvas drawBitmap(const Bitmap& bitmap, const Typeface& typeface, int scale) {
    Canvas canvas(bitmap.mWidth, bitmap.mHeight * bitmap.mPictures, scale);
    Painter painter(canvas.cairo(), typeface);
    for (int picture = 0; picture < bitmap.mPictures; ++picture) {
        const SavedState saved(painter);
        cairo_translate(canvas.cairo(), 0, static_cast<double>(bitmap.mHeight) * picture);
        drawPicture(painter, bitmap.mArt, picture);
    }
    return canvas;
}

std::string fileName(const Bitmap& bitmap, int scale) {
    std::string name = bitmap.mFile;
    return scale == 1 ? name : name.insert(name.rfind('.'), DemoGain_ViewLayout::kDoubleSizeMark);
}

} // namespace varno
