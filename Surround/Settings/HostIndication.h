/// What a front end's host has a plug-in show beside a parameter.
#ifndef VARNO_SURROUND_SETTINGS_HOSTINDICATION_H
#define VARNO_SURROUND_SETTINGS_HOSTINDICATION_H

#include <cstdint>
#include <optional>
#include <string>

namespace varno {

/// What the host does with a parameter. Plain data.
struct HostIndication {
    enum class Automation {
        kNone,
        kPresent, ///< There is one, which is not played.
        kPlaying,
        kRecording,
        kOverridden, ///< It would play, but the user has moved the control.
    };

    bool isMapped = false;     ///< To a control of the host's.
    std::string controller{};  ///< Its short name, a line of UTF-8; empty for none.
    std::string mappingText{}; ///< What the host says about it, likewise.
    Automation automation = Automation::kNone;
    std::optional<std::uint32_t> mappingColour{}; ///< 0xRRGGBB; nothing where the host names none.
    std::optional<std::uint32_t> automationColour{};

    bool operator==(const HostIndication&) const = default;
};

/// Sentences that say it: "Automation is played. Mapped to CC 7."; empty for nothing. [any]
std::string indicationText(const HostIndication& indication);

} // namespace varno

#endif
