/// What a plug-in knows of its window.
#ifndef VARNO_FORMATS_CLAP_PLUGINWINDOWBASE_H
#define VARNO_FORMATS_CLAP_PLUGINWINDOWBASE_H

#include "CLAP/Clap/Plugin.h"

namespace varno {

/// Receives the host's calls. [main]
class PluginWindowBase {
public:
    virtual ~PluginWindowBase() = default;
    /// Shows what has changed and handles what has arrived. About 30 times a second.
    virtual void turn() = 0;
    /// Whether a timer of the host's is the window's.
    virtual bool isTimer(clap_id timer) const = 0;
    /// A descriptor can be read that the window has the host watch.
    virtual void ready(int descriptor) = 0;
};

} // namespace varno

#endif
