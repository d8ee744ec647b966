#include "Artwork/RatioSwitch.h"

#include "Artwork/Lettering.h"
#include "Artwork/Light.h"
#include "Artwork/Placement.h"

#include <string>

namespace varno {
namespace {

constexpr auto kArt = DemoGain_ViewLayout::Art::Ratio;
constexpr Box kPicture = pictureBox(kArt);
constexpr int kPositions = DemoGain_ViewLayout::BitmapOf(kArt).mPictures;
// The mouse chooses by equal parts of the whole width, so the keys divide it so too.
constexpr double kKeyWidth = kPicture.width / kPositions;
constexpr double kCorner = 4.0;
constexpr double kKeyCorner = 3.0;
constexpr double kGap = 2.0;

Box keyBox(int position) {
    const Box cell{kKeyWidth * position, 0, kKeyWidth, kPicture.height};
    return {cell.x + kGap / 2, cell.y + kGap, cell.width - kGap, cell.height - 2 * kGap};
}

void drawKey(Painter& painter, int position, bool chosen) {
    const Box key = keyBox(position);
    if (chosen) {
        painter.roundedBox(key, kKeyCorner);
        painter.fillDown(key.y, key.bottom(), palette::kLitCore, palette::kLit);
    } else {
        raised(painter, key, kKeyCorner, palette::kKeyLight, palette::kKeyDark);
    }
    painter.text(std::to_string(position + 1), lettering::kKeyNumber,
                 {key.center().x, key.center().y + lettering::halfCapitals(lettering::kKeyNumber)},
                 Align::Center, chosen ? palette::kInkOnLit : palette::kHint);
}

} // namespace

void drawRatioSwitch(Painter& painter, int picture) {
    recess(painter, {0, 0, kPicture.width, kPicture.height - 1}, kCorner, palette::kRecess);
    for (int position = 0; position < kPositions; ++position) {
        drawKey(painter, position, position == picture);
    }
}

} // namespace varno
