#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "AAX_IACFEffectParameters.h"
#include "DemoGain_ParameterTable.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Gestures.h"
#include "Platform/Clipboard.h"

#include "vstgui/lib/cfont.h"

using namespace DemoGain_ViewLayout;
using VSTGUI::CControl;
using VSTGUI::CPoint;
using VSTGUI::CRect;

namespace {

constexpr VSTGUI::CColor kStatusColor(230, 230, 230, 255);

// Colours of the host's highlight, by AAX_EHighlightColor.
constexpr VSTGUI::CColor kHighlightColors[] = {
    {200, 0, 0, 255},
    {0, 0, 200, 255},
    {0, 200, 0, 255},
    {200, 200, 0, 255},
};
constexpr VSTGUI::CColor kNoHighlightColor(100, 100, 100, 0);

// A drag with Shift or Control held moves a knob this many times less,
// so that a level can be set to a tenth of a decibel.
constexpr float kFineDrag = 6.0F;
// The library's tenth of the range is too coarse for a level.
constexpr int kPicturesPerWheelClick = 2;

// Size of one picture of a bitmap, which may be empty.
CPoint PictureSize(const VSTGUI::CBitmap& bitmap, Art art) {
    return {bitmap.getWidth(), bitmap.getHeight() / BitmapOf(art).mPictures};
}

// A control, as the library and as the host see it.
struct MadeControl {
    CControl* mControl;
    DemoGain_HostedControl* mHosted;
};

// Makes the control for a row of the layout.
struct Maker {
    const Control& mRow;
    VSTGUI::IControlListener* mListener;
    VSTGUI::CBitmap* mBitmap;
    VSTGUI::CBitmap* mMeterOffBitmap;
    AAX_IViewContainer* mContainer;

    MadeControl Make() const {
        const CPoint size = PictureSize(*mBitmap, mRow.mArt);
        const CRect place(CPoint(mRow.mX, mRow.mY), size);
        const int pictures = BitmapOf(mRow.mArt).mPictures;
        const CPoint offset(0, 0);
        switch (mRow.mKind) {
        case Kind::kKnob: {
            auto* const knob =
                new DemoGain_AnimKnobVST(place, mListener, mRow.mTag, pictures, size.y, mBitmap, offset);
            knob->setZoomFactor(kFineDrag);
            knob->setWheelInc(static_cast<float>(kPicturesPerWheelClick) / static_cast<float>(pictures - 1));
            return Hosted(knob);
        }
        case Kind::kOnOffButton:
            return Hosted(new DemoGain_OnOffButtonVST(place, mListener, mRow.mTag, mBitmap));
        case Kind::kRatioSwitch:
            return Hosted(new DemoGain_SwitchHorVST(place, mListener, mRow.mTag, pictures, size.y, pictures,
                                                    mBitmap, offset));
        case Kind::kKickButton:
            return Hosted(new DemoGain_KickButtonVST(place, mListener, mRow.mTag, size.y, mBitmap, offset));
        case Kind::kMeter:
            break;
        }
        // The library's meters take no tag and no listener at construction.
        auto* const meter = new DemoGain_VuMeterVST(place, mBitmap, mMeterOffBitmap, kMeterSteps,
                                                    VSTGUI::CVuMeter::kHorizontal);
        meter->setTag(mRow.mTag);
        return Hosted(meter);
    }

    template<class HostedControl>
    MadeControl Hosted(HostedControl* control) const {
        control->SetViewContainer(mContainer);
        control->SetParamID(mRow.mID);
        return {control, control};
    }
};

} // namespace

// Construction.

DemoGain_View::DemoGain_View(void* nativeView, AAX_IACFEffectParameters* parameters,
                             VSTGUI::VSTGUIEditorInterface* editor, AAX_IViewContainer* container)
    : VSTGUI_ContentView(nativeView, CRect(CPoint(), BitmapFor(Art::kBackground)->getSize()), editor,
                         parameters),
      mClipboard(varno::Clipboard::shared()),
      mStatusLabel(new VSTGUI::CTextLabel(
          CRect(kStatusLabel.mLeft, kStatusLabel.mTop, kStatusLabel.mRight, kStatusLabel.mBottom))) {
    getFrame()->setBackground(BitmapFor(Art::kBackground));
    AddStatusLabel();
    for (std::size_t i = 0; i < mControls.size(); ++i) {
        AddControl(i, container);
    }
    getFrame()->registerKeyboardHook(this);
    getFrame()->registerMouseObserver(this);
}

