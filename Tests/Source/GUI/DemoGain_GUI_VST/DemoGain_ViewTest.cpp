#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "AAX_VViewContainer.h"
#include "DemoGain_ParameterTable.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"
#include "Tests/Support/RecordingInstance.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <typeinfo>

namespace {

using DemoGain_ViewLayout::Art;
using varno::test::SharedBitmapsScope;
using varno::test::ViewFixture;
using VSTGUI::CBitmap;
using VSTGUI::CColor;
using VSTGUI::CControl;
using VSTGUI::CRect;
using VSTGUI::SharedPointer;

using DemoGain_ViewTest = ViewFixture;

struct ExpectedControl {
    const char* mID;
    const std::type_info& mClass;
    CRect mPlace;
    SharedPointer<CBitmap>& mBitmap;
    std::int32_t mTag;
};

// One picture of a bitmap at its left and top; the artwork defines the sizes of pictures.
CRect at(int x, int y, Art art) {
    const DemoGain_ViewLayout::Bitmap& bitmap = DemoGain_ViewLayout::BitmapOf(art);
    return {VSTGUI::CPoint(x, y), VSTGUI::CPoint(bitmap.mWidth, bitmap.mHeight)};
}

const ExpectedControl kExpectedControls[] = {
    {"Gain", typeid(DemoGain_AnimKnobVST), at(24, 56, Art::kKnob), DemoGain_View::m_hGain, 3},
    {"Volume", typeid(DemoGain_AnimKnobVST), at(604, 56, Art::kKnob), DemoGain_View::m_hGain, 12},
    {"Atk", typeid(DemoGain_AnimKnobVST), at(269, 56, Art::kKnob), DemoGain_View::m_hGain, 6},
    {"Rls", typeid(DemoGain_AnimKnobVST), at(409, 56, Art::kKnob), DemoGain_View::m_hGain, 7},
    {"Hot", typeid(DemoGain_AnimKnobVST), at(24, 208, Art::kKnob), DemoGain_View::m_hGain, 13},
    {"Mix", typeid(DemoGain_AnimKnobVST), at(604, 208, Art::kKnob), DemoGain_View::m_hGain, 15},
    {"HP", typeid(DemoGain_OnOffButtonVST), at(161, 77, Art::kSwitch), DemoGain_View::m_hSwitch, 4},
    {"Band", typeid(DemoGain_OnOffButtonVST), at(212, 77, Art::kSwitch), DemoGain_View::m_hSwitch, 5},
    {"UK", typeid(DemoGain_OnOffButtonVST), at(549, 135, Art::kSwitch), DemoGain_View::m_hSwitch, 8},
    {"ASw", typeid(DemoGain_OnOffButtonVST), at(549, 72, Art::kSwitch), DemoGain_View::m_hSwitch, 9},
    {"LinkSw", typeid(DemoGain_OnOffButtonVST), at(549, 224, Art::kSwitch), DemoGain_View::m_hSwitch, 10},
    {"HSw", typeid(DemoGain_OnOffButtonVST), at(161, 132, Art::kSwitch), DemoGain_View::m_hSwitch, 11},
    {"Ratio", typeid(DemoGain_SwitchHorVST), at(233, 233, Art::kRatio), DemoGain_View::m_hRatio, 14},
    {"PR1K", typeid(DemoGain_KickButtonVST), at(193, 361, Art::kCopy), DemoGain_View::m_hSwPr1, 18},
    {"PR2K", typeid(DemoGain_KickButtonVST), at(323, 361, Art::kPaste), DemoGain_View::m_hSwPr2, 19},
    {"METERGR1", typeid(DemoGain_VuMeterVST), at(180, 278, Art::kMeterOff), DemoGain_View::m_hGR1On, -1},
    {"METERGR2", typeid(DemoGain_VuMeterVST), at(180, 303, Art::kMeterOff), DemoGain_View::m_hGR1On, -1},
};

// Layout.

TEST_F(DemoGain_ViewTest, FrameIsAsLargeAsItsBackground) {
    EXPECT_EQ(view->getFrame()->getViewSize(), at(0, 0, Art::kBackground));
    EXPECT_EQ(view->getFrame()->getBackground(), DemoGain_View::m_hPIBackground);
    EXPECT_EQ(view->getParameters(), model.Get());
}

TEST_F(DemoGain_ViewTest, EveryControlIsInItsPlace) {
    for (const ExpectedControl& expected : kExpectedControls) {
        CControl* const control = view->GetControl(expected.mID);
        ASSERT_NE(control, nullptr) << expected.mID;
        EXPECT_EQ(typeid(*control), expected.mClass) << expected.mID;
        EXPECT_EQ(control->getViewSize(), expected.mPlace) << expected.mID;
        EXPECT_EQ(control->getBackground(), expected.mBitmap) << expected.mID;
        EXPECT_EQ(control->getTag(), expected.mTag) << expected.mID;
    }
    EXPECT_EQ(view->GetControl("nobody"), nullptr);
}

TEST_F(DemoGain_ViewTest, LaterControlsLieAboveEarlierOnes) {
    std::vector<VSTGUI::CView*> children;
    view->getFrame()->forEachChild([&](VSTGUI::CView* child) { children.push_back(child); });
    ASSERT_EQ(children.size(), std::size(kExpectedControls) + 1);
    EXPECT_EQ(children[0], view->GetStatusLabel());
    for (std::size_t i = 0; i < std::size(kExpectedControls); ++i) {
        EXPECT_EQ(children[i + 1], view->GetControl(kExpectedControls[i].mID)) << kExpectedControls[i].mID;
    }
}

TEST_F(DemoGain_ViewTest, StatusLabelLooksAsItShould) {
    const VSTGUI::CTextLabel& label = *view->GetStatusLabel();
    EXPECT_EQ(label.getViewSize(), CRect(10, 362, 150, 380));
    EXPECT_EQ(label.getText().getString(), "---");
    EXPECT_EQ(label.getFont(), VSTGUI::kNormalFont);
    EXPECT_EQ(label.getFontColor(), CColor(230, 230, 230, 255));
    EXPECT_EQ(label.getBackColor(), VSTGUI::kBlackCColor);
    EXPECT_EQ(label.getFrameColor(), VSTGUI::kBlackCColor);
    EXPECT_EQ(label.getHoriAlign(), VSTGUI::kLeftText);
}

TEST_F(DemoGain_ViewTest, MetersAreHorizontalWithTheirBitmapsCrossed) {
    for (const char* id : {"METERGR1", "METERGR2"}) {
        const auto& meter = dynamic_cast<VSTGUI::CVuMeter&>(*view->GetControl(id));
        EXPECT_EQ(meter.getStyle(), 1);
        EXPECT_EQ(meter.getNbLed(), 16);
        EXPECT_EQ(meter.getOnBitmap(), DemoGain_View::m_hGR1On);
        EXPECT_EQ(meter.getOffBitmap(), DemoGain_View::m_hGR1Off);
    }
}

TEST_F(DemoGain_ViewTest, KnobsAndRatioHaveTheirPictures) {
    const auto& knob = dynamic_cast<VSTGUI::CAnimKnob&>(*view->GetControl("Gain"));
    EXPECT_EQ(knob.getNumSubPixmaps(), 131);
    EXPECT_EQ(knob.getHeightOfOneImage(), knob.getHeight());
    const auto& ratio = dynamic_cast<VSTGUI::CHorizontalSwitch&>(*view->GetControl("Ratio"));
    EXPECT_EQ(ratio.getNumSubPixmaps(), 8);
    EXPECT_EQ(ratio.getHeightOfOneImage(), ratio.getHeight());
    const auto& copy = dynamic_cast<VSTGUI::CKickButton&>(*view->GetControl("PR1K"));
    EXPECT_EQ(copy.getHeightOfOneImage(), copy.getHeight());
}

TEST_F(DemoGain_ViewTest, PlacesFollowTheBitmapsSizes) {
    const SharedBitmapsScope scope;
    DemoGain_View::m_hGain = VSTGUI::makeOwned<CBitmap>(VSTGUI::CPoint(50, 131 * 60));
    DemoGain_View::m_hPIBackground = VSTGUI::makeOwned<CBitmap>(VSTGUI::CPoint(700, 400));
    SharedBitmapsScope::load();
    openView();
    EXPECT_EQ(view->GetControl("Gain")->getViewSize(), CRect(24, 56, 24 + 50, 116));
    EXPECT_EQ(view->getFrame()->getViewSize(), CRect(0, 0, 700, 400));
}

// Values.

TEST_F(DemoGain_ViewTest, ControlsBeginWithTheirParametersValues) {
    for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
        CControl* const control = view->GetControl(parameter.mIdentifier);
        if (control != nullptr) {
            EXPECT_EQ(control->getValue(), parameter.mDefault) << parameter.mIdentifier;
            EXPECT_EQ(control->getDefaultValue(), parameter.mDefault) << parameter.mIdentifier;
        }
    }
    automate("Gain", 0.75);
    automate("UK", 1.0);
    openView();
    EXPECT_EQ(view->GetControl("Gain")->getValue(), 0.75F);
    EXPECT_EQ(view->GetControl("UK")->getValue(), 1.0F);
    EXPECT_EQ(view->GetControl("Gain")->getDefaultValue(), 0.5F);
}

