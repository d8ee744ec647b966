/// Places, sizes and rectangles, in pixels of the screen.
#ifndef VARNO_WINDOW_GEOMETRY_H
#define VARNO_WINDOW_GEOMETRY_H

namespace varno {

/// Pixels to the right of and below the top left corner of a window, or of the screen (its root window).
struct WindowPlace {
    int x = 0;
    int y = 0;

    bool operator==(const WindowPlace&) const = default;
};

/// Pixels.
struct WindowSize {
    int width = 0;
    int height = 0;

    bool operator==(const WindowSize&) const = default;
};

/// A rectangle in a window or on the screen. [any]
struct WindowArea {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool operator==(const WindowArea&) const = default;
    int right() const { return x + width; }
    int bottom() const { return y + height; }
    WindowSize size() const { return {width, height}; }
    bool contains(WindowPlace place) const {
        return place.x >= x && place.x < right() && place.y >= y && place.y < bottom();
    }
};

} // namespace varno

#endif