DemoGain_View::~DemoGain_View() noexcept {
    DemoGain_View::Disconnect();
    // The controls are deleted while their listener still exists.
    getFrame()->unregisterMouseObserver(this);
    getFrame()->unregisterKeyboardHook(this);
    getFrame()->removeAll();
}

void DemoGain_View::Disconnect() {
    for (std::size_t i = 0; i < mControls.size(); ++i) {
        mHosted[i]->SetViewContainer(nullptr);
        while (mControls[i]->isEditing()) {
            mControls[i]->endEdit();
        }
        mHosted[i]->Close();
    }
    mController = nullptr;
    mClipboard->handOver();
    VSTGUI_ContentView::Disconnect();
}

void DemoGain_View::AddStatusLabel() {
    mStatusLabel->setFont(VSTGUI::kNormalFont);
    mStatusLabel->setFontColor(kStatusColor);
    mStatusLabel->setBackColor(VSTGUI::kBlackCColor);
    mStatusLabel->setFrameColor(VSTGUI::kBlackCColor);
    mStatusLabel->setHoriAlign(VSTGUI::kLeftText);
    mStatusLabel->setText(DemoGain_Gestures::kInitialText);
    getFrame()->addView(mStatusLabel);
}

void DemoGain_View::AddControl(std::size_t index, AAX_IViewContainer* container) {
    const Control& row = kControls[index];
    const auto bitmap = BitmapFor(row.mArt);
    const auto meterOffBitmap = BitmapFor(Art::kMeterOn);
    const MadeControl made = Maker{row, this, bitmap, meterOffBitmap, container}.Make();
    CControl* const control = made.mControl;
    mControls[index] = control;
    mHosted[index] = made.mHosted;
    getFrame()->addView(control);
    double defaultValue = control->getMin();
    const auto parameters = Parameters();
    if (parameters && DemoGain_Gestures::HoldsParameter(row)) {
        parameters->GetParameterDefaultNormalizedValue(row.mID, &defaultValue);
    }
    control->setDefaultValue(static_cast<float>(defaultValue));
    ShowParameter(row.mID);
}

// What the host changes.

CControl* DemoGain_View::GetControl(std::string_view id) const {
    const Control* const row = DemoGain_Gestures::ControlOf(id);
    return row != nullptr ? mControls[static_cast<std::size_t>(row - kControls.data())] : nullptr;
}

void DemoGain_View::ShowParameter(std::string_view paramID) {
    const Control* const row = DemoGain_Gestures::ControlOf(paramID);
    const auto parameters = Parameters();
    if (row == nullptr || !DemoGain_Gestures::HoldsParameter(*row) || !parameters) {
        return;
    }
    double value = 0.0;
    if (parameters->GetParameterNormalizedValue(row->mID, &value) == AAX_SUCCESS) {
        CControl* const control = GetControl(paramID);
        control->setValue(static_cast<float>(value));
        control->invalid();
    }
}

void DemoGain_View::highlitePeak(uint8_t isHighlighted, AAX_EHighlightColor colour) {
    HighlightKnob(cDemoGain_GainID, isHighlighted != 0, colour);
}

void DemoGain_View::highliteDecay(uint8_t isHighlighted, AAX_EHighlightColor colour) {
    HighlightKnob(cDemoGain_VolumeID, isHighlighted != 0, colour);
}

void DemoGain_View::HighlightKnob(std::string_view id, bool isHighlighted, AAX_EHighlightColor colour) {
    const Control* const row = DemoGain_Gestures::ControlOf(id);
    if (row == nullptr || row->mKind != Kind::kKnob) {
        return;
    }
    // Every row of this kind has a control of this class.
    auto* const knob = static_cast<DemoGain_AnimKnobVST*>(GetControl(id));
    if (!isHighlighted) {
        knob->setCoronaColor(kNoHighlightColor);
    } else if (colour >= 0 && static_cast<std::size_t>(colour) < std::size(kHighlightColors)) {
        knob->setCoronaColor(kHighlightColors[colour]);
    }
    knob->setHighLite(isHighlighted);
    knob->invalid();
}
