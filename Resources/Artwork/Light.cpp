#include "Artwork/Light.h"

namespace varno {
namespace {

// How much light a full shadow takes, and an edge turned to the light adds.
constexpr double kShadow = 0.55;
constexpr double kShine = 0.14;
// A shadow falls this far for each pixel of height.
constexpr double kFall = 0.6;
// Width of an edge, in pixels.
constexpr double kEdge = 1.0;

} // namespace

void castShadow(Painter& painter, Point center, double radius, double height) {
    const Point fallen{center.x, center.y + height * kFall};
    painter.fillSoftly(fallen, radius - height, radius + height, palette::kBlack, kShadow);
}

void castShadow(Painter& painter, const Box& body, double cornerRadius, double height) {
    constexpr int kLayers = 6;
    for (int layer = 0; layer < kLayers; ++layer) {
        const double spread = height * (1.0 - 2.0 * layer / (kLayers - 1)) / 2;
        Box fallen = body.inset(-spread);
        fallen.y += height * kFall;
        painter.roundedBox(fallen, cornerRadius + spread);
        painter.fill(palette::kBlack, kShadow / kLayers);
    }
}

void recess(Painter& painter, const Box& hollow, double cornerRadius, Color floor) {
    painter.roundedBox({hollow.x, hollow.y + kEdge, hollow.width, hollow.height}, cornerRadius);
    painter.fill(palette::kWhite, kShine);
    painter.roundedBox(hollow, cornerRadius);
    painter.fill(between(floor, palette::kBlack, kShadow));
    painter.roundedBox({hollow.x, hollow.y + kEdge, hollow.width, hollow.height - kEdge}, cornerRadius);
    painter.fill(floor);
}

void raised(Painter& painter, const Box& body, double cornerRadius, Color top, Color bottom) {
    painter.roundedBox(body, cornerRadius);
    painter.fill(between(top, palette::kWhite, kShine * 2));
    painter.roundedBox({body.x, body.y + kEdge, body.width, body.height - kEdge}, cornerRadius);
    painter.fillDown(body.y, body.bottom(), top, bottom);
}

} // namespace varno
