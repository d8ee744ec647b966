/// Pictures of the whole editor, to look at and for the manual.
#ifndef VARNO_RESOURCES_ARTWORK_EDITORPICTURE_H
#define VARNO_RESOURCES_ARTWORK_EDITORPICTURE_H

#include "Artwork/Painter.h"

#include <filesystem>

namespace varno {

/// The editor as a user sees it, with some controls moved.
Canvas drawPreview(const Typeface& typeface, int scale);

/// Reads `picture`, a PNG of the whole editor at a whole scale, and puts a number on each control: its place,
/// from 1, in DemoGain_ViewLayout::kControls. Throws std::runtime_error, naming the file, where it cannot be
/// read or has another size.
Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& picture);

} // namespace varno

#endif
