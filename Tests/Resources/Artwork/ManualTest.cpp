#include "ControlNames.h"
#include "DemoGain_ViewLayout.h"
#include "Support/Image.h"
#include "Typeface.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>

namespace varno {
namespace {

/// The names in the manual's numbered list of controls, which must be numbered from 1 on.
std::vector<std::string> namesInManual() {
    std::ifstream manual(VARNO_MANUAL);
    const std::regex row(R"(\| (\d+) \| \*\*([^*]+)\*\* \|.*)");
    std::vector<std::string> names;
    std::smatch match;
    for (std::string line; std::getline(manual, line);) {
        if (std::regex_match(line, match, row)) {
            names.push_back(match[2]);
            EXPECT_EQ(std::to_string(names.size()), match[1]) << line;
        }
    }
    return names;
}

/// The words that are engraved beside the controls, in their order.
std::string engravedWords() {
    const Typeface typeface;
    const Canvas canvas(1, 1, 1);
    Painter painter(canvas.cairo(), typeface, false);
    drawControlNames(painter);
    std::string words;
    for (const DrawnText& text : painter.texts()) {
        words.append(text.mText).append(" ");
    }
    return words;
}

TEST(Manual, NumbersTheControlsAsThePictureDoes) {
    EXPECT_EQ(std::size(DemoGain_ViewLayout::kControls), namesInManual().size());
}

TEST(Manual, CallsTheControlsWhatThePanelDoes) {
    const std::vector<std::string> names = namesInManual();
    std::string words;
    // The preset buttons bring their own lettering; the meters are called L and R.
    for (size_t i = 0; i < names.size(); ++i) {
        const DemoGain_ViewLayout::Kind kind = DemoGain_ViewLayout::kControls[i].mKind;
        if (kind != DemoGain_ViewLayout::Kind::KickButton && kind != DemoGain_ViewLayout::Kind::Meter) {
            words.append(names[i]).append(" ");
        }
    }
    EXPECT_EQ(engravedWords(), words + "L R ");
}

} // namespace
} // namespace varno
