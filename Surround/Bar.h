/// The bar above the editor: buttons, meters and messages.
#ifndef VARNO_SURROUND_BAR_H
#define VARNO_SURROUND_BAR_H

#include "Surround/BarLayout.h"
#include "Surround/BarState.h"
#include "Toolkit/WidgetFrame.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace varno {

/// Draws the bar in a window and reports what is pressed. It shows what it is given: a press alone changes
/// nothing in it. [main]
class Bar {
public:
    using Pressed = std::function<void(BarLayout::Button)>;

    /// Nothing is open. @param pressed called for each completed click of the left mouse button
    explicit Bar(Pressed pressed);
    Bar(const Bar&) = delete;
    Bar& operator=(const Bar&) = delete;
    ~Bar();

    /// See WidgetFrame.
    bool open(std::uint32_t window, double scale);
    void setScale(double scale);

    /// Shows another state; what has not changed is not drawn again.
    void show(const BarState& state);
    void show(const BarMeters& meters);

private:
    struct Widgets;

    WidgetFrame mFrame;
    std::unique_ptr<Widgets> mWidgets;
};

} // namespace varno

#endif
