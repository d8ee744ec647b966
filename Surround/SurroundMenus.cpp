#include "Surround/SurroundMenus.h"

#include "DemoGain_Oversampling.h"
#include "DemoGain_ParameterTable.h"
#include "Platform/Clipboard.h"
#include "Surround/Settings/SettingValues.h"
#include "Surround/SizeSteps.h"

#include <utility>

namespace varno {
namespace {

MenuItem heading(const std::string& text) {
    return {.kind = MenuItem::Kind::kHeading, .text = text};
}

MenuItem separator() {
    return {.kind = MenuItem::Kind::kSeparator};
}

// "1 frame".
std::string latencyText(std::int32_t factor) {
    const std::int32_t frames = oversampledLatency(factor, kDemoGain_LatencyFrames);
    return std::to_string(frames) + (frames == 1 ? " frame" : " frames");
}

// Where a value is typed: below the control, wide enough for "curve 5" and "-20.0 dB".
Box fieldOf(const FaceLayout::Control& control) {
    constexpr int kFieldWidth = 84;
    constexpr int kFieldHeight = 22;
    const Box box = FaceLayout::boxOf(control);
    const int x = std::clamp(box.x + (box.width - kFieldWidth) / 2, 0, FaceLayout::kWidth - kFieldWidth);
    return {x, std::min(box.y + box.height, FaceLayout::kHeight - kFieldHeight), kFieldWidth, kFieldHeight};
}

} // namespace

SurroundMenus::SurroundMenus(const SurroundPlace& place, MenuSubject subject)
    : mPlace(place),
      mSubject(std::move(subject)),
      mMenu(place.connection, place.frame, place.style),
      mEntry(place.connection, place.frame) {
}

void SurroundMenus::open(std::vector<Row> rows, const WindowArea& below) {
    dismiss();
    std::vector<MenuItem> items;
    items.reserve(rows.size());
    for (const Row& row : rows) {
        items.push_back(row.item);
    }
    mMenu.setStyle(mPlace.style);
    mMenu.open(std::move(items), mPlace.onScreen(below),
               [this, chosenFrom = std::move(rows)](std::optional<std::size_t> chosen) {
                   if (chosen) {
                       mChosen = chosenFrom.at(*chosen).run;
                   }
               });
}

// The present preset of the user's with its group, as a name that is typed has it.
std::string SurroundMenus::ownName() const {
    const PresetEntry* const present = mSubject.presets.present();
    if (present == nullptr || present->isFactory) {
        return "";
    }
    return present->group.empty() ? present->name : present->group + '/' + present->name;
}

void SurroundMenus::openPresets() {
    PresetStore& presets = mSubject.presets;
    BarControl& bar = mSubject.bar;
    presets.rescan();
    const bool isOwn = presets.canSave();
    const std::string own = ownName();
    const std::string removed = presets.removedName();
    std::vector<Row> rows;
    rows.push_back(
        {{.text = "Save", .detail = isOwn ? own : "", .isEnabled = isOwn}, [&bar] { bar.savePreset(); }});
    rows.push_back({{.text = "Save as\u2026"}, [this, own, &bar] {
                        openName(own, [&bar](const std::string& name) { bar.savePresetAs(name); });
                    }});
    rows.push_back({{.text = "Rename\u2026", .isEnabled = isOwn}, [this, &presets, &bar] {
                        const PresetEntry* const present = presets.present();
                        openName(present != nullptr ? present->name : "",
                                 [&bar](const std::string& name) { bar.renamePreset(name); });
                    }});
    rows.push_back(
        {{.text = "Delete", .detail = isOwn ? own : "", .isEnabled = isOwn}, [&bar] { bar.removePreset(); }});
    if (!removed.empty()) {
        rows.push_back(
            {{.text = "Bring back \u201C" + removed + "\u201D"}, [&bar] { bar.undoRemovePreset(); }});
    }
    addPresets(rows);
    open(std::move(rows), mPlace.ofBar(BarLayout::row(BarLayout::Button::kPresets).place));
}

void SurroundMenus::addPresets(std::vector<Row>& rows) const {
    const PresetEntry* const present = mSubject.presets.present();
    std::optional<std::string> group;
    for (const PresetEntry& entry : mSubject.presets.entries()) {
        const std::string of = entry.isFactory       ? "Factory"
                               : entry.group.empty() ? "Your presets"
                                                     : entry.group;
        if (group != of) {
            group = of;
            rows.push_back({separator(), {}});
            rows.push_back({heading(of), {}});
        }
        MenuItem item{.text = entry.name};
        if (!entry.isSound()) {
            item.mark = MenuItem::Mark::kDamaged;
            item.detail = entry.damage;
            item.isEnabled = false;
        } else if (&entry == present) {
            item.mark = MenuItem::Mark::kBullet;
        }
        rows.push_back({item, [this, path = entry.path] {
                            if (const PresetEntry* const found = mSubject.presets.find(path)) {
                                mSubject.bar.load(*found);
                            }
                        }});
    }
}

void SurroundMenus::openName(const std::string& text, const std::function<void(const std::string&)>& use) {
    mSubject.bar.showMessage("Return saves, Escape leaves");
    mEntry.open(mPlace.ofBar(BarLayout::row(BarLayout::Button::kPresets).place), mPlace.scale, text,
                [this, use](const std::optional<std::string>& name) {
                    mSubject.bar.showMessage("");
                    if (name) {
                        use(*name);
                    }
                });
}

void SurroundMenus::openSizes() {
    std::vector<Row> rows;
    for (const double size : kWindowSizes) {
        const auto mark = size == mSubject.size() ? MenuItem::Mark::kBullet : MenuItem::Mark::kNone;
        rows.push_back(
            {{.text = SizeSteps::text(size), .mark = mark}, [this, size] { mSubject.setSize(size); }});
    }
    open(std::move(rows), mPlace.ofBar(BarLayout::row(BarLayout::Button::kSize).place));
}

void SurroundMenus::openQualities() {
    const std::int32_t wish = mSubject.bar.quality().wish;
    std::vector<Row> rows{{heading("Quality and latency"), {}}};
    for (const std::int32_t factor : kOversamplingFactors) {
        const auto mark = factor == wish ? MenuItem::Mark::kBullet : MenuItem::Mark::kNone;
        rows.push_back({{.text = qualityName(factor), .detail = latencyText(factor), .mark = mark},
                        [this, factor] { mSubject.bar.chooseQuality(factor); }});
    }
    open(std::move(rows), mPlace.ofBar(BarLayout::row(BarLayout::Button::kQuality).place));
}

void SurroundMenus::openControl(const FaceLayout::Control& control) {
    const auto setting = settingOf(control.mID);
    if (!setting) {
        return;
    }
    ControlActions& controls = mSubject.controls;
    const std::string value = controls.value(control);
    const std::string undo = mSubject.edited.undoName();
    std::vector<Row> rows;
    rows.push_back({heading(settingName(*setting) + "  " + value), {}});
    rows.push_back({{.text = "Type a value\u2026", .detail = "Return"},
                    [this, &control, value] { openValue(control, value); }});
    rows.push_back({{.text = "Reset", .detail = "Delete"}, [&] { controls.reset(control); }});
    rows.push_back({{.text = "Copy value"}, [value] { Clipboard::shared()->setText(value); }});
    rows.push_back({{.text = "Paste value"}, [this, &controls, &control] {
                        mSubject.bar.showMessage(
                            controls.type(control, Clipboard::shared()->text().value_or("")));
                    }});
    rows.push_back({separator(), {}});
    rows.push_back(
        {{.text = undo.empty() ? "Undo" : "Undo " + undo, .detail = "Ctrl-Z", .isEnabled = !undo.empty()},
         [this] { mSubject.bar.press(BarLayout::Button::kUndo); }});
    addHostItems(rows, control.mID);
    open(std::move(rows), mPlace.ofFace(FaceLayout::boxOf(control)));
}

// Behind what every host has.
void SurroundMenus::addHostItems(std::vector<Row>& rows, const std::string& id) const {
    const std::vector<HostMenuItem> items = mSubject.hostItems(id);
    if (!items.empty()) {
        rows.push_back({separator(), {}});
    }
    for (const HostMenuItem& item : items) {
        if (item.kind == HostMenuItem::Kind::kSeparator) {
            rows.push_back({separator(), {}});
        } else if (item.kind == HostMenuItem::Kind::kHeading) {
            rows.push_back({heading(item.text), {}});
        } else {
            const auto mark = item.isChecked ? MenuItem::Mark::kBullet : MenuItem::Mark::kNone;
            rows.push_back({{.text = item.text, .mark = mark, .isEnabled = item.isEnabled}, item.run});
        }
    }
}

void SurroundMenus::openValue(const FaceLayout::Control& control, const std::string& text) {
    mEntry.open(mPlace.ofFace(fieldOf(control)), mPlace.scale, text,
                [this, &control](const std::optional<std::string>& typed) {
                    mSubject.bar.showMessage(typed ? mSubject.controls.type(control, *typed) : "");
                });
}

void SurroundMenus::key(const xcb_key_press_event_t& event, xcb_keysym_t symbol) {
    if (mEntry.isOpen()) {
        mEntry.key(event, symbol);
    } else {
        mMenu.key(symbol);
    }
}

void SurroundMenus::dismiss() {
    mMenu.dismiss();
    mEntry.cancel();
}

void SurroundMenus::tick() {
    mMenu.tick();
    if (const auto chosen = std::exchange(mChosen, nullptr)) {
        chosen();
    }
}

} // namespace varno
