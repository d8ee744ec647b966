/// The inline display of Harrison's extension for LV2, as Ardour shows it in a mixer's strip: the gain
/// reduction as a bar.
#ifndef VARNO_FORMATS_LV2_INLINEDISPLAY_H
#define VARNO_FORMATS_LV2_INLINEDISPLAY_H

#include <atomic>
#include <cstdint>
#include <lv2/core/lv2.h>
#include <vector>

// What is used of the extension, under its own names.

inline constexpr const char* LV2_INLINEDISPLAY__interface =
    "http://harrisonconsoles.com/lv2/inlinedisplay#interface";
inline constexpr const char* LV2_INLINEDISPLAY__queue_draw =
    "http://harrisonconsoles.com/lv2/inlinedisplay#queue_draw";

/// A picture: 32 bits of each pixel as a number are alpha, red, green and blue, premultiplied.
struct LV2_Inline_Display_Image_Surface {
    unsigned char* data;
    int width;  ///< pixels
    int height; ///< pixels
    int stride; ///< bytes from row to row
};

/// What a plug-in offers as extension data.
struct LV2_Inline_Display_Interface {
    /// Draws a picture of at most that size, in pixels. It remains the plug-in's, and valid until the next
    /// call. Null where there is none. On the host's thread for windows, beside run().
    LV2_Inline_Display_Image_Surface* (*render)(LV2_Handle instance, std::uint32_t width,
                                                std::uint32_t mostHeight);
};

/// What a host offers as a feature.
struct LV2_Inline_Display {
    void* handle;
    /// Has the host call render() later. To be called within run(), too.
    void (*queue_draw)(void* handle);
};

namespace varno {

/// Draws the gain reduction of one plug-in: a bar from the right, as long as the editor's meter is.
class InlineDisplay {
public:
    /// @param host what the host offers, borrowed as long as this object; null for nothing [main]
    explicit InlineDisplay(const LV2_Inline_Display* host) noexcept
        : mHost(host) {}

    /// Takes what a meter shows, 0 to 1, and has the host draw where one sees the difference. [audio]
    void show(float reduction) noexcept;

    /// The picture of what was taken last; null for one without pixels, or where there is no memory. [main]
    LV2_Inline_Display_Image_Surface* render(std::uint32_t width, std::uint32_t mostHeight) noexcept;

private:
    const LV2_Inline_Display* mHost;
    std::atomic<float> mLength = 0.0F; ///< Of the bar, 0 to 1.
    float mQueued = 0.0F;              ///< The last one that the host was to draw.
    std::vector<std::uint32_t> mPixels;
    LV2_Inline_Display_Image_Surface mSurface{};
};

} // namespace varno

#endif
