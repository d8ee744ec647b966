#include "Surround/Bar.h"

#include "Surround/BarColours.h"
#include "Surround/BarWidgets.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/icontrollistener.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <iterator>

namespace varno {
namespace {

using BarLayout::Button;

constexpr std::size_t kButtonCount = std::size(BarLayout::kButtons);

std::string decibels(double value) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.1f", value);
    return text.data() == std::string("-0.0") ? "0.0" : text.data();
}

std::string peakText(const LevelReading& reading) {
    return reading.peakDB ? decibels(*reading.peakDB) : "";
}

std::string presetText(const BarState& state) {
    if (state.preset.empty()) {
        return "Presets";
    }
    return state.isPresetChanged ? state.preset + " *" : state.preset;
}

// What is used, with a mark where it is less than what was chosen.
std::string buttonText(const Quality& quality) {
    return qualityName(quality.used) + (quality.used == quality.wish ? "" : " *");
}

} // namespace

// The frame owns the widgets.
struct Bar::Widgets : VSTGUI::IControlListener {
    explicit Widgets(Pressed report)
        : pressed(std::move(report)) {}

    void addTo(VSTGUI::CFrame& frame);
    void valueChanged(VSTGUI::CControl* control) override;
    BarButton& button(Button which) const { return *buttons.at(static_cast<std::size_t>(which)); }

    Pressed pressed;
    std::array<BarButton*, kButtonCount> buttons{};
    std::array<LevelMeter*, BarLayout::kLevelMeters> meters{};
    std::array<BarLabel*, BarLayout::kLevelMeters> numbers{};
    BarLabel* reduction = nullptr;
    BarLabel* message = nullptr;
};

void Bar::Widgets::addTo(VSTGUI::CFrame& frame) {
    const auto add = [&](auto* view) {
        frame.addView(view);
        return view;
    };
    for (const auto& row : BarLayout::kButtons) {
        buttons.at(static_cast<std::size_t>(row.button)) = add(new BarButton(row, *this));
    }
    for (std::size_t i = 0; i < meters.size(); ++i) {
        const auto& row = BarLayout::kMeters[i];
        add(new BarLabel(row.label, BarLabel::Tone::kName, VSTGUI::kLeftText))->show(row.text);
        meters.at(i) = add(new LevelMeter(row.meter));
        numbers.at(i) = add(new BarLabel(row.number, BarLabel::Tone::kValue, VSTGUI::kRightText));
    }
    add(new BarLabel(BarLayout::kReductionLabel, BarLabel::Tone::kName, VSTGUI::kLeftText))->show("GR");
    reduction = add(new BarLabel(BarLayout::kReduction, BarLabel::Tone::kValue, VSTGUI::kLeftText));
    message = add(new BarLabel(BarLayout::kMessage, BarLabel::Tone::kValue, VSTGUI::kRightText));
}

// A completed click sets the value to 1 and then back to 0.
void Bar::Widgets::valueChanged(VSTGUI::CControl* control) {
    const bool isComplete = control->getValue() == control->getMax();
    if (isComplete && pressed) {
        pressed(static_cast<Button>(control->getTag()));
    }
}

Bar::Bar(Pressed pressed)
    : mFrame(BarLayout::kWidth, BarLayout::kHeight),
      mWidgets(std::make_unique<Widgets>(std::move(pressed))) {
    mFrame.get().setBackgroundColor(BarColours::kSheet);
    mWidgets->addTo(mFrame.get());
    show(BarState());
    show(BarMeters());
}

// The frame may outlive this object until the end of a tick.
Bar::~Bar() {
    for (BarButton* const button : mWidgets->buttons) {
        button->setListener(nullptr);
    }
}

bool Bar::open(std::uint32_t window, double scale) {
    return mFrame.open(window, scale);
}

void Bar::setScale(double scale) {
    mFrame.setScale(scale);
}

void Bar::show(const BarState& state) {
    const Widgets& widgets = *mWidgets;
    widgets.button(Button::kBypass).setOn(state.isBypassed || state.isModuleBypassed);
    widgets.button(Button::kBypass)
        .setText(state.isBypassed || state.isModuleBypassed ? "Bypassed" : "Bypass");
    widgets.button(Button::kSlotA).setOn(!state.isB);
    widgets.button(Button::kSlotB).setOn(state.isB);
    widgets.button(Button::kCopySlot).setText(state.isB ? "B \u2192 A" : "A \u2192 B");
    widgets.button(Button::kUndo).setCanPress(state.canUndo);
    widgets.button(Button::kRedo).setCanPress(state.canRedo);
    widgets.button(Button::kPresets).setText(presetText(state));
    widgets.button(Button::kQuality).setText(buttonText(state.quality));
    widgets.button(Button::kCurve).setOn(state.isCurveShown);
    widgets.button(Button::kSize).setText(state.size);
    widgets.message->show(state.message);
}

void Bar::show(const BarMeters& meters) {
    for (std::size_t i = 0; i < meters.levels.size(); ++i) {
        mWidgets->meters.at(i)->show(meters.levels.at(i));
        mWidgets->numbers.at(i)->show(peakText(meters.levels.at(i)));
    }
    mWidgets->reduction->show(decibels(meters.reductionDB) + " dB");
}

} // namespace varno
