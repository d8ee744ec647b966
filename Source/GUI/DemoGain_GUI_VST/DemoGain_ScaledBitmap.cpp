#include "GUI/DemoGain_GUI_VST/DemoGain_ScaledBitmap.h"

#include "Toolkit/DisplayBitmaps.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cgraphicstransform.h"
#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/platform/iplatformbitmap.h"

#include <cmath>
#include <string>

using DemoGain_ViewLayout::kArtScales;
using VSTGUI::CBitmap;
using VSTGUI::CDrawContext;
using VSTGUI::CGraphicsTransform;
using VSTGUI::CPoint;
using VSTGUI::CRect;

namespace {

// Zooms and lengths closer than this are the same: they come from multiplications.
constexpr double kSame = 1e-6;

bool IsSame(double a, double b) {
    return std::fabs(a - b) < kSame;
}

// Rounded to whole pixels as the artwork does it.
CPoint Snapped(const CPoint& point) {
    return {std::round(point.x), std::round(point.y)};
}

// All pixels that a rectangle touches.
CRect Outwards(const CRect& rect) {
    return {std::floor(rect.left + kSame), std::floor(rect.top + kSame), std::ceil(rect.right - kSame),
            std::ceil(rect.bottom - kSame)};
}

bool IsEnlargement(const CGraphicsTransform& transform) {
    return transform.m11 > 0.0 && transform.m11 == transform.m22 && transform.m12 == 0.0 &&
           transform.m21 == 0.0;
}

CBitmap* OrNull(const VSTGUI::SharedPointer<CBitmap>& bitmap) {
    return bitmap ? bitmap.get() : nullptr;
}

// A clip for the time of a scope. The library clips a view at its edges, which may lie within pixels.
class ClipScope {
public:
    ClipScope(CDrawContext& context, const CRect& place)
        : mContext(context) {
        context.getClipRect(mBefore);
        CRect clip = Outwards(mBefore);
        clip.bound(place);
        context.setClipRect(clip);
    }
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;
    ~ClipScope() { mContext.setClipRect(mBefore); }

private:
    CDrawContext& mContext;
    CRect mBefore;
};

} // namespace

DemoGain_ScaledBitmap::DemoGain_ScaledBitmap(const DemoGain_ViewLayout::Bitmap& row, Place place)
    : CBitmap(VSTGUI::CResourceDescription(row.mFile)),
      mRow(row),
      mPlace(place) {
}

// Loading.

CBitmap* DemoGain_ScaledBitmap::Load(std::size_t scale) {
    if (scale == 0) {
        return this;
    }
    std::optional<VSTGUI::SharedPointer<CBitmap>>& file = mFiles[scale];
    if (!file) {
        const double factor = kArtScales[scale].mFactor;
        std::string name = mRow.mFile;
        name.insert(name.rfind('.'), kArtScales[scale].mMark);
        file = VSTGUI::makeOwned<CBitmap>(VSTGUI::CResourceDescription(name.c_str()));
        const int rows = mRow.mPictures * DemoGain_ViewLayout::PictureRowsAt(factor, mRow);
        if ((*file)->getSize() != CPoint(DemoGain_ViewLayout::PixelsAt(factor, mRow.mWidth), rows)) {
            file = nullptr;
        }
    }
    return OrNull(*file);
}

// The file of the zoom itself, else the next larger one whose pictures lie apart, else the largest.
DemoGain_ScaledBitmap::File DemoGain_ScaledBitmap::FileFor(double zoom) {
    File best{kArtScales[0].mFactor, this};
    for (std::size_t scale = 0; scale < std::size(kArtScales); ++scale) {
        const double factor = kArtScales[scale].mFactor;
        if (IsSame(factor, zoom)) {
            if (CBitmap* const bitmap = Load(scale)) {
                return {factor, bitmap};
            }
        }
    }
    bool isLarger = false;
    for (std::size_t scale = 1; scale < std::size(kArtScales); ++scale) {
        const double factor = kArtScales[scale].mFactor;
        const bool isBetter =
            factor > zoom ? !isLarger || factor < best.mScale : !isLarger && factor > best.mScale;
        if (isBetter) {
            if (CBitmap* const bitmap = Load(scale)) {
                best = {factor, bitmap};
                isLarger = factor > zoom;
            }
        }
    }
    return best;
}

// Drawing.

void DemoGain_ScaledBitmap::draw(CDrawContext* context, const CRect& rect, const CPoint& offset,
                                 float alpha) {
    const CGraphicsTransform transform = context->getCurrentTransform();
    if (!isLoaded() || rect.isEmpty()) {
        return;
    }
    if (!IsEnlargement(transform) || context->getScaleFactor() != 1.0) {
        CBitmap::draw(context, rect, offset, alpha);
        return;
    }
    const double zoom = transform.m11 * (mPlace == Place::kFrame ? rect.getWidth() / getWidth() : 1.0);
    const Pixels pixels = PixelsOf(rect, offset, zoom, transform);
    const File file = FileFor(zoom);
    const CDrawContext::Transform inPixels(*context, transform.inverse());
    const ClipScope clip(*context, pixels.mPlace);
    DrawPixels(*context, pixels, file, zoom, alpha);
}

DemoGain_ScaledBitmap::Pixels DemoGain_ScaledBitmap::PixelsOf(const CRect& rect, const CPoint& offset,
                                                              double zoom,
                                                              const CGraphicsTransform& transform) const {
    const double height = getHeight() / mRow.mPictures;
    const double picture = std::floor(offset.y / height + kSame);
    CRect exact = rect;
    transform.transform(exact);
    const CPoint within(offset.x * zoom, (offset.y - picture * height) * zoom);
    const CPoint origin = Snapped(exact.getTopLeft() - within);
    // A picture ends where its last pixel does, a part of one at the nearest pixel.
    const auto end = [zoom](double edge, double start, double length) {
        const double last = start + std::ceil(length * zoom - kSame);
        return edge - start > length * zoom - 1.0 ? last : std::round(edge);
    };
    const CPoint start = Snapped(exact.getTopLeft());
    return {
        CRect(start.x, start.y, end(exact.right, origin.x, getWidth()), end(exact.bottom, origin.y, height)),
        origin, static_cast<int>(picture)};
}

void DemoGain_ScaledBitmap::DrawPixels(CDrawContext& context, const Pixels& pixels, const File& file,
                                       double zoom, float alpha) const {
    // Pixels of the screen to one of the file.
    const double reduction = IsSame(file.mScale, zoom) ? 1.0 : zoom / file.mScale;
    const CGraphicsTransform reduced = CGraphicsTransform().scale(reduction, reduction);
    const CDrawContext::Transform inFile(context, reduced);
    CRect place = pixels.mPlace;
    reduced.inverse().transform(place);
    CPoint origin = pixels.mOrigin;
    reduced.inverse().transform(origin);
    const int firstRow =
        pixels.mPicture * (file.mBitmap == this ? static_cast<int>(getHeight()) / mRow.mPictures
                                                : DemoGain_ViewLayout::PictureRowsAt(file.mScale, mRow));
    context.drawBitmap(&varno::displayBitmap(*file.mBitmap), place,
                       place.getTopLeft() - origin + CPoint(0, firstRow), alpha);
}
