/// The window around an editor: the bar above it and what a host adds to it.
#ifndef VARNO_SURROUND_SURROUND_H
#define VARNO_SURROUND_SURROUND_H

#include "Host/Editor.h"
#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "Platform/RunLoop.h"
#include "Surround/Access/AccessBridge.h"
#include "Surround/Bar.h"
#include "Surround/BarControl.h"
#include "Surround/BypassPlate.h"
#include "Surround/ControlActions.h"
#include "Surround/CurvePane.h"
#include "Surround/EditorInput.h"
#include "Surround/HostMarks.h"
#include "Surround/MeterReader.h"
#include "Surround/Settings/EditedSettings.h"
#include "Surround/Settings/PresetStore.h"
#include "Surround/Settings/UserPreferences.h"
#include "Surround/SurroundAccess.h"
#include "Surround/SurroundInput.h"
#include "Surround/SurroundMenus.h"
#include "Surround/SurroundPlace.h"
#include "Window/HolderWindow.h"
#include "Window/XConnection.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What a front end does for the surround in its window. [main]
class SurroundOwner : public BarOwner {
public:
    /// Gives the window around the surround this size, never an empty one.
    virtual void resize(PixelSize size) = 0;
    /// Saves the settings where the front end keeps them, and shows what came of it; nothing where it does
    /// not.
    virtual void save() = 0;
    /// What the front end's host has for the menu of a parameter.
    virtual std::vector<HostMenuItem> menuItems(const std::string& /*id*/) { return {}; }
    /// What it shows of a parameter, by the control or button that is for it; null for nothing.
    virtual const HostIndication* indication(const FocusItem& /*item*/) { return nullptr; }
};

/// The parameters of a surround.
struct SurroundSetup {
    bool hasBar = true;                     ///< Above the editor, if the effect is Varno-S.
    std::filesystem::path factoryPresets{}; ///< The folder of the factory's presets; empty for none.
};

/// A desktop with another scale.
class ScaledDesktop : public Desktop {
public:
    /// @param desktop outlives this object
    explicit ScaledDesktop(Desktop& desktop)
        : mDesktop(desktop),
          mScale(desktop.scale()) {}

    void setScale(double scale) { mScale = scale; }
    double scale() const override { return mScale; }
    AAX_EKnobMode knobMode() const override { return mDesktop.knobMode(); }
    void watch(int descriptor, const void* owner, Wake wake) override {
        mDesktop.watch(descriptor, owner, std::move(wake));
    }
    void unwatch(int descriptor, const void* owner) override { mDesktop.unwatch(descriptor, owner); }
    void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) override {
        mDesktop.startTimer(period, owner, std::move(wake));
    }
    void stopTimer(const void* owner) override { mDesktop.stopTimer(owner); }

private:
    Desktop& mDesktop;
    double mScale;
};

/// An editor with the bar above it, in a window of its own within one of a front end. [main]
class Surround : private SurroundAccess::Owner {
public:
    /// Nothing is open yet.
    /// @param connection, instance, slots, desktop, owner outlive this object
    /// @param parent the front end's window
    /// @throws WindowError where the connection is lost
    Surround(XConnection& connection, xcb_window_t parent, Instance& instance, CompareSlots& slots,
             Desktop& desktop, SurroundOwner& owner, const SurroundSetup& setup);
    Surround(const Surround&) = delete;
    Surround& operator=(const Surround&) = delete;
    ~Surround() override;

    /// Opens editor and bar, and requests the size from the owner. @return the size, which is empty where the
    /// effect has no editor or it shows nothing @throws HostError where its initialisation fails
    PixelSize open();
    /// Whether the editor's view has windows of its own, which take a while to be drawn.
    bool showsWindows() const { return !mPlace.connection.children(mHolder.id()).empty(); }
    /// Whether the effect has made an editor.
    bool hasEditor() const { return mEditor.isOpen(); }
    bool hasBar() const { return mBar.has_value(); }
    /// The size of everything.
    PixelSize size() const;
    /// The window that holds everything.
    xcb_window_t id() const { return mFrame.id(); }
    /// The host's timer, to be called about 30 times a second.
    void timer();
    /// Answers what the editor has requested, in the place of Instance::idle(), once in each turn of an event
    /// loop.
    void settle() { mEdited.settle(); }
    /// The size of everything at the largest of kWindowSizes that fits into a room, or at the smallest.
    PixelSize sizeWithin(PixelSize room) const;
    /// Takes that size, for a front end whose user resizes the window around it.
    void resizeWithin(PixelSize room) { chooseSize(stepWithin(room)); }
    /// The desktop has another scale.
    void desktopScaled() { reopen(); }
    /// Shows a message in the bar until the next.
    void showMessage(const std::string& message) { mControl.showMessage(message); }
    /// Where the input focus belongs while the front end's window has it; none where the editor keeps its
    /// keys.
    xcb_window_t focusWindow() const {
        return mInput ? mInput->focusWindow() : xcb_window_t{XCB_WINDOW_NONE};
    }
    /// The Escape key: closes a menu or a field, or ends a drag and gives the old value back, or takes the
    /// keyboard's mark away. @return false where there is nothing of that
    bool escape();

private:
    SurroundView accessView() override;
    void press(BarLayout::Button button) override { pressed(button); }
    void press(const FaceLayout::Control& control) override { mControls.press(control); }
    bool focus(const std::string& id) override;

    void addInput();
    void addAccess();
    void showCurve(bool isShown);
    void showMeters();
    void showMarks();
    void chooseSize(double size);
    double fitting(double size) const;
    PixelSize sizeAt(double size) const;
    double stepWithin(PixelSize room) const;
    void reopen();
    void arrange();
    void pressed(BarLayout::Button button);
    void showState();
    void showBypass();
    double scale() const;
    int barHeight() const;
    int curveHeight() const;

    Instance& mInstance;
    SurroundOwner& mOwner;
    Desktop& mOuterDesktop;
    ScaledDesktop mDesktop;
    EditedSettings mEdited;
    PresetStore mPresets;
    UserPreferences mPreferences;
    BarControl mControl;
    MeterReader mMeters;
    double mSize; ///< Relative to the plain size on the desktop, one of kWindowSizes.
    HolderWindow mFrame;
    HolderWindow mHolder; ///< Of the editor.
    std::optional<Bar> mBar;
    std::optional<CurvePane> mCurve;
    BarState mState;     ///< As shown last.
    BarMeters mReadings; ///< Likewise.
    EditorView mEditor;
    SurroundPlace mPlace;
    std::optional<BypassPlate> mPlate; ///< Over the editor while it is bypassed.
    EditorInput mEditorInput;
    ControlActions mControls;
    std::optional<SurroundMenus> mMenus;   ///< With the settings of Varno-S.
    std::optional<SurroundInput> mInput;   ///< Likewise.
    std::optional<HostMarks> mMarks;       ///< Likewise.
    std::optional<SurroundAccess> mAccess; ///< Likewise.
    std::optional<AccessBridge> mBridge;   ///< Likewise.
    std::shared_ptr<RunLoop> mLoop;
    Registration mWatcher;
};

} // namespace varno

#endif
