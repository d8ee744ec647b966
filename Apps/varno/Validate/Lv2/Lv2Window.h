/// What the description of an LV2 plug-in states of its window.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_LV2WINDOW_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_LV2WINDOW_H

#include <lilv/lilv.h>
#include <string>

namespace varno::validate {

/// One that a host of X11 can open.
struct Lv2Window {
    std::string uri;
    std::string binary; ///< A path.
    std::string bundle; ///< A path that ends with a slash.
    /// Why there is none that can be opened here, empty where there is one.
    std::string obstacle;
    bool usesInstance = false; ///< It may reach for the plug-in's instance, which then must outlive it.
};

/// The first one of X11, else the reason.
Lv2Window readWindow(LilvWorld* world, const LilvPlugin* plugin);

} // namespace varno::validate

#endif
