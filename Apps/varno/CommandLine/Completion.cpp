#include "CommandLine/Completion.h"

namespace varno {

std::string actionOf(ValueKind kind, const std::string& choices, const ValueActions& actions) {
    switch (kind) {
    case ValueKind::kFile:
        return std::string(actions.files);
    case ValueKind::kDirectory:
        return std::string(actions.folders);
    case ValueKind::kChoice:
        return choices;
    case ValueKind::kParameter:
        return std::string(actions.parameters);
    case ValueKind::kSetting:
        return std::string(actions.settings);
    case ValueKind::kPreset:
        return std::string(actions.presets);
    case ValueKind::kText:
    case ValueKind::kNumber:
    case ValueKind::kNone:
        break;
    }
    return std::string(actions.nothing);
}

std::string_view firstSentence(std::string_view text) {
    const auto end = text.find(". ");
    if (end != std::string_view::npos) {
        return text.substr(0, end);
    }
    return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

} // namespace varno
