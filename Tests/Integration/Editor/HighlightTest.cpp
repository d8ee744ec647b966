// The host's highlight around two knobs.
#include "Tests/Integration/Editor/EditorTest.h"

#include <map>

namespace varno::test {
namespace {

const std::map<AAX_EHighlightColor, std::uint32_t> kColours = {
    {AAX_eHighlightColor_Red, 0x00C80000},
    {AAX_eHighlightColor_Blue, 0x000000C8},
    {AAX_eHighlightColor_Green, 0x0000C800},
    {AAX_eHighlightColor_Yellow, 0x00C8C800},
};

class Highlight : public OneEditorTest {
protected:
    // Counts the pixels of a knob that have a colour, up to a small share of what is behind it.
    int countPixels(const std::string& id, std::uint32_t colour) const {
        constexpr int kTrace = 24;
        const Picture picture = window->picture(id);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                count += channelDifference(picture.at({x, y}), colour) <= kTrace ? 1 : 0;
            }
        }
        return count;
    }

    // Waits for a ring of the colour.
    bool rings(const std::string& id, std::uint32_t colour) {
        constexpr int kRing = 60; // Pixels; a ring around the knob has at least that many.
        return loop.await([&] { return countPixels(id, colour) >= kRing; });
    }

    const int plain = knobPicture(0.5);
};

TEST_F(Highlight, ofAnyParameterIsTheGainKnobs) {
    for (const auto& [code, colour] : kColours) {
        for (const char* id : {"Mix", "Gain", "HP"}) {
            EXPECT_TRUE(shows(*window, "Gain", plain));
            EXPECT_EQ(countPixels("Gain", colour), 0);
            window->editor().highlight(id, true, code);
            EXPECT_TRUE(rings("Gain", colour)) << code;
            EXPECT_TRUE(shows(*window, "Volume", plain));
            window->editor().highlight(id, false, code);
        }
    }
    EXPECT_TRUE(shows(*window, "Gain", plain));
}

TEST_F(Highlight, ofTheVolumeIsTheVolumeKnobsToo) {
    for (const auto& [code, colour] : kColours) {
        window->editor().highlight("Volume", true, code);
        EXPECT_TRUE(rings("Volume", colour)) << code;
        EXPECT_TRUE(rings("Gain", colour)) << code;
    }
    window->editor().highlight("Volume", false, AAX_eHighlightColor_Red);
    EXPECT_TRUE(shows(*window, "Gain", plain));
    EXPECT_TRUE(shows(*window, "Volume", plain));
}

TEST_F(Highlight, inAnUnknownColourKeepsTheLastOne) {
    window->editor().highlight("Volume", true, AAX_eHighlightColor_Blue);
    EXPECT_TRUE(rings("Volume", kColours.at(AAX_eHighlightColor_Blue)));
    window->editor().highlight("Volume", true, static_cast<AAX_EHighlightColor>(99));
    awaitDrawing(*window, *instance);
    EXPECT_TRUE(rings("Volume", kColours.at(AAX_eHighlightColor_Blue)));
}

TEST_F(Highlight, staysWhileTheKnobTurns) {
    window->editor().highlight("Gain", true, AAX_eHighlightColor_Green);
    const std::uint32_t green = kColours.at(AAX_eHighlightColor_Green);
    EXPECT_TRUE(rings("Gain", green));
    turnKnob(*window, *instance, "Gain", 0.9);
    awaitDrawing(*window, *instance);
    EXPECT_TRUE(rings("Gain", green));
    window->editor().highlight("Gain", false, AAX_eHighlightColor_Green);
    EXPECT_TRUE(shows(*window, "Gain", knobPicture(instance->normalized("Gain"))));
}

TEST_F(Highlight, isNotCarriedToTheNextView) {
    window->editor().highlight("Volume", true, AAX_eHighlightColor_Red);
    EXPECT_TRUE(rings("Volume", kColours.at(AAX_eHighlightColor_Red)));
    ViewContainer& container = window->container();
    window->editor().setContainer(nullptr);
    window->editor().highlight("Volume", true, AAX_eHighlightColor_Red); // no editor is open to show it
    window->editor().setContainer(&container);
    EXPECT_TRUE(shows(*window, "Gain", plain));
    EXPECT_TRUE(shows(*window, "Volume", plain));
}

} // namespace
} // namespace varno::test
