#include "Surround/Surround.h"

#include "DemoGain_ParameterTable.h"
#include "Files/FileError.h"
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
      mPresets(setup.factoryPresets, userPresetFolder()),
      mPreferences(userPreferencesFile()),
      mControl(mEdited, mPresets, slots, owner),
      mMeters(instance.effect()),
      mSize(mPreferences.size().value_or(SizeSteps::kPlain)),
      mFrame(connection, parent),
      mHolder(connection, mFrame.id()),
      mEditor(instance, mDesktop, [this](PixelSize) { arrange(); }),
      mPlace{connection, mFrame.id()},
      mEditorInput(connection, mHolder.id()),
      mControls(instance, mEdited, mEditorInput),
      mLoop(RunLoop::shared()),
      mWatcher(mLoop->addWatcher(
          {[this](int descriptor) { mOuterDesktop.watch(descriptor, this, [this] { mLoop->tick(); }); },
           [this](int descriptor) { mOuterDesktop.unwatch(descriptor, this); }})) {
    if (hasAllSettings(instance)) {
        if (setup.hasBar) {
            mBar.emplace([this](BarLayout::Button button) { pressed(button); });
        }
        addInput();
        addAccess();
    }
}

Surround::~Surround() {
    if (mBridge) {
        mOuterDesktop.unwatch(mBridge->descriptor(), &mBridge);
    }
}

void Surround::addAccess() {
    XConnection& connection = mPlace.connection;
    mAccess.emplace(mInstance, mEdited, static_cast<SurroundAccess::Owner&>(*this));
    mBridge.emplace(
        mInstance.effect().names.front(), *mAccess,
        accessAddresses(connection.text(connection.screen().root, connection.atom("AT_SPI_BUS"))));
    mOuterDesktop.watch(mBridge->descriptor(), &mBridge, [this] { mBridge->dispatch(); });
}

SurroundView Surround::accessView() {
    const WindowArea whole = areaOnScreen(mPlace.connection, mFrame.id()).value_or(WindowArea{});
    const FocusItem* const chosen = mInput->chosen();
    SurroundView view{.title = mInstance.effect().names.front(),
                      .place = {whole.x, whole.y, whole.width, whole.height},
                      .scale = scale(),
                      .barHeight = mPlace.barHeight,
                      .isActive = mInput->hasKeys()};
    if (chosen != nullptr) {
        view.focused = accessIDOf(*chosen);
    }
    view.bar = mState;
    view.meters = mReadings;
    view.hostTexts = mMarks->texts();
    return view;
}

bool Surround::focus(const std::string& id) {
    return mInput->choose([&](const FocusItem& item) { return id == accessIDOf(item); });
}

void Surround::addInput() {
    mMenus.emplace(mPlace, MenuSubject{mEdited, mPresets, mControl, mControls, [this] { return mSize; },
                                       [this](double size) { chooseSize(size); },
                                       [this](const std::string& id) { return mOwner.menuItems(id); }});
    mMarks.emplace(mPlace, mBar.has_value());
    mInput.emplace(mPlace, mHolder.id(), mEditor.container(),
                   InputSubject{mEdited, mControls, mEditorInput, *mMenus,
                                [this](BarLayout::Button button) { pressed(button); },
                                [this](BarLayout::Button button) { return mControl.tip(button); },
                                [this](const FocusItem& item) { return mMarks->text(item); },
                                [this](int direction) { chooseSize(SizeSteps::next(mSize, direction)); },
                                [this] { mOwner.save(); }},
                   mBar.has_value());
}

PixelSize Surround::open() {
    mSize = fitting(mSize);
    mDesktop.setScale(scale());
    mEditor.open(mHolder.id());
    if (size().isEmpty()) {
        return {};
    }
    if (mBar && !mBar->open(mFrame.id(), scale())) {
        mBar.reset();
    }
    showCurve(mPreferences.isCurveShown());
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
    return editor.isEmpty() ? PixelSize{}
                            : PixelSize{editor.width, editor.height + barHeight() + curveHeight()};
}

int Surround::curveHeight() const {
    return mCurve ? scaled(CurvePane::kHeight, scale()) : 0;
}

void Surround::showCurve(bool isShown) {
    mCurve.reset();
    if (isShown && mBar) {
        const auto width = scaled(BarLayout::kWidth, scale());
        const auto height = scaled(CurvePane::kHeight, scale());
        mCurve.emplace(mPlace.connection, mFrame.id(), WindowArea{0, barHeight(), width, height}, scale());
    }
}

void Surround::arrange() {
    const PixelSize all = size();
    if (all.isEmpty()) {
        return;
    }
    const int top = barHeight() + curveHeight();
    mFrame.setArea({0, 0, all.width, all.height});
    mHolder.setArea({0, top, all.width, all.height - top});
    mPlace.scale = scale();
    mPlace.barHeight = top;
    mPlace.style.scale = scale();
    mPlate.reset(); // made anew where it belongs, with the state
    mEditorInput.setScale(scale());
    if (mInput) {
        mInput->arrange();
        mMarks->arrange();
    }
    mOwner.resize(all);
}

