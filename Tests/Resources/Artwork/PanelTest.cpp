#include "Artwork/Panel.h"

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace varno {
namespace {

// The names in the manual's numbered list of controls, whose rows begin "| 1 | **Name** |".
std::vector<std::string> namesInManual() {
    constexpr std::string_view kEnd = "** |";
    std::ifstream manual(VARNO_MANUAL);
    std::vector<std::string> names;
    for (std::string line; std::getline(manual, line);) {
        const std::string start = "| " + std::to_string(names.size() + 1) + " | **";
        if (line.starts_with(start) && line.find(kEnd) != std::string::npos) {
            names.push_back(line.substr(start.size(), line.find(kEnd) - start.size()));
        }
    }
    return names;
}

// The words that are engraved beside the controls, in their order.
std::string engravedWords() {
    const Canvas canvas(1, 1, 1);
    Painter painter(canvas.cairo(), test::typeface(), false);
    drawControlNames(painter);
    std::string words;
    for (const DrawnText& text : painter.texts()) {
        words.append(text.text).append(" ");
    }
    return words;
}

TEST(Manual, NumbersTheControlsAsThePictureDoes) {
    EXPECT_EQ(std::size(DemoGain_ViewLayout::kControls), namesInManual().size());
}

TEST(Manual, CallsTheControlsWhatThePanelDoes) {
    const std::vector<std::string> names = namesInManual();
    std::string words;
    // The preset buttons carry their own lettering; the meters share theirs.
    for (std::size_t i = 0; i < names.size(); ++i) {
        const DemoGain_ViewLayout::Kind kind = DemoGain_ViewLayout::kControls[i].mKind;
        if (kind != DemoGain_ViewLayout::Kind::kKickButton && kind != DemoGain_ViewLayout::Kind::kMeter) {
            words.append(names[i]).append(" ");
        }
    }
    EXPECT_EQ(engravedWords(), words);
}

// What stands around the controls.

std::vector<DrawnText> panelTexts() {
    const Canvas canvas(1, 1, 1);
    Painter painter(canvas.cairo(), test::typeface(), false);
    drawPanel(painter);
    return painter.texts();
}

// The texts whose middle is nearer to a knob than to any other, without names and titles, from left to right
// and top to bottom: the middle of the scale, low end, unit, high end.
std::vector<std::string> scaleOf(const char* id) {
    const auto control = std::ranges::find_if(
        DemoGain_ViewLayout::kControls, [id](const auto& each) { return std::string_view(each.mID) == id; });
    const Box knob = controlBox(*control);
    constexpr double kAside = 12.0;
    constexpr double kAbove = 17.0;
    constexpr double kBelow = 13.0;
    const Box around = {knob.x - kAside, knob.y - kAbove, knob.width + 2 * kAside,
                        knob.height + kAbove + kBelow};
    std::vector<std::string> texts;
    for (const DrawnText& text : panelTexts()) {
        if (around.contains(text.box)) {
            texts.push_back(text.text);
        }
    }
    return texts;
}

TEST(KnobScales, NameTheValuesInTheirUnits) {
    using testing::ElementsAre;
    EXPECT_THAT(scaleOf("Gain"), ElementsAre("0", "−20", "+20", "dB"));
    EXPECT_THAT(scaleOf("Volume"), ElementsAre("0", "−20", "+20", "dB"));
    EXPECT_THAT(scaleOf("Atk"), ElementsAre("2.4", "0.4", "42", "ms"));
    EXPECT_THAT(scaleOf("Rls"), ElementsAre("210", "23", "759", "ms"));
    EXPECT_THAT(scaleOf("Hot"), ElementsAre("50", "0", "100", "%"));
    EXPECT_THAT(scaleOf("Mix"), ElementsAre("50", "0", "100", "%"));
}

TEST(KnobScales, NameTheDryEndOfMixAndTheCurveOfTheTimes) {
    std::vector<std::string> texts;
    std::map<std::string, double> places;
    for (const DrawnText& text : panelTexts()) {
        texts.push_back(text.text);
        places[text.text] = text.box.x;
    }
    EXPECT_THAT(texts, testing::IsSupersetOf({"wet", "dry", "times at", "ratio 5"}));
    EXPECT_LT(places["wet"], places["dry"]) << "at 0 nothing of the output is dry";
}

TEST(Panel, LeavesTheFreeAreaFree) {
    const auto& edges = DemoGain_ViewLayout::kFreeArea;
    const Box area = {static_cast<double>(edges.mLeft), static_cast<double>(edges.mTop),
                      static_cast<double>(edges.mRight - edges.mLeft),
                      static_cast<double>(edges.mBottom - edges.mTop)};
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        EXPECT_FALSE(area.overlaps(controlBox(control))) << control.mID;
    }
    for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
        const test::Image& panel = test::bundlePictures(DemoGain_ViewLayout::Art::kBackground, scale)[0];
        // The plate's shade runs straight down: a row of it has one colour.
        for (int y = static_cast<int>(std::ceil(area.y * scale.mFactor));
             y < area.bottom() * scale.mFactor - 1; ++y) {
            const int left = static_cast<int>(std::ceil(area.x * scale.mFactor));
            for (int x = left; x < area.right() * scale.mFactor - 1; ++x) {
                ASSERT_TRUE(panel.color(x, y).red == panel.color(left, y).red) << x << ", " << y;
            }
        }
    }
}

TEST(Panel, CoversEveryPixelAtEveryScale) {
    for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
        const test::Image& panel = test::bundlePictures(DemoGain_ViewLayout::Art::kBackground, scale)[0];
        for (int y = 0; y < panel.height(); ++y) {
            ASSERT_EQ(1.0, panel.alpha(panel.width() - 1, y)) << scale.mFactor << ": " << y;
        }
        for (int x = 0; x < panel.width(); ++x) {
            ASSERT_EQ(1.0, panel.alpha(x, panel.height() - 1)) << scale.mFactor << ": " << x;
        }
    }
}

// WCAG's demand on what is no text: the lines that show what belongs together, and the ticks.
TEST(Panel, LinesAndTicksStandOutFromTheirGrounds) {
    constexpr double kMark = 3.0;
    using namespace palette;
    for (const Color ground : {kSheetTop, kSheetBottom, kPlateTop, kPlateBottom, kRecess}) {
        EXPECT_GE(test::contrast(kLine, ground), kMark);
        EXPECT_GE(test::contrast(kHint, ground), kMark);
        EXPECT_GE(test::contrast(kName, ground), kMark);
    }
    EXPECT_GE(test::contrast(kName, kCapLight), kMark) << "the knobs' pointers";
    EXPECT_GE(test::contrast(kLit, kUnlit), kMark) << "the knobs' arcs";
}

} // namespace
} // namespace varno
