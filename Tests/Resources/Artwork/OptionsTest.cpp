#include "Artwork/Options.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

TEST(ArtworkOptions, TakeAFolder) {
    const Options options = parseOptions({"out"});
    EXPECT_EQ("out", options.folder);
    EXPECT_FALSE(options.preview);
    EXPECT_FALSE(options.help);
}

TEST(ArtworkOptions, TakeAPreviewAndItsScale) {
    EXPECT_EQ(1, parseOptions({"--preview", "a.png"}).scale);
    const Options options = parseOptions({"--scale", "1.25", "--preview", "a.png"});
    EXPECT_EQ("a.png", options.preview);
    EXPECT_EQ(1.25, options.scale);
}

TEST(ArtworkOptions, TakeAPictureToNumber) {
    const Options options = parseOptions({"--number", "in.png", "out.png"});
    EXPECT_EQ("in.png", options.numberedFrom);
    EXPECT_EQ("out.png", options.numbered);
}

TEST(ArtworkOptions, HelpNamesEveryOption) {
    EXPECT_TRUE(parseOptions({"--help"}).help);
    for (const char* option : {"--preview", "--scale", "--number", "--help", "FOLDER"}) {
        EXPECT_THAT(kHelp, testing::HasSubstr(option));
    }
}

struct Wrong {
    std::vector<std::string> mArguments;
    const char* mNamed; // What the message names.
};

void PrintTo(const Wrong& wrong, std::ostream* stream) {
    *stream << wrong.mNamed;
}

class WrongArtworkOptions : public testing::TestWithParam<Wrong> {};

TEST_P(WrongArtworkOptions, AreRefusedByName) {
    EXPECT_THAT([] { parseOptions(GetParam().mArguments); },
                testing::ThrowsMessage<UsageError>(testing::HasSubstr(GetParam().mNamed)));
}

INSTANTIATE_TEST_SUITE_P(All, WrongArtworkOptions,
                         testing::Values(Wrong{{}, "folder"}, Wrong{{"a", "b"}, "\"b\""},
                                         Wrong{{"--colour"}, "--colour"}, Wrong{{"--preview"}, "--preview"},
                                         Wrong{{"a", "--preview", "b"}, "--preview"},
                                         Wrong{{"--number", "a"}, "--number needs"},
                                         Wrong{{"--number", "a", "b", "c"}, "--number"},
                                         Wrong{{"a", "--scale", "2"}, "--scale"},
                                         Wrong{{"--preview", "a", "--scale", "0.4"}, "\"0.4\""},
                                         Wrong{{"--preview", "a", "--scale", "nan"}, "\"nan\""},
                                         Wrong{{"--preview", "a", "--scale", "5"}, "0.5 to 4"},
                                         Wrong{{"--preview", "a", "--scale", "2x"}, "\"2x\""}),
                         [](const auto& tested) { return "Case" + std::to_string(tested.index); });

} // namespace
} // namespace varno
