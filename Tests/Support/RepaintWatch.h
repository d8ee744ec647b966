/// What is drawn anew in a window.
#ifndef VARNO_TEST_REPAINTWATCH_H
#define VARNO_TEST_REPAINTWATCH_H

#include "XClient.h"

#include <vector>
#include <xcb/damage.h>

namespace varno::test {

/// Tells everything that is drawn in a window and in those inside of it, whether or not it changes a pixel.
class RepaintWatch {
public:
    /// The window must outlive the watch.
    RepaintWatch(const XClient& client, xcb_window_t window);
    RepaintWatch(const RepaintWatch&) = delete;
    RepaintWatch& operator=(const RepaintWatch&) = delete;
    ~RepaintWatch();

    /// The rectangles drawn since the last call, in the window's own pixels.
    std::vector<Area> take();

private:
    const XClient& mClient;
    xcb_damage_damage_t mDamage;
    uint8_t mNotify; ///< The number of the event.
};

} // namespace varno::test

#endif
