#pragma once

#include "AtomicFile.h"
#include "CommandLine.h"

#include <optional>
#include <string>

namespace varno {

/// What `varno edit` was asked to do.
struct EditOptions {
    std::optional<std::string> audio; // path; nothing: silence
    double rateHz = 48'000.0;         // of the silence
    int channels = 2;
    std::optional<double> scale; // nothing: the desktop's
    std::optional<std::string> state;
    std::optional<std::string> saveState; // paths
    std::optional<std::string> screenshot;
    double afterS = 0.5; // until the screenshot
    Overwrite overwrite = Overwrite::kRefuse;
};

/// @throws UsageError where a value is out of range or options contradict each other
EditOptions editOptions(const CommandLine& line);

} // namespace varno
