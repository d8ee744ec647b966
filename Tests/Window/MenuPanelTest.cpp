#include "Window/MenuPanel.h"

#include "Tests/Window/PaintedPicture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace varno::test {
namespace {

using Kind = MenuItem::Kind;
using Mark = MenuItem::Mark;

constexpr int kWide = 2000;

MenuItem row(const std::string& text, const std::string& detail = {}, Mark mark = Mark::kNone) {
    return {Kind::kRow, text, detail, mark, true};
}
MenuItem disabled(const std::string& text) {
    return {Kind::kRow, text, {}, Mark::kNone, false};
}
MenuItem heading(const std::string& text) {
    return {Kind::kHeading, text, {}, Mark::kNone, true};
}
MenuItem separator() {
    return {Kind::kSeparator, {}, {}, Mark::kNone, true};
}

PanelStyle scaled(double scale) {
    PanelStyle style;
    style.scale = scale;
    return style;
}

// Rows 1, 3 and 5 can be chosen.
std::vector<MenuItem> someItems() {
    return {heading("Factory"), row("Drums"), separator(), row("Bass"), disabled("Broken"), row("Äther")};
}

Picture drawn(const MenuPanel& panel, std::optional<std::size_t> highlighted = {}) {
    return painted(panel.size(), [&](cairo_t* context) {
        fillPanel(context, {0, 0, panel.size().width, panel.size().height}, PanelStyle().panel);
        panel.draw(context, highlighted);
    });
}

TEST(MenuPanelTest, EntriesLieBelowEachOther) {
    const MenuPanel panel(someItems(), scaled(1), kWide);
    ASSERT_EQ(panel.count(), 6U);
    int y = panel.areaOf(0).y;
    EXPECT_GT(y, 0);
    for (std::size_t i = 0; i < panel.count(); ++i) {
        const WindowArea area = panel.areaOf(i);
        EXPECT_EQ(area.y, y);
        EXPECT_EQ(area.width, panel.size().width);
        EXPECT_GT(area.height, 0);
        y = area.bottom();
    }
    EXPECT_GT(panel.size().height, y);
    EXPECT_EQ(panel.areaOf(1).height, panel.areaOf(3).height);
    EXPECT_LT(panel.areaOf(2).height, panel.areaOf(1).height);
}

TEST(MenuPanelTest, GrowsWithTheScaleAndTheTexts) {
    const MenuPanel plain(someItems(), scaled(1), kWide);
    const MenuPanel twice(someItems(), scaled(2), kWide);
    EXPECT_NEAR(twice.size().width, 2 * plain.size().width, 4);
    EXPECT_NEAR(twice.size().height, 2 * plain.size().height, 12);
    const MenuPanel wider({row(std::string(60, 'm'))}, scaled(1), kWide);
    EXPECT_GT(wider.size().width, plain.size().width);
    const MenuPanel widest({row(std::string(60, 'm'), "Ctrl-Z")}, scaled(1), kWide);
    EXPECT_GT(widest.size().width, wider.size().width);
}

TEST(MenuPanelTest, ADetailBesideAShortTextIsWhole) {
    const auto detailOf = [](const MenuPanel& panel) {
        constexpr int kRoom = 66; // for the detail
        const WindowArea area = panel.areaOf(0);
        const Picture picture = drawn(panel);
        std::vector<std::uint32_t> pixels;
        for (int y = area.y; y < area.bottom(); ++y) {
            for (int x = area.width - kRoom; x < area.width; ++x) {
                pixels.push_back(picture.at({x, y}));
            }
        }
        return pixels;
    };
    const MenuPanel narrow({row("1x", "46 frames")}, scaled(1), kWide);
    const MenuPanel wide({row("1x", "46 frames"), row(std::string(40, 'm'))}, scaled(1), kWide);
    ASSERT_GT(wide.size().width, 2 * narrow.size().width);
    EXPECT_EQ(detailOf(narrow), detailOf(wide));
}

TEST(MenuPanelTest, LongTextsAreCutToTheWidth) {
    const MenuPanel panel({row(std::string(500, 'E'), std::string(500, 'E')), row("Short")}, scaled(1), 300);
    EXPECT_EQ(panel.size().width, 300);
    EXPECT_EQ(panel.areaOf(0).height, panel.areaOf(1).height); // one line
    const Picture picture = drawn(panel);
    const WindowArea area = panel.areaOf(0);
    EXPECT_TRUE(hasColour(picture, {area.x, area.y, 150, area.height}, PanelStyle().text));
    // The detail has its own room at the right, and neither runs out of the panel.
    EXPECT_TRUE(hasColour(picture, {160, area.y, 130, area.height}, PanelStyle().quietText));
    for (const int x : {0, 9, 295, 299}) {
        EXPECT_EQ(picture.at({x, area.y + area.height / 2}), PanelStyle().panel) << x;
    }
}

TEST(MenuPanelTest, OnlyRowsThatAreEnabledCanBeChosen) {
    const MenuPanel panel(someItems(), scaled(1), kWide);
    std::vector<std::size_t> choosable;
    for (std::size_t i = 0; i < panel.count(); ++i) {
        const WindowArea area = panel.areaOf(i);
        const auto found = panel.choosableAt({5, area.y + area.height / 2});
        EXPECT_EQ(found.has_value(), panel.isChoosable(i));
        if (found) {
            EXPECT_EQ(*found, i);
            choosable.push_back(i);
            EXPECT_EQ(panel.choosableAt({area.x, area.y}), i);
            EXPECT_EQ(panel.choosableAt({area.right() - 1, area.bottom() - 1}), i);
        }
    }
    EXPECT_THAT(choosable, testing::ElementsAre(1U, 3U, 5U));
    EXPECT_EQ(panel.choosableAt({-1, panel.areaOf(1).y}), std::nullopt);
    EXPECT_EQ(panel.choosableAt({panel.size().width, panel.areaOf(1).y}), std::nullopt);
    EXPECT_EQ(panel.choosableAt({5, 0}), std::nullopt);
    EXPECT_EQ(panel.choosableAt({5, panel.size().height - 1}), std::nullopt);
}

TEST(MenuPanelTest, StepsGoAroundTheEnds) {
    const MenuPanel panel(someItems(), scaled(1), kWide);
    EXPECT_EQ(panel.next({}, true), 1U);
    EXPECT_EQ(panel.next({}, false), 5U);
    EXPECT_EQ(panel.next(1, true), 3U);
    EXPECT_EQ(panel.next(3, true), 5U);
    EXPECT_EQ(panel.next(5, true), 1U);
    EXPECT_EQ(panel.next(1, false), 5U);
    EXPECT_EQ(panel.next(5, false), 3U);
    EXPECT_EQ(panel.next(2, true), 3U); // from a line
    EXPECT_EQ(MenuPanel({row("one")}, scaled(1), kWide).next(0, true), 0U);
    EXPECT_EQ(MenuPanel({disabled("x"), separator()}, scaled(1), kWide).next({}, true), std::nullopt);
    EXPECT_EQ(MenuPanel({}, scaled(1), kWide).next({}, false), std::nullopt);
}

TEST(MenuPanelTest, LettersFindTheNextRowThatBeginsWithThem) {
    std::vector<MenuItem> items = someItems();
    items.push_back(row("bells"));
    items.push_back(row(""));
    items.push_back(row("\xFF\xFE"));
    const MenuPanel panel(items, scaled(1), kWide);
    EXPECT_EQ(panel.nextWith({}, U'b'), 3U);
    EXPECT_EQ(panel.nextWith(3, U'B'), 6U);
    EXPECT_EQ(panel.nextWith(6, U'b'), 3U);
    EXPECT_EQ(panel.nextWith({}, U'\u00E4'), 5U);      // whatever its case
    EXPECT_EQ(panel.nextWith(1, U'd'), 1U);            // itself is the only one
    EXPECT_EQ(panel.nextWith({}, U'f'), std::nullopt); // a heading
    EXPECT_EQ(panel.nextWith({}, U'z'), std::nullopt);
}

TEST(MenuPanelTest, StatesAreDrawnInTheirColours) {
    const PanelStyle style;
    const MenuPanel panel({row("Drums", "Ctrl-D"), disabled("Broken"), heading("Mine"), separator()}, style,
                          kWide);
    const auto has = [&](const Picture& picture, std::size_t i, std::uint32_t colour) {
        return hasColour(picture, panel.areaOf(i), colour);
    };
    const Picture plain = drawn(panel);
    EXPECT_TRUE(has(plain, 0, style.text));
    EXPECT_TRUE(has(plain, 0, style.quietText));
    EXPECT_TRUE(has(plain, 1, style.offText));
    EXPECT_FALSE(has(plain, 1, style.text));
    EXPECT_TRUE(has(plain, 2, style.quietText));
    EXPECT_TRUE(has(plain, 3, style.edge));
    EXPECT_FALSE(has(plain, 0, style.highlight));
    const Picture highlighted = drawn(panel, 0);
    EXPECT_TRUE(has(highlighted, 0, style.highlight));
    EXPECT_TRUE(has(highlighted, 0, style.highlightText));
    EXPECT_FALSE(has(highlighted, 0, style.text));
    EXPECT_EQ(drawn(panel, 1), plain); // what cannot be chosen is not highlighted
}

// Which mark it is can be read without colour.
TEST(MenuPanelTest, MarksDifferInShape) {
    PanelStyle style;
    style.warning = style.text;
    std::vector<Picture> pictures;
    for (const Mark mark : {Mark::kNone, Mark::kCheck, Mark::kBullet, Mark::kDamaged}) {
        pictures.push_back(drawn(MenuPanel({row("Drums", {}, mark)}, style, kWide)));
    }
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        for (std::size_t j = i + 1; j < pictures.size(); ++j) {
            EXPECT_NE(pictures[i], pictures[j]) << i << ' ' << j;
        }
    }
    EXPECT_TRUE(hasColour(drawn(MenuPanel({row("Drums", {}, Mark::kDamaged)}, PanelStyle(), kWide)),
                          {0, 0, 28, 20}, PanelStyle().warning));
}

