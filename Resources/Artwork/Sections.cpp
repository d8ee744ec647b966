#include "Sections.h"

#include "Placement.h"

namespace varno {
namespace {

constexpr TextStyle kTitle = {Weight::SemiBold, 8.5, 1.2};
constexpr double kUpperBaseline = 47.0;
constexpr double kLowerBaseline = 198.0;

void title(Painter& painter, const char* text, double x, double baseline) {
    painter.text(text, kTitle, {x, baseline}, Align::Center, palette::kHint);
}

} // namespace

void drawSections(Painter& painter) {
    title(painter, "INPUT", controlBox("Gain").center().x, kUpperBaseline);
    title(painter, "DRIVE", controlBox("Hot").center().x, kLowerBaseline);
    title(painter, "OUTPUT", controlBox("Volume").center().x, kUpperBaseline);
    title(painter, "BLEND", controlBox("Mix").center().x, kLowerBaseline);
}

} // namespace varno