TEST_F(DemoGain_ViewTest, OpeningAsksForNoValue) {
    EXPECT_THAT(automation.requests, testing::IsEmpty());
}

TEST_F(DemoGain_ViewTest, ControlsOfferGesturesToTheHostByName) {
    varno::RecordingViewContainer native;
    native.offer(IID_IAAXViewContainerV1, &native);
    native.result = AAX_SUCCESS;
    AAX_VViewContainer container(&native);
    openView(&container);
    for (const DemoGain_ViewLayout::Control& row : DemoGain_ViewLayout::kControls) {
        native.calls.clear();
        CControl* const control = view->GetControl(row.mID);
        VSTGUI::CPoint where = control->getViewSize().getCenter();
        control->onMouseDown(where, VSTGUI::kLButton);
        if (row.mKind == DemoGain_ViewLayout::Kind::kMeter) {
            EXPECT_THAT(native.calls, testing::IsEmpty()) << "a meter only shows";
        } else {
            EXPECT_THAT(native.calls,
                        testing::Contains(varno::callText("HandleParameterMouseDown", row.mID, 0U)));
        }
    }
    EXPECT_THAT(model->takeCalls(), testing::IsEmpty()) << "the host has taken the clicks";
    view = nullptr;
}

// Highlight.

TEST_F(DemoGain_ViewTest, HighlightsInTheHostsColours) {
    auto& gain = dynamic_cast<DemoGain_AnimKnobVST&>(*view->GetControl("Gain"));
    const std::pair<std::int32_t, CColor> colours[] = {
        {0, {200, 0, 0, 255}}, {1, {0, 0, 200, 255}}, {2, {0, 200, 0, 255}}, {3, {200, 200, 0, 255}}};
    for (const auto& [colour, shown] : colours) {
        view->highlitePeak(1, static_cast<AAX_EHighlightColor>(colour));
        EXPECT_TRUE(gain.getHighLite());
        EXPECT_EQ(gain.getCoronaColor(), shown) << colour;
    }
    for (const std::int32_t strange : {4, -1, 1000}) {
        view->highlitePeak(0, AAX_eHighlightColor_Red);
        EXPECT_FALSE(gain.getHighLite());
        EXPECT_EQ(gain.getCoronaColor(), CColor(100, 100, 100, 0));
        view->highlitePeak(255, static_cast<AAX_EHighlightColor>(strange));
        EXPECT_TRUE(gain.getHighLite());
        EXPECT_EQ(gain.getCoronaColor(), CColor(100, 100, 100, 0)) << "stays as it was";
    }
}

