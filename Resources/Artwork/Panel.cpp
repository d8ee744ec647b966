#include "Artwork/Panel.h"

#include "Artwork/ControlNames.h"
#include "Artwork/KnobScale.h"
#include "Artwork/Light.h"
#include "Artwork/MeterScale.h"
#include "Artwork/Placement.h"
#include "Artwork/ResponseCurves.h"
#include "Artwork/Sections.h"
#include "Artwork/Sheet.h"

namespace varno {
namespace {

// The hollow around the line of text that the view draws itself.
void drawStatusFrame(Painter& painter) {
    constexpr double kMargin = 2.0;
    constexpr double kCorner = 3.0;
    recess(painter, statusBox().inset(-kMargin), kCorner, palette::kBlack);
}

} // namespace

void drawPanel(Painter& painter) {
    drawSheet(painter);
    drawSections(painter);
    drawResponseCurves(painter);
    drawKnobScales(painter);
    drawMeterScale(painter);
    drawControlNames(painter);
    drawStatusFrame(painter);
}

} // namespace varno
