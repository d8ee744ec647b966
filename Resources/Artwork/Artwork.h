/// Everything that is drawn for the bundle: the editor's bitmaps and the product's icons.
#ifndef VARNO_RESOURCES_ARTWORK_ARTWORK_H
#define VARNO_RESOURCES_ARTWORK_ARTWORK_H

#include "Artwork/Painter.h"
#include "DemoGain_ViewLayout.h"

#include <filesystem>
#include <string>

namespace varno {

/// Draws one picture of a bitmap with its corner at the origin.
void drawPicture(Painter& painter, DemoGain_ViewLayout::Art art, int picture);

/// One picture of a bitmap.
Canvas drawOne(const DemoGain_ViewLayout::Bitmap& bitmap, const Typeface& typeface, double scale,
               int picture);

/// A bitmap with all its pictures, each as it is drawn alone.
Canvas drawBitmap(const DemoGain_ViewLayout::Bitmap& bitmap, const Typeface& typeface, double scale);

/// The file of a bitmap at one of the scales.
std::string fileName(const DemoGain_ViewLayout::Bitmap& bitmap, const DemoGain_ViewLayout::ArtScale& scale);

/// The sizes of icons that desktops ask for, in pixels.
inline constexpr int kIconSizes[] = {16, 32, 48, 64, 128, 256};

/// The product's icon in one size: a knob turned up, on a tile of the panel. The rounded tile has transparent
/// corners.
Canvas drawIcon(const Typeface& typeface, int size);

/// Where the icon of one size lies in the resources.
std::filesystem::path iconFile(int size);

} // namespace varno

#endif
