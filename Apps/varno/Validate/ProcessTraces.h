/// What a process holds of the system, and how much memory: plug-ins must leave both as they were.
#ifndef VARNO_APPS_VARNO_VALIDATE_PROCESSTRACES_H
#define VARNO_APPS_VARNO_VALIDATE_PROCESSTRACES_H

#include "Validate/Allocations.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace varno::validate {

/// The state of this process, as named texts.
class ProcessTraces {
public:
    /// Takes it now.
    ProcessTraces();

    /// What is different now, one line each: "thread 12345 is left", "locale: was C, is de_DE". Empty where
    /// nothing is.
    std::vector<std::string> changes() const;

private:
    std::map<std::string, std::string> mTraces; ///< "descriptor 5" -> "/dev/null".
};

/// Tells growth with every round from what is taken once: where each round loses something, more than half of
/// them grow. The system's loader and allocator enlarge tables of their own now and then.
class MemoryGrowth {
public:
    /// @param rounds that will follow
    explicit MemoryGrowth(int rounds) { mBytes.reserve(static_cast<std::size_t>(rounds)); }

    /// To be called at the end of each round.
    void endRound() { mBytes.push_back(allocatedBytes()); }
    /// Bytes that a round loses; nothing where no memory is lost, or after fewer than 20 rounds.
    std::optional<std::ptrdiff_t> bytesPerRound() const;

private:
    std::vector<std::ptrdiff_t> mBytes; ///< After each round.
};

} // namespace varno::validate

#endif
