/// The program's command line.
#ifndef VARNO_RESOURCES_ARTWORK_OPTIONS_H
#define VARNO_RESOURCES_ARTWORK_OPTIONS_H

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace varno {

/// The program was called wrongly; what() states what was expected.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Either help, or a preview, or a numbered picture, or everything into a folder.
struct Options {
    bool help = false;
    std::filesystem::path folder;
    std::optional<std::filesystem::path> preview;
    double scale = 1.0;                                ///< Of the preview.
    std::optional<std::filesystem::path> numberedFrom; ///< Where the numbers go into numbered.
    std::filesystem::path numbered;
};

inline constexpr double kSmallestPreviewScale = 0.5;
inline constexpr double kLargestPreviewScale = 4.0;

/// What `--help` prints.
extern const char* const kHelp;

/// Reads the arguments behind the program's name; throws UsageError.
Options parseOptions(const std::vector<std::string>& arguments);

} // namespace varno

#endif
