#ifndef VARNO_APPS_VARNO_EDIT_EDITOPTIONS_H
#define VARNO_APPS_VARNO_EDIT_EDITOPTIONS_H

#include "CommandLine/CommandLine.h"
#include "Host/HostOptions.h"
#include "Session/WindowOptions.h"

#include <cstdint>
#include <optional>
#include <string>

namespace varno {

inline constexpr int kUsualChannels = 2;

/// The word of --sound for an effect without sound output.
inline constexpr const char* kSoundOff = "off";

/// The command line of `varno edit`.
struct EditOptions {
    std::optional<std::string> audio;     ///< Path; nothing: silence.
    double rateHz = kDefaultSampleRateHz; ///< Of the silence.
    int channels = kUsualChannels;        ///< Likewise.
    std::int32_t quality = 1;             ///< Factor of oversampling.
    bool acceptTruncated = false;
    std::string sound = kSoundOff; ///< A backend's word, kAnyBackend or kSoundOff.
    WindowOptions window;
};

/// @throws UsageError where a value is out of range or options contradict each other
EditOptions editOptions(const CommandLine& line);

} // namespace varno

#endif
