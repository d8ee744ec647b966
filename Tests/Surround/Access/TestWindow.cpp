#include "Tests/Surround/Access/TestWindow.h"

#include <functional>
#include <stdexcept>

namespace varno::test {

TestWindow::TestWindow() {
    AccessNode gain{
        .id = "Gain", .role = AccessRole::kDial, .name = "Gain", .description = "How loud it is."};
    gain.valueText = "-3.0 dB";
    gain.range = AccessRange{-24.0, 24.0, 0.5, -3.0};
    gain.isTextSettable = true;
    gain.states.isFocusable = true;
    gain.rectangle = {110, 220, 40, 40};
    AccessNode high{.id = "HP", .role = AccessRole::kToggleButton, .name = "High-pass", .action = "toggle"};
    high.rectangle = {200, 220, 30, 20};
    AccessNode panel{.id = "panel", .name = "Effect"};
    panel.rectangle = {100, 200, 300, 100};
    panel.children = {gain, high};
    AccessNode meter{.id = "meter", .role = AccessRole::kLevelBar, .name = "Output", .valueText = "-12.0 dB"};
    meter.range = AccessRange{-60.0, 0.0, 0.0, -12.0};
    AccessNode message{.id = "message", .role = AccessRole::kStatusBar};
    root = {.id = "window", .role = AccessRole::kWindow, .name = "Effect of a test"};
    root.rectangle = {90, 150, 320, 200};
    root.children = {panel, meter, message};
}

AccessNode& TestWindow::part(const std::string& id) {
    const std::function<AccessNode*(AccessNode&)> find = [&](AccessNode& node) -> AccessNode* {
        if (node.id == id) {
            return &node;
        }
        for (AccessNode& child : node.children) {
            if (AccessNode* const found = find(child)) {
                return found;
            }
        }
        return nullptr;
    };
    AccessNode* const found = find(root);
    return found != nullptr ? *found : throw std::out_of_range(id);
}

bool TestWindow::setValue(const std::string& id, double value) {
    notes.push_back(id + " = " + std::to_string(value));
    if (isWilling) {
        part(id).range->current = value;
        part(id).valueText = std::to_string(value) + " dB";
    }
    return isWilling;
}

bool TestWindow::setValueText(const std::string& id, const std::string& text) {
    notes.push_back(id + " = \"" + text + '"');
    if (isWilling) {
        part(id).valueText = text;
    }
    return isWilling;
}

bool TestWindow::press(const std::string& id) {
    notes.push_back(id + " pressed");
    if (isWilling) {
        part(id).states.isChecked = !part(id).states.isChecked;
    }
    return isWilling;
}

bool TestWindow::grabFocus(const std::string& id) {
    notes.push_back(id + " focused");
    if (isWilling) {
        part(id).states.isFocused = true;
    }
    return isWilling;
}

} // namespace varno::test
