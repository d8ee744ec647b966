#include "Surround/SurroundAccess.h"

#include "DemoGain_ParameterTable.h"
#include "Surround/FocusList.h"
#include "Surround/Settings/SettingValues.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace varno {
namespace {

using DemoGain_ViewLayout::Control;

constexpr std::string_view kBarPart = "bar.";
constexpr double kMostReductionDB = 32.0;

std::string decibelText(double levelDB) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f dB", levelDB);
    return text;
}

// The rectangle of a box of a layout whose upper edge is `top` pixels below that of the window.
AccessRectangle placeOf(const Box& box, const SurroundView& view, int top) {
    const auto at = [&](int length) { return static_cast<int>(std::lround(length * view.scale)); };
    return {view.place.x + at(box.x), view.place.y + top + at(box.y), at(box.width), at(box.height)};
}

// What the host shows follows the help.
void addHostText(AccessNode& node, const SurroundView& view) {
    if (const auto found = view.hostTexts.find(node.id); found != view.hostTexts.end()) {
        node.description += ' ' + found->second;
    }
}

AccessNode settingNode(const Control& control, const SurroundView& view, const Instance& instance,
                       const DemoGain_ValueText::Settings& units) {
    const SDemoGain_Parameter& row = *DemoGain_FindParameter(control.mID);
    const double value = instance.normalized(control.mID);
    AccessNode node{.id = control.mID, .description = row.mHelp};
    node.name = settingName(*settingOf(node.id));
    node.valueText = spokenValue(node.id, value, units);
    addHostText(node, view);
    node.rectangle = placeOf(FaceLayout::boxOf(control), view, view.barHeight);
    node.states.isFocusable = true;
    node.states.isFocused = view.focused == node.id;
    if (control.mKind == FaceLayout::Kind::kOnOffButton) {
        node.role = AccessRole::kCheckBox;
        node.action = "toggle";
        node.states.isChecked = value >= 0.5;
        return node;
    }
    const double lastStep = row.mSteps - 1.0;
    node.role = control.mKind == FaceLayout::Kind::kKnob ? AccessRole::kDial : AccessRole::kSlider;
    node.range = AccessRange{0.0, lastStep, 1.0, std::round(value * lastStep)};
    node.isTextSettable = true;
    return node;
}

// Copy and Paste.
AccessNode pushNode(const FocusItem& item, const SurroundView& view) {
    AccessNode node{.id = item.control->mID,
                    .role = AccessRole::kPushButton,
                    .name = item.name(),
                    .description = item.help()};
    node.action = "press";
    node.rectangle = placeOf(FaceLayout::boxOf(*item.control), view, view.barHeight);
    node.states.isFocusable = true;
    node.states.isFocused = view.focused == node.id;
    return node;
}

AccessRole roleOf(const BarLayout::ButtonRow& row) {
    if (row.button == BarLayout::Button::kSlotA || row.button == BarLayout::Button::kSlotB) {
        return AccessRole::kRadioButton;
    }
    switch (row.kind) {
    case BarLayout::Kind::kToggle:
        return AccessRole::kToggleButton;
    case BarLayout::Kind::kMenu:
        return AccessRole::kComboBox;
    case BarLayout::Kind::kPush:
        break;
    }
    return AccessRole::kPushButton;
}

void putState(AccessNode& node, BarLayout::Button button, const BarState& state) {
    using BarButton = BarLayout::Button;
    switch (button) {
    case BarButton::kBypass:
        node.states.isChecked = state.isBypassed;
        if (state.isModuleBypassed) {
            node.description = "The effect's own bypass is on. " + node.description;
        }
        break;
    case BarButton::kSlotA:
        node.states.isChecked = !state.isB;
        break;
    case BarButton::kSlotB:
        node.states.isChecked = state.isB;
        break;
    case BarButton::kUndo:
        node.states.isEnabled = state.canUndo;
        break;
    case BarButton::kRedo:
        node.states.isEnabled = state.canRedo;
        break;
    case BarButton::kPresets:
        node.valueText = state.preset + (state.isPresetChanged ? ", changed" : "");
        break;
    case BarButton::kQuality:
        node.valueText = qualityText(state.quality);
        break;
    case BarButton::kCurve:
        node.states.isChecked = state.isCurveShown;
        break;
    case BarButton::kSize:
        node.valueText = state.size;
        break;
    case BarButton::kCopySlot:
    case BarButton::kPreviousPreset:
    case BarButton::kNextPreset:
        break;
    }
}

AccessNode buttonNode(const BarLayout::ButtonRow& row, const SurroundView& view) {
    AccessNode node{
        .id = accessIDOf(row.button), .role = roleOf(row), .name = row.name, .description = row.help};
    node.action = "press";
    node.rectangle = placeOf(row.place, view, 0);
    node.states.isFocusable = true;
    node.states.isFocused = view.focused == node.id;
    putState(node, row.button, view.bar);
    addHostText(node, view);
    return node;
}

