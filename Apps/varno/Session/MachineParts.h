/// Of the machine: its display and its sound systems, as the commands with a window find them.
#ifndef VARNO_APPS_VARNO_SESSION_MACHINEPARTS_H
#define VARNO_APPS_VARNO_SESSION_MACHINEPARTS_H

#include "Doctor/Finding.h"
#include "Session/JackBackend.h"
#include "Session/RtAudioBackend.h"

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

/// The X server, the size of its screen and the scale of windows on it. [main]
/// @param display as DISPLAY has it; empty for none
/// @param gdkScale as GDK_SCALE has it; nothing where it is not set
Finding displayFinding(const std::string& display, const std::optional<std::string>& gdkScale);

/// JACK, by a client of its own that no server is started for. [main]
/// @param load throws SoundUnavailable where the library is not installed
Finding jackFinding(JackFunctions (*load)());

/// A sound system that RtAudio knows, by its devices. [main]
/// @param part its name @param load throws SoundUnavailable where the library is not installed
Finding rtAudioFinding(const std::string& part, rtaudio_api_t api, RtAudioFunctions (*load)());

/// A server by the socket that its clients connect to. [main]
/// @param socket a relative path counts as none
/// @param package the Debian package of the server, and @param command what it installs into PATH
Finding socketFinding(const std::string& part, const std::filesystem::path& socket,
                      const std::string& package, const std::string& command);

} // namespace varno

#endif
