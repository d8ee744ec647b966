#include "Session/LiveBackend.h"

#include "CommandLine/LibraryMessages.h"
#include "Session/JackBackend.h"
#include "Session/RtAudioBackend.h"

namespace varno {
namespace {

constexpr BackendEntry kBackends[] = {
    {"jack", "JACK",
     [](const LiveRequest& request) -> std::unique_ptr<LiveBackend> {
         return std::make_unique<JackBackend>(loadJack(), request);
     }},
    {"rtaudio", "RtAudio",
     [](const LiveRequest& request) -> std::unique_ptr<LiveBackend> {
         return std::make_unique<RtAudioBackend>(loadRtAudio(), request);
     }},
};

} // namespace

std::span<const BackendEntry> backends() {
    return kBackends;
}

std::unique_ptr<LiveBackend> openBackend(std::string_view word, const LiveRequest& request,
                                         std::span<const BackendEntry> entries) {
    const LibrariesSilenced whileTheyAreTried;
    std::string refusals;
    for (const auto& entry : entries) {
        if (word != kAnyBackend && word != entry.word) {
            continue;
        }
        try {
            return entry.open(request);
        } catch (const SoundUnavailable& refusal) {
            refusals += (refusals.empty() ? "" : "; ") + std::string(entry.name) + ": " + refusal.what();
        }
    }
    throw SoundUnavailable("no sound system can be had (" + refusals + ')');
}

} // namespace varno
