#include "Artwork/Typeface.h"

#include <gmock/gmock.h>
#include <stdexcept>

namespace varno {
namespace {

TEST(Typeface, HasAFaceForEachWeight) {
    const Typeface typeface;
    for (const Weight weight : {Weight::Regular, Weight::Medium, Weight::SemiBold, Weight::Bold}) {
        EXPECT_EQ(CAIRO_STATUS_SUCCESS, cairo_font_face_status(typeface.face(weight)));
    }
    EXPECT_EQ(kFamilies[0].mScale, typeface.scale());
}

TEST(Typeface, AFontThatIsMissingIsNamedAndNotReplaced) {
    const auto load = [] { Typeface{Family{"No Such Family", 1.0}}; };
    EXPECT_THAT(load, testing::ThrowsMessage<std::runtime_error>(testing::HasSubstr("No Such Family")));
}

} // namespace
} // namespace varno
