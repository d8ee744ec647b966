#include "Surround/Settings/HostIndication.h"

namespace varno {
namespace {

const char* automationText(HostIndication::Automation automation) {
    switch (automation) {
    case HostIndication::Automation::kPresent:
        return "Has automation, which is not played.";
    case HostIndication::Automation::kPlaying:
        return "Automation is played.";
    case HostIndication::Automation::kRecording:
        return "Automation is recorded.";
    case HostIndication::Automation::kOverridden:
        return "Automation is overridden.";
    case HostIndication::Automation::kNone:
        break;
    }
    return "";
}

std::string mappingText(const HostIndication& indication) {
    if (!indication.isMapped) {
        return {};
    }
    std::string text = indication.controller.empty() ? "Mapped" : "Mapped to " + indication.controller;
    if (!indication.mappingText.empty()) {
        text += ": " + indication.mappingText;
    }
    return text.ends_with('.') ? text : text + '.';
}

} // namespace

std::string indicationText(const HostIndication& indication) {
    const std::string automation = automationText(indication.automation);
    const std::string mapping = mappingText(indication);
    return automation + (automation.empty() || mapping.empty() ? "" : " ") + mapping;
}

} // namespace varno
