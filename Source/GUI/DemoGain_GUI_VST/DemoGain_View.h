/// The editor's one view.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VIEW_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VIEW_H

#include "AAX_Enums.h"
#include "ACF/ACFPtr.h"
#include "DemoGain_ViewLayout.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_VolumeMatch.h"
#include "GUI/VSTGUI_ContentView.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/ctextlabel.h"
#include "vstgui/lib/controls/icontrollistener.h"

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

class AAX_IController;
class AAX_IViewContainer;
class DemoGain_HostedControl;

namespace varno {
class Clipboard;
}

// Fonts and colours of the editor.

/// Sizes in points.
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontSmall; ///< 11
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFont;      ///< 12
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontBig;   ///< 14
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontLogo;  ///< 28

// The panel and what is raised above it or let into it.
inline constexpr VSTGUI::CColor kMyBGCColor(0x2D, 0x30, 0x34);
inline constexpr VSTGUI::CColor kMyLightCColor(0x55, 0x59, 0x5F);
inline constexpr VSTGUI::CColor kMyShadowCColor(0x14, 0x15, 0x17);

// Lettering, from the brightest to the darkest.
inline constexpr VSTGUI::CColor kMyWhiteCColor(0xFF, 0xFF, 0xFF);
inline constexpr VSTGUI::CColor kMyPaperCColor(0xEF, 0xEB, 0xE4);
inline constexpr VSTGUI::CColor kMyControlWhiteCColor(0xE6, 0xE6, 0xE6);
inline constexpr VSTGUI::CColor kMyGreyCColor(0xB4, 0xB1, 0xAB);
inline constexpr VSTGUI::CColor kMyMidGreyCColor(0x6C, 0x6F, 0x74);
inline constexpr VSTGUI::CColor kMyDarkGreyCColor(0x3A, 0x3D, 0x42);

// Accents.
inline constexpr VSTGUI::CColor kLogoColor(0xFF, 0x9D, 0x33);
inline constexpr VSTGUI::CColor kMyCyanCColor(0x4F, 0xB3, 0xBF);
inline constexpr VSTGUI::CColor kDarkGreenCColor(0x1F, 0x5A, 0x2E);
inline constexpr VSTGUI::CColor kDarkRedCColor(0x7A, 0x1F, 0x1A);

