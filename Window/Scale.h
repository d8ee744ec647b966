/// By how much a desktop enlarges what it shows. Needs nothing of X.
#ifndef VARNO_WINDOW_SCALE_H
#define VARNO_WINDOW_SCALE_H

#include <optional>
#include <string_view>

namespace varno {

/// The smallest and largest factor by which a desktop enlarges what it shows.
inline constexpr double kSmallestScale = 0.5;
inline constexpr double kLargestScale = 8.0;

/// Whether a number can be the factor of a desktop. [any]
constexpr bool isScale(double factor) {
    return factor >= kSmallestScale && factor <= kLargestScale;
}

/// The scale of a desktop: that of GDK_SCALE, which a user sets for one program; else the dots per inch of
/// the desktop's settings (Xft/DPI), else of the X resource Xft.dpi, over the 96 of the plain size; else 1. A
/// value that is no number or outside the range of scales counts as not set. [any]
/// @param gdkScale the environment variable, nothing where it is not set
/// @param resources as the display's RESOURCE_MANAGER property has them: lines of "name:\tvalue"
/// @param settings as the manager's _XSETTINGS_SETTINGS property has them, in XSETTINGS' binary form; empty
/// without a manager
double desktopScale(std::optional<std::string_view> gdkScale, std::string_view resources,
                    std::string_view settings = {});

} // namespace varno

#endif