void Surround::timer() {
    mEditor.timer();
    mLoop->tick();
    settle();
    if (mInput) {
        mMenus->tick();
        mInput->tick();
    }
    showMeters();
    showState();
    showMarks();
    if (mBridge) {
        mBridge->tick();
    }
}

void Surround::showMeters() {
    if (!mBar) {
        return;
    }
    mReadings = mMeters.read(mInstance.meters(), std::chrono::steady_clock::now());
    mBar->show(mReadings);
    if (mCurve) {
        CurveState curve{.ratio = static_cast<float>(mInstance.normalized(cDemoGain_RatioID)),
                         .nowDB = mReadings.levels.front().nowDB,
                         .reductionDB = mReadings.reductionNowDB};
        if (curve.nowDB) {
            *curve.nowDB +=
                double{DemoGain_LevelDB(static_cast<float>(mInstance.normalized(cDemoGain_GainID)))};
        }
        mCurve->show(curve);
    }
}

void Surround::showMarks() {
    if (mMarks) {
        mMarks->show([this](const FocusItem& item) { return mOwner.indication(item); });
    }
}

// Not larger than the screen, but the plain size at least.
double Surround::fitting(double size) const {
    const WindowArea room = workAreaOf(mPlace.connection, mPlace.onScreen({0, 0, 1, 1}));
    const double plain = mOuterDesktop.scale();
    const int height =
        FaceLayout::kHeight + (mBar ? BarLayout::kHeight : 0) + (mCurve ? CurvePane::kHeight : 0);
    const double fits =
        SizeSteps::fitting(size, FaceLayout::kWidth * plain, height * plain, room.width, room.height);
    return std::max(fits, std::min(size, SizeSteps::kPlain));
}

// As the library's windows take it.
PixelSize Surround::sizeAt(double size) const {
    const double factor = mOuterDesktop.scale() * size;
    return {scaled(FaceLayout::kWidth, factor), scaled(FaceLayout::kHeight, factor) +
                                                    (mBar ? scaled(BarLayout::kHeight, factor) : 0) +
                                                    (mCurve ? scaled(CurvePane::kHeight, factor) : 0)};
}

double Surround::stepWithin(PixelSize room) const {
    double chosen = kWindowSizes.front();
    for (const double size : kWindowSizes) {
        const PixelSize needed = sizeAt(size);
        chosen = needed.width <= room.width && needed.height <= room.height ? size : chosen;
    }
    return chosen;
}

PixelSize Surround::sizeWithin(PixelSize room) const {
    return sizeAt(stepWithin(room));
}

void Surround::chooseSize(double size) {
    const double fits = fitting(size);
    if (fits != size) {
        showMessage(SizeSteps::text(size) + " does not fit the screen");
    }
    if (fits == mSize) {
        return;
    }
    mSize = fits;
    try {
        mPreferences.setSize(fits);
    } catch (const FileError& error) {
        showMessage(error.what());
    }
    reopen();
}

// An editor takes the scale when it opens.
void Surround::reopen() {
    mDesktop.setScale(scale());
    mEditor.close();
    mEditor.open(mHolder.id());
    if (mBar) {
        mBar->setScale(scale());
    }
    showCurve(mCurve.has_value());
    arrange();
}

bool Surround::escape() {
    return mInput && mInput->escape();
}

void Surround::pressed(BarLayout::Button button) {
    if (mMenus) {
        mMenus->dismiss();
    }
    if (button == BarLayout::Button::kPresets) {
        mMenus->openPresets();
    } else if (button == BarLayout::Button::kSize) {
        mMenus->openSizes();
    } else if (button == BarLayout::Button::kQuality) {
        mMenus->openQualities();
    } else if (button == BarLayout::Button::kCurve) {
        showCurve(!mCurve);
        try {
            mPreferences.setCurveShown(mCurve.has_value());
        } catch (const FileError& error) {
            showMessage(error.what());
        }
        arrange();
    } else {
        mControl.press(button);
    }
    showState();
}

// Only the face of Varno-S has a place for it.
void Surround::showBypass() {
    if (!mMenus) {
        return;
    }
    std::string reason;
    if (mOwner.isBypassed()) {
        reason = "the sound passes unchanged";
    } else if (BarControl::isModuleBypassed(mInstance)) {
        reason = "the parameter Master Bypass is on";
    }
    if (reason != (mPlate ? mPlate->reason() : "")) {
        mPlate.reset();
        if (!reason.empty()) {
            mPlate.emplace(mPlace, reason);
        }
    }
}

void Surround::showState() {
    showBypass();
    if (!mBar) {
        return;
    }
    mState = mControl.state(mInstance);
    mState.size = SizeSteps::text(mSize);
    mState.isCurveShown = mCurve.has_value();
    mBar->show(mState);
}

} // namespace varno
