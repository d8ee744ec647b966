/// A picture of the editor with its controls numbered, for the manual.
#ifndef VARNO_RESOURCES_ARTWORK_NUMBEREDPICTURE_H
#define VARNO_RESOURCES_ARTWORK_NUMBEREDPICTURE_H

#include "Artwork/Canvas.h"
#include "Artwork/TextLine.h"

#include <filesystem>

namespace varno {

/// Reads `picture`, a PNG of the whole editor at a whole scale, and puts a number on each control: its place,
/// from 1, in DemoGain_ViewLayout::kControls. Throws std::runtime_error, naming the file, where it cannot be
/// read or has another size.
Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& picture);

} // namespace varno

#endif
