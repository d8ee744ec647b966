#include "Artwork/Options.h"

#include <charconv>

namespace varno {
namespace {

double parseScale(const std::string& text) {
    double scale = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, scale);
    if (error != std::errc() || rest != end || !(scale >= kSmallestPreviewScale) ||
        scale > kLargestPreviewScale) {
        throw UsageError("--scale: \"" + text + "\" is not a number from 0.5 to 4");
    }
    return scale;
}

} // namespace

const char* const kHelp = R"(Draws the bitmaps of the Varno-S editor.

usage: varno_artwork FOLDER
       varno_artwork --preview FILE [--scale N]
       varno_artwork --number PICTURE FILE

FOLDER is where every bitmap goes, as NAME.png and, at other scales, as NAME#0.75x.png to NAME#3.0x.png; below
it, icons/SIZExSIZE/varno-s.png is the product's icon. The folder is made if it is not there.

  --preview FILE  draws one picture of the whole editor, some of its controls moved, to look at
  --scale N       pixels of the preview for one of the editor, 0.5 to 4; 1 unless given
  --number PICTURE FILE
                  draws PICTURE, a screenshot of the editor, with a number on each control
  --help          prints this
)";

Options parseOptions(const std::vector<std::string>& arguments) {
    Options options;
    bool scaled = false;
    for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
        const auto value = [&, name = *argument] {
            if (++argument == arguments.end()) {
                throw UsageError(name + " needs a value");
            }
            return *argument;
        };
        if (*argument == "--help") {
            options.help = true;
            return options;
        }
        if (*argument == "--preview") {
            options.preview = value();
        } else if (*argument == "--number") {
            options.numberedFrom = value();
            options.numbered = value();
        } else if (*argument == "--scale") {
            options.scale = parseScale(value());
            scaled = true;
        } else if (argument->starts_with("-")) {
            throw UsageError(*argument + " is not an option; --help lists them");
        } else if (options.folder.empty()) {
            options.folder = *argument;
        } else {
            throw UsageError("\"" + *argument + "\" is one folder too many");
        }
    }
    const int jobs =
        (options.preview ? 1 : 0) + (options.numberedFrom ? 1 : 0) + (options.folder.empty() ? 0 : 1);
    if (jobs != 1) {
        throw UsageError("expected a folder, --preview FILE or --number PICTURE FILE; --help tells more");
    }
    if (scaled && !options.preview) {
        throw UsageError("--scale goes with --preview alone");
    }
    return options;
}

} // namespace varno
