#include "AudioFile/Id3.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

const std::vector<TextTag> kTexts = {
    {"TITLE", "one"}, {"ARTIST", "a"}, {"ARTIST", "b"}, {"OWN KEY", "\xC3\xBC"}};
const Picture kCover{3, "image/png", "cover", 0, 0, 0, 0, std::string("\0\1\2", 3)};

std::string big32(std::size_t value) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8) {
        bytes += static_cast<char>(value >> shift & 0xFF);
    }
    return bytes;
}

// Seven bits per byte, as the sizes of ID3v2 have them.
std::string synchSafe(std::size_t value) {
    std::string bytes;
    for (int shift = 21; shift >= 0; shift -= 7) {
        bytes += static_cast<char>(value >> shift & 0x7F);
    }
    return bytes;
}

std::string tagOf(const std::string& frames) {
    return std::string("ID3\x03\0\0", 6) + synchSafe(frames.size()) + frames;
}

std::string frame(const std::string& id, const std::string& data,
                  const std::string& flags = std::string(2, '\0')) {
    return id + big32(data.size()) + flags + data;
}

TEST(Id3, TextsAndPicturesComeBack) {
    LeftOutList leftOut;
    const std::string tag = addToId3({}, {kTexts, {kCover}}, leftOut);
    const Tags read = readId3(tag, leftOut);
    EXPECT_THAT(read.texts, testing::UnorderedElementsAreArray(kTexts));
    EXPECT_THAT(read.pictures, ElementsAre(kCover));
    EXPECT_THAT(leftOut, IsEmpty());
}

TEST(Id3, ATagThatHoldsEverythingStaysByteForByte) {
    const std::string tag =
        tagOf(frame("TIT2", std::string("\0one", 4)) + frame("PRIV", std::string("me\0\1", 4)));
    LeftOutList leftOut;
    EXPECT_EQ(addToId3(tag, {{{"TITLE", "other"}}, {}}, leftOut), tag);
    EXPECT_THAT(leftOut, IsEmpty());
}

TEST(Id3, AFrameWithoutTextKeepsNoOtherOut) {
    const std::string tag = tagOf(frame("TIT2", std::string(1, '\0')) + frame("TPE1", std::string("\0a", 2)));
    LeftOutList leftOut;
    const Tags more{{{"TITLE", "one"}, {"ARTIST", "b"}}, {}};
    const Tags read = readId3(addToId3(tag, more, leftOut), leftOut);
    EXPECT_THAT(read.texts, UnorderedElementsAre(TextTag{"TITLE", "one"}, TextTag{"ARTIST", "a"}));
    EXPECT_THAT(leftOut, IsEmpty());
}

TEST(Id3, WhatIsAddedLeavesEverythingElse) {
    const std::string tag =
        tagOf(frame("TIT2", std::string("\0one", 4)) + frame("PRIV", std::string("me\0\1", 4)));
    LeftOutList leftOut;
    const std::string more = addToId3(tag, {{{"ALBUM", "new"}}, {}}, leftOut);
    EXPECT_THAT(leftOut, IsEmpty());
    EXPECT_THAT(readId3(more, leftOut).texts,
                UnorderedElementsAre(TextTag{"TITLE", "one"}, TextTag{"ALBUM", "new"}));
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].kind, LeftOutKind::kTagItem);
    EXPECT_THAT(leftOut[0].names, ElementsAre("PRIV"));
}

// The flag is for programs that do not know the frame.
TEST(Id3, AKnownFrameStaysWhereTheTagChangesAndAnUnknownOneIsReported) {
    const std::string discarded("\x80\0", 2);
    const std::string tag = tagOf(frame("TIT2", std::string("\0one", 4), discarded) +
                                  frame("APIC", std::string("\0image/png\0\3\0data", 17), discarded) +
                                  frame("XYZW", "other", discarded) + frame("XYZV", "stays"));
    LeftOutList leftOut;
    const std::string more = addToId3(tag, {{{"ALBUM", "new"}}, {}}, leftOut);
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].kind, LeftOutKind::kTagItem);
    EXPECT_THAT(leftOut[0].names, ElementsAre("XYZW"));
    leftOut.clear();
    const Tags read = readId3(more, leftOut);
    EXPECT_THAT(read.texts, UnorderedElementsAre(TextTag{"TITLE", "one"}, TextTag{"ALBUM", "new"}));
    ASSERT_EQ(read.pictures.size(), 1U);
    EXPECT_EQ(read.pictures[0].data, "data");
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_THAT(leftOut[0].names, ElementsAre("XYZV"));
}

// 99 is no encoding of a text.
TEST(Id3, ATextThatCanBeReadAndNotWrittenIsReported) {
    const std::string tag = tagOf(frame("TPE1", "c\1\2\3"));
    LeftOutList leftOut;
    ASSERT_EQ(readId3(tag, leftOut).texts.size(), 1U);
    ASSERT_THAT(leftOut, IsEmpty());
    EXPECT_THAT(readId3(addToId3(tag, {{{"TITLE", "one"}}, {}}, leftOut), leftOut).texts,
                ElementsAre(TextTag{"TITLE", "one"}));
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_THAT(leftOut[0].names, ElementsAre("ARTIST"));
}

// ID3v2 takes the number of a genre for its name.
TEST(Id3, ATextThatWouldChangeIsReported) {
    LeftOutList leftOut;
    addToId3({}, {{{"GENRE", "17"}, {"ALBUM", "17"}, {"EMPTY", ""}}, {}}, leftOut);
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].reason, LeftOutReason::kNoPlace);
    EXPECT_THAT(leftOut[0].names, testing::Contains("GENRE"));
    EXPECT_THAT(leftOut[0].names, testing::Not(testing::Contains("ALBUM")));
}

TEST(Id3, WhatIsNoTagIsReported) {
    for (const std::string& bytes : {std::string(), std::string("ID3"), std::string(100, '\xFF'), tagOf(""),
                                     std::string("ID3\x04\0\0\x7F\x7F\x7F\x7F", 10)}) {
        LeftOutList leftOut;
        EXPECT_THAT(readId3(bytes, leftOut).texts, IsEmpty());
        ASSERT_EQ(leftOut.size(), 1U);
        EXPECT_EQ(leftOut[0].kind, LeftOutKind::kTags);
    }
}

// A megabyte of compressed zeros would take a gigabyte.
TEST(Id3, LargeCompressedFramesAreNotExpanded) {
    for (const std::size_t bytes : {std::size_t{100}, std::size_t{1} << 20}) {
        const std::string flags("\0\x80", 2);
        const std::string tag = tagOf(frame("TIT2", std::string("\0one", 4)) +
                                      frame("TXXX", big32(0x7FFFFFFF) + std::string(bytes, '\0'), flags));
        LeftOutList leftOut;
        const Tags tags = readId3(tag, leftOut);
        EXPECT_EQ(tags.texts.empty(), bytes > 100) << bytes;
    }
}

} // namespace
} // namespace varno::test
