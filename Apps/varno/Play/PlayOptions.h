#ifndef VARNO_APPS_VARNO_PLAY_PLAYOPTIONS_H
#define VARNO_APPS_VARNO_PLAY_PLAYOPTIONS_H

#include "CommandLine/CommandLine.h"
#include "Session/LiveBackend.h"
#include "Session/WindowOptions.h"

#include <cstdint>
#include <optional>
#include <string>

namespace varno {

/// How the statistics of the blocks are printed in the end.
enum class StatisticsForm { kNone, kText, kJson };

/// The command line of `varno play`.
struct PlayOptions {
    std::string backend; ///< A backend's word, or kAnyBackend.
    LiveRequest request;
    std::int32_t quality = 1;   ///< Factor of oversampling.
    std::optional<bool> editor; ///< Nothing: where there is a display.
    bool isQuiet = false;
    StatisticsForm statistics = StatisticsForm::kNone;
    WindowOptions window;
};

/// @throws UsageError where a value is out of range or options contradict each other
PlayOptions playOptions(const CommandLine& line);

} // namespace varno

#endif
