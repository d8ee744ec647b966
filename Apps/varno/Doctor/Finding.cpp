#include "Doctor/Finding.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace varno {
namespace {

constexpr char kBetweenMembers = '\t';
constexpr std::size_t kMembers = 4;
// In the order of the states.
constexpr std::string_view kStateWords[] = {"ok", "missing", "fails"};

std::string withoutControls(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' '; }, ' ');
    return text;
}

} // namespace

std::string_view stateWord(PartState state) {
    return kStateWords[static_cast<std::size_t>(state)];
}

std::string findingLine(const Finding& finding) {
    return withoutControls(finding.part) + kBetweenMembers + std::string(stateWord(finding.state)) +
           kBetweenMembers + withoutControls(finding.detail) + kBetweenMembers +
           withoutControls(finding.package) + '\n';
}

std::optional<Finding> findingOf(std::string_view line) {
    if (std::ranges::count(line, kBetweenMembers) != kMembers - 1) {
        return std::nullopt;
    }
    std::array<std::string, kMembers> members;
    for (auto& member : members) {
        const auto end = std::min(line.find(kBetweenMembers), line.size());
        member = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    const auto* const word = std::ranges::find(kStateWords, members[1]);
    if (word == std::end(kStateWords)) {
        return std::nullopt;
    }
    return Finding{.part = members[0],
                   .state = static_cast<PartState>(word - std::begin(kStateWords)),
                   .detail = members[2],
                   .package = members[3]};
}

} // namespace varno
