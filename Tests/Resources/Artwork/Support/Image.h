/// A picture as pixels.
#ifndef VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_IMAGE_H
#define VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_IMAGE_H

#include "Artwork/Painter.h"

#include <cstdint>
#include <filesystem>
#include <vector>

namespace varno::test {

/// Relative luminance as WCAG 2 defines it: black is 0, white 1.
double luminance(Color color);

/// Contrast of two colours as WCAG 2 defines it: 1 (none) to 21 (black and white).
double contrast(Color a, Color b);

/// The pixels of a PNG file or of a canvas. Half-transparent ones are taken as lying on black.
class Image {
public:
    /// Throws std::runtime_error where the file cannot be read.
    static Image read(const std::filesystem::path& file);
    static Image of(const Canvas& canvas);

    int width() const { return mWidth; }
    int height() const { return mHeight; }
    Color color(int x, int y) const { return rgb(at(x, y)); }
    double alpha(int x, int y) const;
    double luminance(int x, int y) const;
    /// Whether a pixel is the same in another picture of this size.
    bool isSame(const Image& other, int x, int y) const { return at(x, y) == other.at(x, y); }
    /// The rows from `first` on.
    Image rows(int first, int count) const;

    friend bool operator==(const Image& a, const Image& b) = default;

private:
    Image(int width, int height)
        : mWidth(width),
          mHeight(height) {}
    static Image of(cairo_surface_t* surface);
    std::uint32_t at(int x, int y) const;

    int mWidth;
    int mHeight;
    std::vector<std::uint32_t> mPixels; // 0xAARRGGBB, premultiplied
};

} // namespace varno::test

#endif
