/// What varno doctor finds of one part of the effect or of the machine.
#ifndef VARNO_APPS_VARNO_DOCTOR_FINDING_H
#define VARNO_APPS_VARNO_DOCTOR_FINDING_H

#include <optional>
#include <string>
#include <string_view>

namespace varno {

enum class PartState {
    kGood,
    kMissing, ///< Not installed, not running, not there.
    kFailing, ///< There, and of no use.
};

struct Finding {
    std::string part; ///< "JACK".
    PartState state = PartState::kGood;
    std::string detail = {}; ///< Where and what it is, or why not. One line.
    std::string package =
        {}; ///< The Debian package that brings what is missing; empty where none would help.
};

/// The word for a state: "ok", "missing" or "fails". [any]
std::string_view stateWord(PartState state);

/// A finding as one line, as varno-window writes it for varno: its members with a tab between them, ended by
/// a line feed. Control characters within them become blanks. [any]
std::string findingLine(const Finding& finding);

/// The finding of such a line without its end; nothing where it is none. [any]
std::optional<Finding> findingOf(std::string_view line);

} // namespace varno

#endif
