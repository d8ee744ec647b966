// The declarations of CLAP are a binary interface: those of this tree are the published ones.
#include "Tests/Formats/CLAP/Layout.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(Layout, isThePublishedOne) {
    const ClapLayout own = ownLayout();
    const ClapLayout published = publishedLayout();
    EXPECT_GT(own.size(), 150U);
    EXPECT_EQ(own.size(), published.size());
    for (const auto& [what, expected] : published) {
        EXPECT_EQ(own.at(what), expected) << what;
    }
}

} // namespace
} // namespace varno::test
