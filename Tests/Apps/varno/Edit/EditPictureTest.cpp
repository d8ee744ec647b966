#include "Surround/BypassPlate.h"
#include "Tests/Apps/varno/Support/BarTest.h"
#include "Tests/Apps/varno/Support/WindowChanges.h"

#include <X11/keysym.h>

#include <gmock/gmock.h>

// What changes in the picture of the window, and what does not.

namespace varno::test {
namespace {

using testing::AllOf;
using testing::AnyOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::StartsWith;

using Scale = testing::WithParamInterface<const char*>;

class EditPicture : public BarTest, public Scale {
protected:
    std::unique_ptr<Subprocess> editScaled() {
        auto program = editEffect({"--scale", GetParam()});
        mPerson.giveFocus(window());
        EXPECT_TRUE(eventually([&] { return receivesKeys(); }));
        // The averaged level begins above silence, and falls.
        const Box number = BarLayout::kMeters[0].number;
        const Place corner = scaled({number.x, number.y});
        const Place size = scaled({number.width, number.height});
        EXPECT_TRUE(eventually([&] {
            return picture({corner.x, corner.y, size.x, size.y}).countColours() == 1;
        }));
        return program;
    }
    double scale() const { return std::stod(GetParam()); }
    // A place of the layout, in pixels of the window.
    Place scaled(Place place) const {
        return {static_cast<int>(place.x * scale()), static_cast<int>(place.y * scale())};
    }
    // The window without the pointer, tips, and meters that fall.
    Picture resting() {
        mPointer.move({mPerson.screen().width_in_pixels - 1, mPerson.screen().height_in_pixels - 1});
        Picture last;
        EXPECT_TRUE(eventually([&] {
            if (isTipShown()) { // it may go between the second picture and the last question
                return false;
            }
            const Picture before = picture();
            std::this_thread::sleep_for(std::chrono::milliseconds(250));
            last = picture();
            return !isTipShown() && changedParts(before, last, scale()).empty();
        }));
        return last;
    }
};

TEST_P(EditPicture, ChangesOnlyWhereItMust) {
    const auto program = editScaled();
    const Picture plain = resting();
    wheel(scaled(middleOf("Gain")), Button::kWheelUp, 6);
    const Picture turned = resting();
    EXPECT_THAT(changedParts(plain, turned, scale()), ElementsAre("Gain", "Undo"));
    click(scaled(middleOf("UK")));
    EXPECT_THAT(changedParts(turned, resting(), scale()), ElementsAre("UK"));
    click(scaled(middleOf(BarLayout::Button::kUndo)));
    EXPECT_THAT(changedParts(turned, resting(), scale()), ElementsAre("Redo"));
    click(scaled(middleOf(BarLayout::Button::kSlotB)));
    const Picture other = resting();
    EXPECT_THAT(changedParts(plain, other, scale()),
                ElementsAre("Copy to the other settings", "Settings A", "Settings B"));
    key(XK_Tab);
    EXPECT_THAT(changedParts(other, resting(), scale()),
                testing::Each(testing::AnyOf("Bypass", testing::StartsWith("bar at "))));
    program->signal(SIGTERM);
}

// Every control and every legend stays whole.
TEST_P(EditPicture, BypassLightsAPlateAndChangesNothingElse) {
    const auto program = editScaled();
    const Picture plain = resting();
    click(scaled(middleOf(BarLayout::Button::kBypass)));
    const Picture bypassed = resting();
    EXPECT_THAT(changedParts(plain, bypassed, scale()),
                AllOf(Contains("Bypass"), Each(AnyOf("Bypass", StartsWith("face at ")))));
    const int barHeight = static_cast<int>(BarLayout::kHeight * scale());
    const Area face = {0, barHeight, plain.width(), plain.height() - barHeight};
    const auto changed = differingArea(plain.part(face), bypassed.part(face));
    ASSERT_TRUE(changed.has_value());
    const Box box = BypassPlate::box();
    const Place corner = scaled({box.x, box.y});
    const Place size = scaled({box.width, box.height});
    const Area plate = {corner.x - 1, corner.y - 1, size.x + 3, size.y + 3}; // pixels at its edges
    EXPECT_TRUE(plate.holds(*changed)) << changed->x << ' ' << changed->y << ' ' << changed->width;
    EXPECT_GT(changed->width, size.x - 3);
    EXPECT_GT(changed->height, size.y - 3);
    program->signal(SIGTERM);
}

INSTANTIATE_TEST_SUITE_P(Scales, EditPicture, testing::Values("1", "1.25"),
                         [](const auto& scale) { return "at" + std::to_string(scale.index); });

// A picture of the window's size in one colour, with a rectangle of another.
Picture planted(const Box& box, double scale = 1.0) {
    const auto pixels = [scale](int length) { return static_cast<int>(length * scale); };
    const int width = pixels(kWidth);
    const int height = pixels(kHeight);
    std::vector<std::uint32_t> all(static_cast<std::size_t>(width) * static_cast<std::size_t>(height),
                                   0x202020);
    for (int y = pixels(box.y); y < pixels(box.y + box.height); ++y) {
        for (int x = pixels(box.x); x < pixels(box.x + box.width); ++x) {
            all[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)] =
                0x212020;
        }
    }
    return {width, height, std::move(all)};
}

Box onFace(const Box& box) {
    return {box.x, BarLayout::kHeight + box.y, box.width, box.height};
}

TEST(WindowChanges, APlantedChangeIsNamed) {
    for (const double scale : {1.0, 1.25}) {
        const auto changed = [scale](const Box& box) {
            return changedParts(planted({}, scale), planted(box, scale), scale);
        };
        EXPECT_THAT(changed({}), IsEmpty());
        for (const auto& control : DemoGain_ViewLayout::kControls) {
            EXPECT_THAT(changed(onFace(FaceLayout::boxOf(control))), ElementsAre(control.mID)) << scale;
        }
        for (const auto& row : BarLayout::kButtons) {
            const Box& box = row.place;
            EXPECT_THAT(changed({box.x + 2, box.y, box.width - 4, box.height}), ElementsAre(row.name))
                << scale;
        }
        EXPECT_THAT(changed({40, BarLayout::kSecond + 6, 50, 4}), ElementsAre("Input level"));
        EXPECT_THAT(changed(onFace({303, 183, 2, 2})), ElementsAre("face at 300, 180"));
        EXPECT_THAT(changed({684, 1, 2, 2}), ElementsAre("bar at 680, 0"));
        EXPECT_THAT(changed(BarLayout::kMessage), IsEmpty()) << "a text";
        EXPECT_THAT(changed(onFace({12, 364, 100, 10})), IsEmpty()) << "the line at the bottom left";
        EXPECT_THAT(changed(onFace({24, 56, 642, 62})), IsSupersetOf({"Gain", "HP", "Atk", "Rls", "Volume"}));
    }
    EXPECT_THROW(changedParts(planted({}), planted({}, 2.0)), std::invalid_argument);
}

} // namespace
} // namespace varno::test
