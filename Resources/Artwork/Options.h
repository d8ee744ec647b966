/// What the program is asked to do.
#ifndef VARNO_RESOURCES_ARTWORK_OPTIONS_H
#define VARNO_RESOURCES_ARTWORK_OPTIONS_H

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace varno {

/// The program was called wrongly; what() says what was expected.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Either help, or a preview, or a numbered picture, or everything into a folder.
struct Options {
    bool mHelp = false;
    std::filesystem::path mFolder;
    std::optional<std::filesystem::path> mPreview;
    int mScale = 1;                                     ///< Of the preview.
    std::optional<std::filesystem::path> mNumberedFrom; ///< Where the numbers go into mNumbered.
    std::filesystem::path mNumbered;
};

inline constexpr int kLargestPreviewScale = 4;

/// What `--help` prints.
extern const char* const kHelp;

/// Understands the arguments behind the program's name; throws UsageError.
Options parseOptions(const std::vector<std::string>& arguments);

} // namespace varno

#endif
