/// What a user has chosen for all windows.
#ifndef VARNO_SURROUND_SETTINGS_USERPREFERENCES_H
#define VARNO_SURROUND_SETTINGS_USERPREFERENCES_H

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The sizes that a window offers, as factors of the plain one, in rising order.
inline constexpr std::array<double, 6> kWindowSizes = {0.75, 1.0, 1.25, 1.5, 2.0, 3.0};

/// A text file with a line for each choice ("size 1.25", "curve shown"). Lines that this version does not
/// know are kept; of damaged values, nothing is chosen. Each setter reads the file again, so that programs at
/// the same time do not undo what the other has chosen, and writes it whole. [main]
class UserPreferences {
public:
    /// Reads the file; nothing is chosen where there is none, or where it cannot be read.
    /// @param file as userPreferencesFile() returns it; empty for none: nothing is kept then
    explicit UserPreferences(std::filesystem::path file);

    /// Reads the file again.
    void reread();

    /// The size of the window, one of kWindowSizes; nothing where none is chosen.
    std::optional<double> size() const;
    /// @param size one of kWindowSizes
    /// @throws FileError where the file cannot be written; the choice holds for this object nevertheless
    void setSize(double size);

    /// Whether the picture of the curve is folded out; not where nothing is chosen.
    bool isCurveShown() const;
    /// @throws as above
    void setCurveShown(bool isShown);

private:
    std::string valueOf(std::string_view key) const;
    void set(std::string_view key, std::string_view value);

    std::filesystem::path mFile;
    std::vector<std::string> mLines;
};

} // namespace varno

#endif
