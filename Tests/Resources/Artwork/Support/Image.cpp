#include "Tests/Resources/Artwork/Support/Image.h"

#include <algorithm>
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

} // namespace

double luminance(Color color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
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
    constexpr double kFull = 255.0;
    for (int y = 0; y < image.mHeight; ++y) {
        for (int x = 0; x < image.mWidth; ++x) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel,
                        data + static_cast<std::ptrdiff_t>(y) * stride + static_cast<std::ptrdiff_t>(x) * 4,
                        sizeof pixel);
            image.mPixels.push_back({rgb(pixel), opaque ? 1.0 : (pixel >> 24U) / kFull});
        }
    }
    return image;
}

const Image::Pixel& Image::at(int x, int y) const {
    if (x < 0 || y < 0 || x >= mWidth || y >= mHeight) {
        throw std::out_of_range("a pixel outside of the picture");
    }
    return mPixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(mWidth) +
                   static_cast<std::size_t>(x)];
}

Image Image::picture(int n, int count) const {
    Image part(mWidth, mHeight / count);
    const auto size = static_cast<std::ptrdiff_t>(part.mWidth) * part.mHeight;
    part.mPixels.assign(mPixels.begin() + n * size, mPixels.begin() + (n + 1) * size);
    return part;
}

bool operator==(const Image& a, const Image& b) {
    const auto same = [](const Image::Pixel& p, const Image::Pixel& q) {
        return p.color.red == q.color.red && p.color.green == q.color.green && p.color.blue == q.color.blue &&
               p.alpha == q.alpha;
    };
    return a.mWidth == b.mWidth &&
           std::equal(a.mPixels.begin(), a.mPixels.end(), b.mPixels.begin(), b.mPixels.end(), same);
}

} // namespace varno::test