TEST(MenuPanelTest, MarksStandLeftOfTheTexts) {
    const PanelStyle style;
    const Picture plain = drawn(MenuPanel({row("Drums")}, style, kWide));
    for (const Mark mark : {Mark::kCheck, Mark::kBullet, Mark::kDamaged}) {
        const MenuPanel panel({row("Drums", {}, mark)}, style, kWide);
        const auto area = differingArea(plain, drawn(panel));
        ASSERT_TRUE(area);
        EXPECT_GE(area->x, 9);
        EXPECT_LE(area->x + area->width, 20);
        EXPECT_GE(area->width, mark == Mark::kBullet ? 6 : 8);
        EXPECT_GE(area->y, panel.areaOf(0).y);
        EXPECT_LE(area->y + area->height, panel.areaOf(0).bottom());
        const int above = area->y - panel.areaOf(0).y;
        const int below = panel.areaOf(0).bottom() - (area->y + area->height);
        EXPECT_NEAR(above, below, 3);
    }
}

TEST(MenuPanelTest, OnlyWhatIsDamagedHasTheColourOfAWarning) {
    const PanelStyle style;
    for (const Mark mark : {Mark::kCheck, Mark::kBullet}) {
        const MenuPanel panel({row("Drums", {}, mark)}, style, kWide);
        EXPECT_FALSE(hasColour(drawn(panel), panel.areaOf(0), style.warning));
    }
    const MenuPanel damaged({row("Drums", {}, Mark::kDamaged)}, style, kWide);
    EXPECT_TRUE(hasColour(drawn(damaged), damaged.areaOf(0), style.warning));
    EXPECT_FALSE(hasColour(drawn(damaged, 0), damaged.areaOf(0), style.warning));
}

