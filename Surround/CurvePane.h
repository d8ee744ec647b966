/// The picture of the present gain reduction curve, which folds out below the bar.
#ifndef VARNO_SURROUND_CURVEPANE_H
#define VARNO_SURROUND_CURVEPANE_H

#include "DemoGain_Coefficients.h"
#include "Surround/BarState.h"
#include "Toolkit/WidgetFrame.h"
#include "Window/HolderWindow.h"

#include <optional>

namespace varno {

/// What the picture shows. Levels are those of the detector, behind "Gain".
struct CurveState {
    float ratio = 0.0F;          ///< Normalized; chooses the curve.
    std::optional<double> nowDB; ///< The level now; nothing for silence.
    double reductionDB = 0.0;    ///< 0 or negative, now.

    bool operator==(const CurveState&) const = default;
};

/// Level in, level out, with a dot where the level is. [main]
class CurvePane {
public:
    /// Pixels at scale 1; as wide as the bar.
    static constexpr int kHeight = 128;
    /// The range of both axes, dB.
    static constexpr double kLowestDB = -60.0;
    static constexpr double kHighestDB = 20.0;

    /// Opens it. @param connection outlives this object @param area in the parent
    CurvePane(XConnection& connection, xcb_window_t parent, const WindowArea& area, double scale);

    /// Shows another state; draws only where the picture is another one.
    void show(const CurveState& state);

private:
    class Picture;

    HolderWindow mHolder;
    WidgetFrame mFrame;
    Picture* mPicture; ///< The frame's.
};

} // namespace varno

#endif
