/// All bitmaps of the editor, and pictures made of them.
#ifndef VARNO_RESOURCES_ARTWORK_ARTWORK_H
#define VARNO_RESOURCES_ARTWORK_ARTWORK_H

#include "Artwork/Canvas.h"
#include "Artwork/Painter.h"
#include "DemoGain_ViewLayout.h"

#include <string>

namespace varno {

/// Scales in which every bitmap is drawn.
inline constexpr int kScales[] = {1, 2};

/// Draws one picture of a bitmap with its corner at the origin.
void drawPicture(Painter& painter, DemoGain_ViewLayout::Art art, int picture);

/// A bitmap with all its pictures.
Canvas drawBitmap(const DemoGain_ViewLayout::Bitmap& bitmap, const Typeface& typeface, int scale);

/// The file of a bitmap at one of the scales.
std::string fileName(const DemoGain_ViewLayout::Bitmap& bitmap, int scale);

/// The editor as a user meets it, with some controls moved.
Canvas drawPreview(const Typeface& typeface, int scale);

} // namespace varno

#endif
