/// The features that a host offers to a window.
#ifndef VARNO_FORMATS_LV2_UI_HOSTOFFER_H
#define VARNO_FORMATS_LV2_UI_HOSTOFFER_H

#include "LV2/HostFeatures.h"

#include <lv2/ui/ui.h>

#include <optional>
#include <string>
#include <xcb/xcb.h>

namespace varno {

/// Read from the list of features; what is borrowed from it stays for the window's life.
struct HostOffer {
    xcb_window_t parent = XCB_WINDOW_NONE; ///< The host's window to be in; none where it has none to offer.
    const LV2UI_Resize* resize = nullptr;  ///< Borrowed; null, or with a function.
    const LV2UI_Touch* touch = nullptr;    ///< Borrowed; null, or with a function.
    std::optional<double> scale;           ///< The host's factor, where it is valid.
    std::optional<double> rateHz;          ///< Of the plug-in's sound.
    std::string title;                     ///< For a window of its own; empty for none.
};

/// Takes what is there and can be used. [main]
HostOffer readHostOffer(const HostFeatures& features);

} // namespace varno

#endif
