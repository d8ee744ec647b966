/// What a window shows.
#ifndef VARNO_TESTS_SUPPORT_PICTURE_H
#define VARNO_TESTS_SUPPORT_PICTURE_H

#include "Tests/Support/XClient.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace varno::test {

/// Opaque pixels, 8 bits each of red, green and blue.
class Picture {
public:
    Picture() = default;
    /// @param pixels 0x00RRGGBB, row by row; as many as the size says
    Picture(int width, int height, std::vector<std::uint32_t> pixels);

    /// A part of a window that is seen on the screen, with the windows in it. Waits until the window is
    /// shown: the server may carry out requests of this client before earlier ones of that which shows it.
    /// Throws std::runtime_error where the window does not show that part.
    static Picture ofWindow(const XClient& client, xcb_window_t window, const Area& area);

    int width() const { return mWidth; }
    int height() const { return mHeight; }
    /// 0x00RRGGBB.
    std::uint32_t at(Place place) const;
    Picture part(const Area& area) const;
    /// How many colours there are in it.
    std::size_t countColours() const;

    bool operator==(const Picture&) const = default;

private:
    int mWidth = 0;
    int mHeight = 0;
    std::vector<std::uint32_t> mPixels;
};

/// The largest difference between a channel of two colours.
int channelDifference(std::uint32_t one, std::uint32_t other);
/// The largest difference between a channel of two pictures' pixels; 255 where their sizes differ.
int largestDifference(const Picture& one, const Picture& other);
/// The picture with each pixel the mean of those around it and itself.
Picture softened(const Picture& picture);
/// The smallest rectangle that holds every difference between two pictures of one size; none where there is
/// none.
std::optional<Area> differingArea(const Picture& one, const Picture& other);

} // namespace varno::test

#endif
