#include "CommandLine/Completion.h"

namespace varno {

std::string_view firstSentence(std::string_view text) {
    const auto end = text.find(". ");
    if (end != std::string_view::npos) {
        return text.substr(0, end);
    }
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

} // namespace varno
