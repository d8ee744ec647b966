#include "Window/WindowIcon.h"

#include "Window/CairoSurface.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr const char* kIconFolder = "icons";
constexpr const char* kIconFile = "varno-s.png";

constexpr int kByteBits = 8;
constexpr std::uint32_t kByteMask = 0xFF;
constexpr int kAlphaShift = 24;

// Cairo's pixels have their alpha multiplied in; the desktop wants them without.
std::uint32_t straightAlpha(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> kAlphaShift;
    if (alpha == 0) {
        return 0;
    }
    std::uint32_t result = alpha << kAlphaShift;
    for (int shift = 0; shift < kAlphaShift; shift += kByteBits) {
        const std::uint32_t colour = (pixel >> shift) & kByteMask;
        result |= std::min((colour * kByteMask + alpha / 2) / alpha, kByteMask) << shift;
    }
    return result;
}

void append(std::vector<std::uint32_t>& icon, cairo_surface_t* picture) {
    const int width = cairo_image_surface_get_width(picture);
    const int height = cairo_image_surface_get_height(picture);
    const bool isOpaque = cairo_image_surface_get_format(picture) == CAIRO_FORMAT_RGB24;
    icon.push_back(static_cast<std::uint32_t>(width));
    icon.push_back(static_cast<std::uint32_t>(height));
    std::vector<std::uint32_t> row(static_cast<std::size_t>(width));
    for (int y = 0; y < height; ++y) {
        std::memcpy(row.data(),
                    cairo_image_surface_get_data(picture) + y * cairo_image_surface_get_stride(picture),
                    row.size() * sizeof row[0]);
        for (const auto pixel : row) {
            icon.push_back(isOpaque ? pixel | kByteMask << kAlphaShift : straightAlpha(pixel));
        }
    }
}

bool hasWordPixels(cairo_surface_t* picture) {
    const auto format = cairo_image_surface_get_format(picture);
    return cairo_surface_status(picture) == CAIRO_STATUS_SUCCESS &&
           (format == CAIRO_FORMAT_ARGB32 || format == CAIRO_FORMAT_RGB24);
}

} // namespace

std::vector<std::uint32_t> windowIcon(const fs::path& resources) {
    std::vector<std::uint32_t> icon;
    if (resources.empty()) {
        return icon;
    }
    std::error_code error;
    for (const auto& size : fs::directory_iterator(resources / kIconFolder, error)) {
        const CairoSurface picture(cairo_image_surface_create_from_png((size.path() / kIconFile).c_str()));
        if (hasWordPixels(picture.get())) {
            append(icon, picture.get());
        }
    }
    return icon;
}

} // namespace varno
