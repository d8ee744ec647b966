#include "Tests/Support/Picture.h"

#include "Tests/Support/Eventually.h"

#include <algorithm>
#include <cstring>
#include <set>
#include <stdexcept>

namespace varno::test {

namespace {

constexpr std::uint32_t kColourBits = 0x00FFFFFF;

} // namespace

Picture::Picture(int width, int height, std::vector<std::uint32_t> pixels)
    : mWidth(width),
      mHeight(height),
      mPixels(std::move(pixels)) {
    if (mPixels.size() != static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        throw std::invalid_argument("a picture of another size than its pixels");
    }
}

Picture Picture::ofWindow(const XClient& client, xcb_window_t window, const Area& area) {
    eventually([&] { return client.isShown(window); });
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        client.connection(),
        xcb_get_image(client.connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                      static_cast<std::int16_t>(area.x), static_cast<std::int16_t>(area.y),
                      static_cast<std::uint16_t>(area.width), static_cast<std::uint16_t>(area.height), ~0U),
        nullptr));
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width) *
                                      static_cast<std::size_t>(area.height));
    const std::size_t bytes = pixels.size() * sizeof pixels[0];
    if (reply == nullptr || static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) != bytes) {
        throw std::runtime_error("that part of the window is not to be seen");
    }
    std::memcpy(pixels.data(), xcb_get_image_data(reply.get()), bytes);
    for (std::uint32_t& pixel : pixels) {
        pixel &= kColourBits;
    }
    return {area.width, area.height, std::move(pixels)};
}

std::uint32_t Picture::at(Place place) const {
    if (!Area{0, 0, mWidth, mHeight}.holds({place.x, place.y, 1, 1})) {
        throw std::out_of_range("outside of the picture");
    }
    return mPixels[static_cast<std::size_t>(place.y) * static_cast<std::size_t>(mWidth) +
                   static_cast<std::size_t>(place.x)];
}

Picture Picture::part(const Area& area) const {
    std::vector<std::uint32_t> pixels;
    for (int y = area.y; y < area.y + area.height; ++y) {
        for (int x = area.x; x < area.x + area.width; ++x) {
            pixels.push_back(at({x, y}));
        }
    }
    return {area.width, area.height, std::move(pixels)};
}

std::size_t Picture::countColours() const {
    return std::set<std::uint32_t>(mPixels.begin(), mPixels.end()).size();
}

int channelDifference(std::uint32_t one, std::uint32_t other) {
    constexpr std::uint32_t kChannel = 0xFF;
    int largest = 0;
    for (const std::uint32_t shift : {0U, 8U, 16U}) {
        const int difference =
            static_cast<int>((one >> shift) & kChannel) - static_cast<int>((other >> shift) & kChannel);
        largest = std::max(largest, std::abs(difference));
    }
    return largest;
}

int largestDifference(const Picture& one, const Picture& other) {
    constexpr int kLargest = 255;
    if (one.width() != other.width() || one.height() != other.height()) {
        return kLargest;
    }
    int largest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            largest = std::max(largest, channelDifference(one.at({x, y}), other.at({x, y})));
        }
    }
    return largest;
}

Picture softened(const Picture& picture) {
    constexpr int kAround = 1;
    constexpr unsigned kChannels[] = {0, 8, 16};
    constexpr std::uint32_t kMost = 0xFF;
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            std::uint32_t pixel = 0;
            for (const unsigned channel : kChannels) {
                std::uint32_t sum = 0;
                std::uint32_t count = 0;
                for (int j = std::max(y - kAround, 0); j <= std::min(y + kAround, picture.height() - 1);
                     ++j) {
                    for (int i = std::max(x - kAround, 0); i <= std::min(x + kAround, picture.width() - 1);
                         ++i) {
                        sum += picture.at({i, j}) >> channel & kMost;
                        ++count;
                    }
                }
                pixel |= sum / count << channel;
            }
            pixels.push_back(pixel);
        }
    }
    return {picture.width(), picture.height(), std::move(pixels)};
}

std::optional<Area> differingArea(const Picture& one, const Picture& other) {
    std::optional<Area> area;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.at({x, y}) == other.at({x, y})) {
                continue;
            }
            if (!area) {
                area = Area{x, y, 0, 0};
            }
            const int right = std::max(area->x + area->width, x + 1);
            area->x = std::min(area->x, x);
            area->width = right - area->x;
            area->height = y + 1 - area->y;
        }
    }
    return area;
}

} // namespace varno::test
