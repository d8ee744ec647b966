/// A bitmap of the editor in several sizes, which is drawn sharp at each zoom of its frame.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_SCALEDBITMAP_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_SCALEDBITMAP_H

#include "DemoGain_ViewLayout.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/crect.h"

#include <array>
#include <iterator>
#include <optional>

namespace VSTGUI {
class CDrawContext;
struct CGraphicsTransform;
} // namespace VSTGUI

/// The library takes the file whose scale is nearest to the zoom and lets it begin anywhere within a pixel:
/// at most places of a zoom of 125 % everything is blurred, and rows of neighbouring pictures mix. Here each
/// picture begins at the pixel that is nearest to its place; where there is a file for the zoom it is copied
/// pixel by pixel, and at all other zooms the next larger one is reduced. [main]
class DemoGain_ScaledBitmap final : public VSTGUI::CBitmap {
public:
    /// What the rectangle means that the bitmap is drawn in.
    enum class Place {
        kPart, ///< The part of the view that shows a picture, or a part of one from its left edge on.
        kFrame ///< All of the frame: the library applies the frame's zoom to everything but its background.
    };

    /// Loads the file at scale 1; the others when they are needed. `row` is one of the layout's table.
    DemoGain_ScaledBitmap(const DemoGain_ViewLayout::Bitmap& row, Place place);

    /// Within a transform that is no even enlargement, as the library does it.
    void draw(VSTGUI::CDrawContext* context, const VSTGUI::CRect& rect, const VSTGUI::CPoint& offset,
              float alpha) override;

protected:
    ~DemoGain_ScaledBitmap() noexcept override = default;

private:
    /// A file at one of the scales; without a bitmap where it cannot be loaded.
    struct File {
        double mScale;
        VSTGUI::CBitmap* mBitmap;
    };
    /// Where a picture lies, in pixels.
    struct Pixels {
        VSTGUI::CRect mPlace;   ///< What is drawn of it.
        VSTGUI::CPoint mOrigin; ///< Of the whole picture.
        int mPicture;
    };

    CBitmap* Load(std::size_t scale);
    File FileFor(double zoom);
    Pixels PixelsOf(const VSTGUI::CRect& rect, const VSTGUI::CPoint& offset, double zoom,
                    const VSTGUI::CGraphicsTransform& transform) const;
    void DrawPixels(VSTGUI::CDrawContext& context, const Pixels& pixels, const File& file, double zoom,
                    float alpha) const;

    const DemoGain_ViewLayout::Bitmap& mRow;
    Place mPlace;
    /// By scale; nothing where loading was not tried yet.
    std::array<std::optional<VSTGUI::SharedPointer<CBitmap>>, std::size(DemoGain_ViewLayout::kArtScales)>
        mFiles;
};

#endif