AccessNode levelNode(const BarLayout::MeterRow& row, const LevelReading& level, const SurroundView& view) {
    AccessNode node{.id = std::string(kBarPart) + row.name, .role = AccessRole::kLevelBar, .name = row.name};
    node.valueText = level.nowDB ? decibelText(*level.nowDB) : "silence";
    node.range = AccessRange{
        BarLayout::kLowestDB, BarLayout::kHighestDB, 0.0,
        std::clamp(level.nowDB.value_or(BarLayout::kLowestDB), BarLayout::kLowestDB, BarLayout::kHighestDB)};
    node.rectangle = placeOf(row.meter, view, 0);
    return node;
}

AccessNode reductionNode(const SurroundView& view) {
    const double reductionDB = std::max(0.0, -view.meters.reductionDB);
    AccessNode node{.id = std::string(kBarPart) + "reduction",
                    .role = AccessRole::kLevelBar,
                    .name = "Gain reduction",
                    .valueText = decibelText(reductionDB)};
    node.range = AccessRange{0.0, kMostReductionDB, 0.0, std::min(reductionDB, kMostReductionDB)};
    node.rectangle = placeOf(BarLayout::kReduction, view, 0);
    return node;
}

AccessNode barNode(const SurroundView& view) {
    AccessNode bar{.id = "bar", .role = AccessRole::kPanel, .name = "Bar"};
    bar.rectangle = {view.place.x, view.place.y, view.place.width, view.barHeight};
    for (const BarLayout::ButtonRow& row : BarLayout::kButtons) {
        bar.children.push_back(buttonNode(row, view));
    }
    for (std::size_t i = 0; i < view.meters.levels.size(); ++i) {
        bar.children.push_back(levelNode(BarLayout::kMeters[i], view.meters.levels[i], view));
    }
    bar.children.push_back(reductionNode(view));
    AccessNode message{
        .id = std::string(kBarPart) + "message", .role = AccessRole::kStatusBar, .name = view.bar.message};
    message.rectangle = placeOf(BarLayout::kMessage, view, 0);
    bar.children.push_back(std::move(message));
    return bar;
}

} // namespace

std::string accessIDOf(BarLayout::Button button) {
    return std::string(kBarPart) + BarLayout::row(button).name;
}

std::string accessIDOf(const FocusItem& item) {
    return item.button != nullptr ? accessIDOf(item.button->button) : std::string(item.control->mID);
}

std::optional<BarLayout::Button> buttonOfAccessID(std::string_view id) {
    const auto* const found = std::ranges::find_if(
        BarLayout::kButtons, [&](const BarLayout::ButtonRow& row) { return id == accessIDOf(row.button); });
    return found == std::end(BarLayout::kButtons) ? std::nullopt : std::optional(found->button);
}

AccessNode describeSurround(const SurroundView& view, const Instance& instance) {
    AccessNode window{.id = "window", .role = AccessRole::kWindow, .name = view.title};
    window.rectangle = view.place;
    window.states.isActive = view.isActive;
    if (view.barHeight > 0) {
        window.children.push_back(barNode(view));
    }
    AccessNode face{.id = "face", .role = AccessRole::kPanel, .name = "Effect"};
    face.rectangle = {view.place.x, view.place.y + view.barHeight, view.place.width,
                      view.place.height - view.barHeight};
    const DemoGain_ValueText::Settings units = unitSettings(instance);
    const FocusList controls(false);
    for (const FocusItem& item : controls.items()) {
        face.children.push_back(FaceLayout::isOfParameter(*item.control)
                                    ? settingNode(*item.control, view, instance, units)
                                    : pushNode(item, view));
    }
    window.children.push_back(std::move(face));
    return window;
}

bool SurroundAccess::setValue(const std::string& id, double value) {
    const auto setting = settingOf(id);
    if (!setting) {
        return false;
    }
    const auto steps = static_cast<int>(DemoGain_FindParameter(id)->mSteps);
    mEdited.set(*setting, static_cast<float>(normalizedOfStep(static_cast<int>(std::lround(value)), steps)),
                EditedSettings::Join::kYes);
    return true;
}

bool SurroundAccess::setValueText(const std::string& id, const std::string& text) {
    const auto setting = settingOf(id);
    const auto typed = setting ? typedValue(id, text, unitSettings(mInstance)).normalized : std::nullopt;
    if (typed) {
        mEdited.set(*setting, static_cast<float>(*typed));
    }
    return typed.has_value();
}

bool SurroundAccess::press(const std::string& id) {
    if (const auto button = buttonOfAccessID(id)) {
        mOwner.press(*button);
        return true;
    }
    const Control* const control = FaceLayout::controlOf(id);
    if (control == nullptr || (control->mKind != FaceLayout::Kind::kOnOffButton &&
                               control->mKind != FaceLayout::Kind::kKickButton)) {
        return false;
    }
    mOwner.press(*control);
    return true;
}

} // namespace varno
