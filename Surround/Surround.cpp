#include "Surround/Surround.h"

#include "DemoGain_ParameterTable.h"
#include "Surround/Settings/UserFolders.h"
#include "Surround/SizeSteps.h"

#include <algorithm>
#include <chrono>

namespace varno {
namespace {

// As the library's windows do it: what ends within a pixel ends before it.
int scaled(int length, double scale) {
    return static_cast<int>(length * scale);
}

// Whether the effect is the one that the bar is made for.
bool hasAllSettings(const Instance& instance) {
    return std::ranges::all_of(kDemoGain_PresetOrder, [&](const SDemoGain_Parameter* parameter) {
        return instance.parameter(parameter->mIdentifier) != nullptr;
    });
}

} // namespace

Surround::Surround(XConnection& connection, xcb_window_t parent, Instance& instance, CompareSlots& slots,
                   Desktop& desktop, SurroundOwner& owner, const SurroundSetup& setup)
    : mInstance(instance),
      mOwner(owner),
      mOuterDesktop(desktop),
      mDesktop(desktop),
      mEdited(instance, slots),
      mPresets(instance.module().resourcePath("presets"), userPresetFolder()),
      mPreferences(userPreferencesFile()),
      mControl(mEdited, mPresets, owner),
      mMeters(instance.effect()),
      mSize(mPreferences.size().value_or(SizeSteps::kPlain)),
      mFrame(connection, parent),
      mHolder(connection, mFrame.id()),
      mEditor(instance, mDesktop, [this](PixelSize) { arrange(); }),
      mLoop(RunLoop::shared()),
      mWatcher(mLoop->addWatcher(
          {[this](int descriptor) { mOuterDesktop.watch(descriptor, this, [this] { mLoop->tick(); }); },
           [this](int descriptor) { mOuterDesktop.unwatch(descriptor, this); }})) {
    if (setup.hasBar && hasAllSettings(instance)) {
        mBar.emplace([this](BarLayout::Button button) { pressed(button); });
    }
}

Surround::~Surround() = default;

PixelSize Surround::open() {
    mDesktop.setScale(scale());
    mEditor.open(mHolder.id());
    if (size().isEmpty()) {
        return {};
    }
    if (mBar && !mBar->open(mFrame.id(), scale())) {
        mBar.reset();
    }
    arrange();
    showState();
    return size();
}

double Surround::scale() const {
    return mOuterDesktop.scale() * mSize;
}

int Surround::barHeight() const {
    return mBar ? scaled(BarLayout::kHeight, scale()) : 0;
}

PixelSize Surround::size() const {
    const PixelSize editor = mEditor.isOpen() ? mEditor.size() : PixelSize{};
    return editor.isEmpty() ? PixelSize{} : PixelSize{editor.width, editor.height + barHeight()};
}

void Surround::arrange() {
    const PixelSize all = size();
    if (all.isEmpty()) {
        return;
    }
    mFrame.setArea({0, 0, all.width, all.height});
    mHolder.setArea({0, barHeight(), all.width, all.height - barHeight()});
    mOwner.resize(all);
}

void Surround::timer() {
    mEditor.timer();
    mLoop->tick();
    settle();
    if (mBar) {
        mBar->show(mMeters.read(mInstance.meters(), std::chrono::steady_clock::now()));
        showState();
    }
}

void Surround::setSize(double size) {
    mSize = size;
    mDesktop.setScale(scale());
    mEditor.close();
    mEditor.open(mHolder.id());
    if (mBar) {
        mBar->setScale(scale());
    }
    arrange();
}

void Surround::pressed(BarLayout::Button button) {
    mControl.press(button);
    showState();
}

void Surround::showState() {
    if (!mBar) {
        return;
    }
    BarState state = mControl.state(mInstance);
    state.size = SizeSteps::text(mSize);
    mBar->show(state);
}

} // namespace varno