TEST(MenuPanelTest, DetailsEndAtTheRightSide) {
    const MenuPanel without({row("On")}, PanelStyle(), kWide);
    const MenuPanel with({row("On", "E")}, PanelStyle(), kWide);
    ASSERT_EQ(with.size(), without.size()); // the least width
    const auto area = differingArea(drawn(without), drawn(with));
    ASSERT_TRUE(area);
    EXPECT_NEAR(area->x + area->width, with.size().width - 10, 2);
}

TEST(MenuPanelTest, MarksGrowWithTheScale) {
    const auto pixels = [](double scale) {
        const PanelStyle style = scaled(scale);
        const MenuPanel panel({row("", {}, Mark::kCheck)}, style, kWide);
        const Picture picture = drawn(panel);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                count += picture.at({x, y}) != style.panel ? 1 : 0;
            }
        }
        return count;
    };
    // As wide as it is long: four times the area.
    EXPECT_NEAR(pixels(4), 4 * pixels(2), pixels(2));
}

double luminance(std::uint32_t colour) {
    const auto part = [&](int shift) {
        const double value = (colour >> shift & 0xFF) / 255.0;
        return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(16) + 0.7152 * part(8) + 0.0722 * part(0);
}

double contrast(std::uint32_t one, std::uint32_t other) {
    const auto [low, high] = std::minmax({luminance(one), luminance(other)});
    return (high + 0.05) / (low + 0.05);
}

TEST(PanelStyleTest, ItsColoursCanBeRead) {
    const PanelStyle style;
    for (const std::uint32_t text : {style.text, style.quietText, style.offText}) {
        EXPECT_GE(contrast(text, style.panel), 4.5) << std::hex << text;
    }
    EXPECT_GE(contrast(style.highlightText, style.highlight), 4.5);
    for (const std::uint32_t mark : {style.edge, style.warning, style.highlight}) {
        EXPECT_GE(contrast(mark, style.panel), 3.0) << std::hex << mark;
    }
}

TEST(PanelStyleTest, LengthsAreWholePixels) {
    EXPECT_EQ(scaled(1).pixels(3), 3);
    EXPECT_EQ(scaled(1.25).pixels(3), 4); // 3.75
    EXPECT_EQ(scaled(1.25).pixels(1), 1);
    EXPECT_EQ(scaled(1.5).pixels(1), 2);
    EXPECT_EQ(scaled(0.5).pixels(0.5), 1); // never nothing
    EXPECT_EQ(scaled(3).pixels(10), 30);
}

TEST(PanelTextTest, ReadsAnyBytes) {
    const PanelText broken(PanelStyle(), "a\xFF\xC3", 12);
    EXPECT_GT(broken.size().width, PanelText(PanelStyle(), "a", 12).size().width);
    const PanelText lines(PanelStyle(), "one\ntwo", 12);
    EXPECT_LT(lines.size().height, 2 * PanelText(PanelStyle(), "one", 12).size().height);
}

TEST(PanelTextTest, IsCutOrWrapped) {
    const std::string text = "a sentence that is longer than its room";
    const PanelText whole(PanelStyle(), text, 12);
    PanelText cut(PanelStyle(), text, 12);
    cut.limit(100, PanelText::Overlong::kCut);
    EXPECT_LE(cut.size().width, 100);
    EXPECT_EQ(cut.size().height, whole.size().height);
    PanelText wrapped(PanelStyle(), text, 12);
    wrapped.limit(100, PanelText::Overlong::kWrap);
    EXPECT_LE(wrapped.size().width, 100);
    EXPECT_GE(wrapped.size().height, 3 * whole.size().height - 2);
    PanelText word(PanelStyle(), std::string(80, 'm'), 12);
    word.limit(100, PanelText::Overlong::kWrap);
    EXPECT_LE(word.size().width, 100);
}

TEST(PanelTextTest, BoldIsWider) {
    EXPECT_GT(PanelText(PanelStyle(), "Harmonic", 12, PanelText::Weight::kBold).size().width,
              PanelText(PanelStyle(), "Harmonic", 12).size().width);
}

} // namespace
} // namespace varno::test
