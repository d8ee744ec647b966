#include "Artwork/PresetButton.h"

#include "Artwork/Lettering.h"
#include "Artwork/Light.h"
#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr Box kPicture = pictureBox(DemoGain_ViewLayout::Art::Copy);
constexpr double kCorner = 4.0;
// How far a pressed key sinks, in pixels.
constexpr double kTravel = 1.0;

void drawButton(Painter& painter, const char* text, bool pressed) {
    const Box hollow{0, 0, kPicture.width, kPicture.height - 1};
    Box key = hollow.inset(1);
    recess(painter, hollow, kCorner, palette::kRecess);
    if (pressed) {
        key.y += kTravel;
        painter.roundedBox(key, kCorner - 1);
        painter.fill(palette::kPlateTop);
    } else {
        raised(painter, key, kCorner - 1, palette::kKeyLight, palette::kKeyDark);
    }
    painter.text(text, lettering::kKeyText,
                 {key.center().x, key.center().y + lettering::halfCapitals(lettering::kKeyText)},
                 Align::Center, pressed ? palette::kLit : palette::kName);
}

} // namespace

void drawCopyButton(Painter& painter, int picture) {
    drawButton(painter, "Copy Preset", picture == 1);
}

void drawPasteButton(Painter& painter, int picture) {
    drawButton(painter, "Paste Preset", picture == 1);
}

} // namespace varno
