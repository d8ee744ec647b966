#include "Tests/Resources/Artwork/Support/Image.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace varno::test {
namespace {

// A component of sRGB as an amount of light.
double linear(double component) {
    return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
}

double luminanceOfLinear(double red, double green, double blue) {
    return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}

constexpr std::uint32_t kOpaque = 0xFF000000;

} // namespace

double luminance(Color color) {
    return luminanceOfLinear(linear(color.red), linear(color.green), linear(color.blue));
}

double contrast(Color a, Color b) {
    // Light that a screen reflects even where it is black.
    constexpr double kFlare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + kFlare) / (darker + kFlare);
}

Image Image::read(const std::filesystem::path& file) {
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> surface(
        cairo_image_surface_create_from_png(file.c_str()), &cairo_surface_destroy);
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error("cannot read " + file.string());
    }
    return of(surface.get());
}

Image Image::of(const Canvas& canvas) {
    return of(canvas.surface());
}

Image Image::of(cairo_surface_t* surface) {
    cairo_surface_flush(surface);
    const bool opaque = cairo_image_surface_get_format(surface) == CAIRO_FORMAT_RGB24;
    Image image(cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface));
    const unsigned char* const data = cairo_image_surface_get_data(surface);
    const int stride = cairo_image_surface_get_stride(surface);
    const auto width = static_cast<std::size_t>(image.mWidth);
    image.mPixels.resize(width * static_cast<std::size_t>(image.mHeight));
    for (int y = 0; y < image.mHeight; ++y) {
        std::memcpy(image.mPixels.data() + static_cast<std::size_t>(y) * width,
                    data + static_cast<std::ptrdiff_t>(y) * stride, width * sizeof(std::uint32_t));
    }
    if (opaque) {
        for (std::uint32_t& pixel : image.mPixels) {
            pixel |= kOpaque;
        }
    }
    return image;
}

double Image::alpha(int x, int y) const {
    constexpr double kFull = 255.0;
    return (at(x, y) >> 24U) / kFull;
}

// Luminances are asked for by the million: each byte is converted once.
double Image::luminance(int x, int y) const {
    static const std::array<double, 256> kLinear = [] {
        std::array<double, 256> table{};
        for (std::size_t byte = 0; byte < table.size(); ++byte) {
            table[byte] = linear(static_cast<double>(byte) / 255.0);
        }
        return table;
    }();
    const std::uint32_t pixel = at(x, y);
    return luminanceOfLinear(kLinear[(pixel >> 16U) & 0xFFU], kLinear[(pixel >> 8U) & 0xFFU],
                             kLinear[pixel & 0xFFU]);
}

std::uint32_t Image::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= mWidth || y >= mHeight) {
        throw std::out_of_range("a pixel outside of the picture");
    }
    return mPixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) +
                   static_cast<std::size_t>(x)];
}

Image Image::rows(int first, int count) const {
    if (first < 0 || count < 0 || first + count > mHeight) {
        throw std::out_of_range("rows outside of the picture");
    }
    Image part(mWidth, count);
    const auto start = mPixels.begin() + static_cast<std::ptrdiff_t>(first) * mWidth;
    part.mPixels.assign(start, start + static_cast<std::ptrdiff_t>(count) * mWidth);
    return part;
}

} // namespace varno::test
