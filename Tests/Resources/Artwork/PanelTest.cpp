#include "Artwork/Panel.h"

#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
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
    const Typeface typeface;
    const Canvas canvas(1, 1, 1);
    Painter painter(canvas.cairo(), typeface, false);
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
    // The preset buttons carry their own lettering; the meters are called L and R.
    for (std::size_t i = 0; i < names.size(); ++i) {
        const DemoGain_ViewLayout::Kind kind = DemoGain_ViewLayout::kControls[i].mKind;
        if (kind != DemoGain_ViewLayout::Kind::kKickButton && kind != DemoGain_ViewLayout::Kind::kMeter) {
            words.append(names[i]).append(" ");
        }
    }
    EXPECT_EQ(engravedWords(), words);
}

} // namespace
} // namespace varno
