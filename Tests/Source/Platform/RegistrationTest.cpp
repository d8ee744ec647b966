#include "Platform/RunLoop.h"

#include <gtest/gtest.h>
#include <optional>
#include <utility>

namespace {

using varno::Registration;

TEST(Registration, UndoesAtItsEnd) {
    int undone = 0;
    {
        const Registration registration([&undone] { ++undone; });
        EXPECT_EQ(undone, 0);
    }

    EXPECT_EQ(undone, 1);
}

TEST(Registration, UndoesOnceHoweverOftenReset) {
    int undone = 0;
    Registration registration([&undone] { ++undone; });

    registration.reset();
    registration.reset();

    EXPECT_EQ(undone, 1);
}

TEST(Registration, OfNothingDoesNothing) {
    Registration registration;

    EXPECT_NO_THROW(registration.reset());
}

TEST(Registration, MovesWithoutUndoing) {
    int undone = 0;
    std::optional<Registration> from(std::in_place, [&undone] { ++undone; });
    {
        const Registration to(std::move(*from));
        from.reset();
        EXPECT_EQ(undone, 0);
    }

    EXPECT_EQ(undone, 1);
}

TEST(Registration, AssignedUndoesWhatItHeldBefore) {
    int first = 0;
    int second = 0;
    Registration registration([&first] { ++first; });

    registration = Registration([&second] { ++second; });

    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);
}

TEST(Registration, AssignedToItselfStays) {
    int undone = 0;
    Registration registration([&undone] { ++undone; });
    Registration& itself = registration;

    registration = std::move(itself);

    EXPECT_EQ(undone, 0);
    registration.reset();
    EXPECT_EQ(undone, 1);
}

} // namespace
