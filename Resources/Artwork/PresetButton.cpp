#include "PresetButton.h"

#include "Light.h"
#include "Placement.h"

namespace varno {
namespace {

constexpr Box kPicture = pictureBox(DemoGain_ViewLayout::Art::Copy);
constexpr double kCorner = 4.0;
constexpr TextStyle kStyle = {Weight::Medium, 11.0, 0.2};
/// How far a pressed key sinks, in pixels.
constexpr double kTravel = 1.0;
/// From the middle of the key to the baseline, in pixels.
constexpr double kBaseline = 4.0;

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
    painter.text(text, kStyle, {key.center().x, key.center().y + kBaseline}, Align::Center,
                 pressed ? palette::kLit : palette::kName);
}

} // namespace

void drawCopyButton(Painter& painter, int picture) {
    drawButton(painter, "Copy Preset", picture == 1);
}

void drawPasteButton(Painter& painter, int picture) {
    drawButton(painter, "Paste Preset", picture == 1);
}

} // namespace varno
