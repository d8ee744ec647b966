#ifndef VARNO_APPS_VARNO_COMMANDS_PLAYOPTIONS_H
#define VARNO_APPS_VARNO_COMMANDS_PLAYOPTIONS_H

#include "BackendChoice.h"
#include "CommandLine.h"
#include "WindowOptions.h"

#include <optional>
#include <string>

namespace varno {

/// What `varno play` was asked to do.
struct PlayOptions {
    std::string backend; // a backend's word, or kAnyBackend
    LiveRequest request;
    std::optional<bool> editor; // nothing: where there is a display
    bool isQuiet = false;
    WindowOptions window;
};

/// @throws UsageError where a value is out of range or options contradict each other
PlayOptions playOptions(const CommandLine& line);

} // namespace varno

#endif