/// Shows the parameters as controls laid out by DemoGain_ViewLayout.h, turns gestures on them into requests
/// for new parameter values, shows two meters and matches the volume. Everything here is [main]. The host may
/// close the view from within each of the view's calls: what follows that call has no effect.
class DemoGain_View : public VSTGUI_ContentView,
                      public VSTGUI::IControlListener,
                      public VSTGUI::IKeyboardHook,
                      public VSTGUI::IMouseObserver {
public:
    /// Bitmaps that all views of the process share; null until LoadViewResources, and without content where
    /// there is no such file. Deleted when the module is unloaded.
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hPIBackground;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hGain;
    /// The two meter bitmaps are swapped on purpose: a meter's value is 1 without reduction, so the part up
    /// to its value is the part that is off.
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hGR1On;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hGR1Off;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hSwitch;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hRatio;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hSwPr1;
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> m_hSwPr2;

    /// Loads the bitmaps that are not loaded yet, at scale 1; those of other scales are loaded when they are
    /// drawn. Requires UseVSTGUI.
    static void LoadViewResources();

    /// Builds the frame, unopened, and every control in it, showing the parameters' values. Everything is
    /// borrowed until Disconnect. `parameters` and `container` may be null: the controls then have no effect,
    /// or do not offer gestures to the host. Requires UseVSTGUI.
    DemoGain_View(void* nativeView, AAX_IACFEffectParameters* parameters,
                  VSTGUI::VSTGUIEditorInterface* editor, AAX_IViewContainer* container);

    /// The clipboard of copy and paste; the system's until then.
    void SetClipboard(std::shared_ptr<varno::Clipboard> clipboard) { mClipboard = std::move(clipboard); }
    /// Where meters are read if the data model is not this module's own object but a host's proxy: the
    /// editor's controller, borrowed until Disconnect; may be null.
    void SetController(const AAX_IController* controller) { mController = controller; }

    /// Ends gestures that are under way, so that no parameter stays touched, cuts off the controls, and hands
    /// a copied preset over to the desktop.
    void Disconnect() override;

    /// Sets the control of a parameter to the parameter's current value, without notification. Does nothing
    /// for other identifiers and for parameters that cannot be read.
    void ShowParameter(std::string_view paramID);

    /// Sets or removes the gain knob's highlight, in the host's colour for automation. An unknown colour
    /// leaves the last one.
    void highlitePeak(uint8_t isHighlighted, AAX_EHighlightColor colour);
    /// As highlitePeak, for the volume knob, in spite of its name.
    void highliteDecay(uint8_t isHighlighted, AAX_EHighlightColor colour);

    /// Once per tick of the host's timer: meters and volume matching.
    void TimerWakeup();
    /// As TimerWakeup, at this reading of a clock in milliseconds.
    void Tick(uint32_t ticksMs);

    /// A control was changed by the user: requests the parameter's new value and shows it in the status line.
    void valueChanged(VSTGUI::CControl* control) override;
    /// A gesture begins or ends: the parameter is touched or released.
    void controlBeginEdit(VSTGUI::CControl* control) override;
    void controlEndEdit(VSTGUI::CControl* control) override;

    /// The usual keys for copy and paste do what the two buttons do.
    void onKeyboardEvent(VSTGUI::KeyboardEvent& event, VSTGUI::CFrame* frame) override;

    /// A press while a gesture is under way, as with another button, ends that gesture: the library brings
    /// its release to the new one.
    void onMouseEvent(VSTGUI::MouseEvent& event, VSTGUI::CFrame* frame) override;
    void onMouseEntered(VSTGUI::CView*, VSTGUI::CFrame*) override {}
    void onMouseExited(VSTGUI::CView*, VSTGUI::CFrame*) override {}

    /// The control with this identifier of the layout; borrowed, null if there is none.
    VSTGUI::CControl* GetControl(std::string_view id) const;
    /// The line that names what was changed last; borrowed.
    VSTGUI::CTextLabel* GetStatusLabel() const { return mStatusLabel; }
    /// Whether the next tick begins a new series of volume measurements.
    bool IsMatchingRequested() const { return mVolumeMatch.IsRestartRequested(); }

protected:
    ~DemoGain_View() noexcept override;

private:
    /// The shared bitmap that holds this part.
    static VSTGUI::SharedPointer<VSTGUI::CBitmap>& SharedBitmap(DemoGain_ViewLayout::Art art);
    /// The same, or a bitmap without content while none is loaded.
    static VSTGUI::SharedPointer<VSTGUI::CBitmap> BitmapFor(DemoGain_ViewLayout::Art art);

    void AddStatusLabel();
    void AddControl(std::size_t index, AAX_IViewContainer* container);

    /// The data model, for the length of an operation in which the host may release it; null without one.
    ACFPtr<AAX_IACFEffectParameters> Parameters() const;
    /// 0 where the parameter cannot be read.
    double ReadNormalized(const char* paramID) const;
    /// Does nothing without a data model.
    void RequestNormalized(const char* paramID, double value);
    bool IsAutoGainOn() const;
    void ChangeParameter(const DemoGain_ViewLayout::Control& row, float value);
    void CompensateGain(double gain);
    void ShowStatus(const std::string& text);

    void UseClipboard(const DemoGain_ViewLayout::Control& row);
    void CopyPreset(const DemoGain_ViewLayout::Control& row);
    void PastePreset(const DemoGain_ViewLayout::Control& row);
    void PressButton(DemoGain_ViewLayout::Art art);

    void HighlightKnob(std::string_view id, bool isHighlighted, AAX_EHighlightColor colour);

    /// 0 where the host reports no value.
    float ReadMeter(std::size_t tap) const;
    void UpdateMeters();

    std::shared_ptr<varno::Clipboard> mClipboard;
    VSTGUI::CTextLabel* mStatusLabel; ///< The frame's, as all controls.
    /// In the order of the layout's table.
    std::array<VSTGUI::CControl*, std::size(DemoGain_ViewLayout::kControls)> mControls{};
    /// The same, as what they are to the host.
    std::array<DemoGain_HostedControl*, std::size(DemoGain_ViewLayout::kControls)> mHosted{};
    const AAX_IController* mController = nullptr;
    DemoGain_VolumeMatch mVolumeMatch;
};

#endif
