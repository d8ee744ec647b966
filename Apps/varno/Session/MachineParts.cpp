#include "Session/MachineParts.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/LibraryMessages.h"
#include "Session/LiveBackend.h"
#include "Surround/Settings/NumberText.h"
#include "Window/DesktopSettings.h"
#include "Window/Monitors.h"
#include "WindowCommands.h"

#include <algorithm>
#include <sstream>
#include <sys/socket.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr const char* kJackLibraryPackage = "libjack-jackd2-0";
constexpr const char* kJackServerPackage = "jackd2";

// Debian names the package of a library by the number of its binary interface: librtaudio.so.6 is in
// librtaudio6.
std::string rtAudioPackage() {
    std::string name = VARNO_RTAUDIO_SONAME;
    name.erase(name.find(".so."), std::string_view(".so.").size());
    return name;
}

bool isInPath(const std::string& command) {
    std::istringstream path(environmentVariable("PATH"));
    for (std::string folder; std::getline(path, folder, ':');) {
        if (::access((fs::path(folder) / command).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

// A server that is not there: a package helps only where it is not installed.
Finding noServer(const std::string& part, const std::string& reason, const std::string& package,
                 const std::string& command) {
    return {part, PartState::kMissing, reason, isInPath(command) ? "" : package};
}

bool connects(const fs::path& socket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = socket.string();
    if (path.size() >= sizeof address.sun_path) {
        return false;
    }
    std::ranges::copy(path, address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    const bool isConnected =
        descriptor >= 0 &&
        ::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    return isConnected;
}

// The folder of a server's socket: the one that is named for it, else the session's, in which it has a name.
fs::path socketFolder(const char* variable, const char* inSession) {
    const auto named = environmentVariable(variable);
    return named.empty() ? fs::path(environmentVariable("XDG_RUNTIME_DIR")) / inSession : fs::path(named);
}

Finding pipeWireFinding() {
    return socketFinding("PipeWire", socketFolder("PIPEWIRE_RUNTIME_DIR", "") / "pipewire-0", "pipewire",
                         "pipewire");
}

// The library starts a server where none runs: so its socket is tried before.
Finding pulseFinding() {
    if (environmentVariable("PULSE_SERVER").empty()) {
        const auto socket = socketFolder("PULSE_RUNTIME_PATH", "pulse") / "native";
        if (auto finding = socketFinding("PulseAudio", socket, "pulseaudio", "pulseaudio");
            finding.state != PartState::kGood) {
            return finding;
        }
    }
    return rtAudioFinding("PulseAudio", RTAUDIO_API_LINUX_PULSE, loadRtAudio);
}

} // namespace

Finding displayFinding(const std::string& display, const std::optional<std::string>& gdkScale) {
    try {
        XConnection connection(display);
        const auto& screen = connection.screen();
        const DesktopSettings settings(connection, gdkScale);
        return {.part = "display",
                .detail = display + ", " + std::to_string(screen.width_in_pixels) + " x " +
                          std::to_string(screen.height_in_pixels) +
                          " pixels, monitors: " + std::to_string(monitors(connection).size()) + ", scale " +
                          textFromNumber(settings.scale())};
    } catch (const WindowError& error) {
        return {"display", display.empty() ? PartState::kMissing : PartState::kFailing, error.what(), ""};
    }
}

Finding jackFinding(JackFunctions (*load)()) {
    std::optional<JackFunctions> jack;
    try {
        jack = load();
        const JackBackend client(*jack, {.name = "varno-doctor", .inputs = 0, .outputs = 1});
        return {.part = "JACK",
                .detail = textFromNumber(client.status().rateHz()) + " Hz, period " +
                          std::to_string(client.status().blockFrames()) + " frames"};
    } catch (const SoundUnavailable& refusal) {
        return jack ? noServer("JACK", refusal.what(), kJackServerPackage, "jackd")
                    : Finding{"JACK", PartState::kMissing, refusal.what(), kJackLibraryPackage};
    }
}

Finding rtAudioFinding(const std::string& part, rtaudio_api_t api, RtAudioFunctions (*load)()) {
    try {
        const RtAudioFunctions audio = load();
        auto* const system = audio.create(api);
        if (system == nullptr) {
            return {part, PartState::kFailing, "not known to RtAudio", ""};
        }
        const bool isKnown = audio.current_api(system) == api;
        audio.show_warnings(system, 0);
        const int devices = isKnown ? audio.device_count(system) : 0;
        audio.destroy(system);
        if (!isKnown) {
            return {part, PartState::kFailing, "not known to RtAudio", ""};
        }
        return devices > 0 ? Finding{.part = part, .detail = "devices: " + std::to_string(devices)}
                           : Finding{part, PartState::kMissing, "no device", ""};
    } catch (const SoundUnavailable& refusal) {
        return {part, PartState::kMissing, refusal.what(), rtAudioPackage()};
    }
}

Finding socketFinding(const std::string& part, const fs::path& socket, const std::string& package,
                      const std::string& command) {
    if (!socket.is_absolute()) {
        return noServer(part, "XDG_RUNTIME_DIR is not set; expected the folder of the session's sockets",
                        package, command);
    }
    return connects(socket) ? Finding{.part = part, .detail = socket.string()}
                            : noServer(part, "no server answers at " + socket.string(), package, command);
}

int answerDoctor(const CommandLine&) {
    const auto print = [](const Finding& finding) { printOut(findingLine(finding)); };
    const std::string gdkScale = environmentVariable("GDK_SCALE");
    print(displayFinding(environmentVariable("DISPLAY"),
                         gdkScale.empty() ? std::nullopt : std::optional(gdkScale)));
    const LibrariesSilenced whileTheyAreTried;
    print(jackFinding(loadJack));
    print(pipeWireFinding());
    print(pulseFinding());
    print(rtAudioFinding("ALSA", RTAUDIO_API_LINUX_ALSA, loadRtAudio));
    return kExitSuccess;
}

} // namespace varno
