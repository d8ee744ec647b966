#include "Panel.h"

#include "ControlNames.h"
#include "KnobScale.h"
#include "Light.h"
#include "MeterScale.h"
#include "Placement.h"
#include "ResponseCurves.h"
#include "Sections.h"
#include "Sheet.h"

namespace varno {
namespace {

/// The hollow around the line of text that the view draws itself.
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