TEST_F(DemoGain_ViewTest, EachKnobHasItsOwnHighlight) {
    auto& gain = dynamic_cast<DemoGain_AnimKnobVST&>(*view->GetControl("Gain"));
    auto& volume = dynamic_cast<DemoGain_AnimKnobVST&>(*view->GetControl("Volume"));
    view->highliteDecay(1, AAX_eHighlightColor_Yellow);
    EXPECT_TRUE(volume.getHighLite());
    EXPECT_EQ(volume.getCoronaColor(), CColor(200, 200, 0, 255));
    EXPECT_FALSE(gain.getHighLite());
    view->highlitePeak(1, AAX_eHighlightColor_Blue);
    view->highliteDecay(0, AAX_eHighlightColor_Yellow);
    EXPECT_FALSE(volume.getHighLite());
    EXPECT_TRUE(gain.getHighLite());
}

// Bitmaps.

TEST_F(DemoGain_ViewTest, BitmapsHoldTheirFilesInTheSizeOfTheLayout) {
    const std::pair<SharedPointer<CBitmap>&, const char*> files[] = {
        {DemoGain_View::m_hPIBackground, "Varno_simple_sfondo.png"},
        {DemoGain_View::m_hGain, "Varno_simple_knob.png"},
        {DemoGain_View::m_hGR1On, "Varno_GRmeter_off.png"},
        {DemoGain_View::m_hGR1Off, "Varno_GRmeter_on.png"},
        {DemoGain_View::m_hSwitch, "Varno_simple_switch.png"},
        {DemoGain_View::m_hRatio, "Varno_simple_ratio.png"},
        {DemoGain_View::m_hSwPr1, "Varno_PresetPulsCopy.png"},
        {DemoGain_View::m_hSwPr2, "Varno_PresetPulsPaste.png"},
    };
    for (const auto& [bitmap, file] : files) {
        EXPECT_STREQ(bitmap->getResourceDescription().u.name, file);
        const auto* const row =
            std::find_if(std::begin(DemoGain_ViewLayout::kBitmaps), std::end(DemoGain_ViewLayout::kBitmaps),
                         [file = std::string_view(file)](const auto& each) { return each.mFile == file; });
        EXPECT_EQ(bitmap->getSize(), VSTGUI::CPoint(row->mWidth, row->mHeight * row->mPictures)) << file;
    }
}

