/// Pictures of the whole editor, to look at and for the manual.
#ifndef VARNO_RESOURCES_ARTWORK_EDITORPICTURE_H
#define VARNO_RESOURCES_ARTWORK_EDITORPICTURE_H

#include "Artwork/Painter.h"

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace varno {

/// What the controls of a picture show.
struct ShownEditor {
    std::map<std::string_view, double> values; ///< By identifier, 0 to 1; what is not listed shows 0.
    double reductionDB = 0.0;                  ///< On both meters.
    std::string status;
};

/// The editor as a user sees it: each control on the pixel at which the editor puts it.
Canvas drawEditor(const Typeface& typeface, double scale, const ShownEditor& shown);

/// The same with some controls moved.
Canvas drawPreview(const Typeface& typeface, double scale);

/// Reads `picture`, a PNG of the whole editor at a whole scale, and puts a number on each control: its place,
/// from 1, in DemoGain_ViewLayout::kControls. Throws std::runtime_error, naming the file, where it cannot be
/// read or has another size.
Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& picture);

} // namespace varno

#endif
