#ifndef VARNO_APPS_VARNO_COMMANDS_EDITOPTIONS_H
#define VARNO_APPS_VARNO_COMMANDS_EDITOPTIONS_H

#include "CommandLine.h"
#include "WindowOptions.h"

#include <optional>
#include <string>

namespace varno {

/// The word of --sound for an effect that nobody hears.
inline constexpr const char* kSoundOff = "off";

/// What `varno edit` was asked to do.
struct EditOptions {
    std::optional<std::string> audio; // path; nothing: silence
    double rateHz = 48'000.0;         // of the silence
    int channels = 2;
    std::string sound = kSoundOff; // a backend's word, kAnyBackend or kSoundOff
    WindowOptions window;
};

/// @throws UsageError where a value is out of range or options contradict each other
EditOptions editOptions(const CommandLine& line);

} // namespace varno

#endif