TEST_F(DemoGain_ViewTest, BitmapsAreLoadedOnce) {
    CBitmap* const knob = DemoGain_View::m_hGain;
    CBitmap* const background = DemoGain_View::m_hPIBackground;
    UseVSTGUI("/nowhere");
    DemoGain_View::LoadViewResources();
    openView();
    EXPECT_EQ(DemoGain_View::m_hGain, knob);
    EXPECT_EQ(DemoGain_View::m_hPIBackground, background);
}

TEST_F(DemoGain_ViewTest, WithoutFilesTheViewOpensEmpty) {
    const SharedBitmapsScope scope;
    UseVSTGUI("/nowhere");
    DemoGain_View::LoadViewResources();
    ASSERT_TRUE(DemoGain_View::m_hGain);
    EXPECT_FALSE(DemoGain_View::m_hGain->isLoaded());
    openView();
    EXPECT_TRUE(view->getFrame()->getViewSize().isEmpty());
    for (const ExpectedControl& expected : kExpectedControls) {
        const CRect place = view->GetControl(expected.mID)->getViewSize();
        EXPECT_EQ(place, CRect(expected.mPlace.getTopLeft(), VSTGUI::CPoint())) << expected.mID;
    }
    EXPECT_EQ(move("Mix", 0.5F), std::vector<std::string>{"set Mix 0.5"});
    view->Tick(1000);
}

// The shared look.

TEST(DemoGain_ViewLook, FontsAreVerdanaInFourSizes) {
    const std::pair<const SharedPointer<VSTGUI::CFontDesc>&, int> fonts[] = {
        {gMyFontSmall, 11}, {gMyFont, 12}, {gMyFontBig, 14}, {gMyFontLogo, 28}};
    for (const auto& [font, points] : fonts) {
        EXPECT_EQ(font->getName().getString(), "Verdana");
        EXPECT_EQ(font->getSize(), points);
    }
}

} // namespace
