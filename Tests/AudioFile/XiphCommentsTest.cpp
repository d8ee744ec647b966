#include "AudioFile/XiphComments.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(XiphComments, ComeBackFromTheirStructure) {
    const XiphComments comments = {"A=1", "", "b=\xFF", "A=1"};
    const auto structure = readXiphComments(writeXiphComments("encoder", comments));
    ASSERT_TRUE(structure.has_value());
    EXPECT_EQ(structure->vendor, "encoder");
    EXPECT_EQ(structure->comments, comments);
    EXPECT_TRUE(structure->isWhole);
}

// What is announced and not there is neither read nor reserved.
TEST(XiphComments, EveryCutIsNoticed) {
    const std::string bytes = writeXiphComments("encoder", {"A=1", "B=2"});
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const auto structure = readXiphComments(bytes.substr(0, length));
        EXPECT_FALSE(structure && structure->isWhole) << length;
    }
    const std::string most(4, '\xFF');
    EXPECT_FALSE(readXiphComments(most + "encoder").has_value());
    const auto countless = readXiphComments(std::string(4, '\0') + most);
    ASSERT_TRUE(countless.has_value());
    EXPECT_THAT(countless->comments, IsEmpty());
    EXPECT_FALSE(countless->isWhole);
}

TEST(XiphComments, OnlyTextsBecomeTexts) {
    LeftOutList leftOut;
    EXPECT_THAT(textsOfComments({"a b=1", "NONE", "=2", "c=\xE9", "\x1F=3", "~=4", "d="}, leftOut),
                ElementsAre(TextTag{"A B", "1"}, TextTag{"D", ""}));
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].reason, LeftOutReason::kUnreadable);
    EXPECT_EQ(leftOut[0].count, 5U);
    EXPECT_THAT(leftOut[0].names, ElementsAre("NONE", "c", "\x1F", "~"));
}

TEST(XiphComments, KeysOutsideOfAsciiHaveNoPlace) {
    LeftOutList leftOut;
    EXPECT_THAT(commentsOfTexts({{"KEY", "1"}, {"SCHL\xC3\x9CSSEL", "2"}, {"", "3"}}, leftOut),
                ElementsAre("KEY=1"));
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].reason, LeftOutReason::kNoPlace);
    EXPECT_EQ(leftOut[0].count, 2U);
}

TEST(XiphComments, PicturesComeBackFromTheirComments) {
    Picture picture{17,
                    "image/jpeg",
                    "gr\xC3\xBCn",
                    640,
                    480,
                    24,
                    5,
                    std::string("\0\xFF\x80"
                                "data",
                                7)};
    XiphComments comments = {"A=1", commentOfPicture(picture), "METADATA_BLOCK_PICTURE=no base64!",
                             "metadata_block_picture=AAAA", commentOfPicture({})};
    EXPECT_THAT(takePictures(comments), ElementsAre(picture, Picture{}));
    EXPECT_THAT(comments,
                ElementsAre("A=1", "METADATA_BLOCK_PICTURE=no base64!", "metadata_block_picture=AAAA"));
}

} // namespace
} // namespace varno::test
