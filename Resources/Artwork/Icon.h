/// The product's icon: a knob turned up, on a tile of the panel.
#ifndef VARNO_RESOURCES_ARTWORK_ICON_H
#define VARNO_RESOURCES_ARTWORK_ICON_H

#include "Artwork/Canvas.h"
#include "Artwork/Typeface.h"

#include <filesystem>

namespace varno {

/// The sizes that desktops ask for, in pixels.
inline constexpr int kIconSizes[] = {16, 32, 48, 64, 128, 256};

/// The icon of one size; edges are transparent around the rounded tile.
Canvas drawIcon(const Typeface& typeface, int size);

/// Where the icon of one size lies in the resources.
std::filesystem::path iconFile(int size);

} // namespace varno

#endif
