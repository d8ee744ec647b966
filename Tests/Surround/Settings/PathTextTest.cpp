#include "Surround/Settings/PathText.h"

#include <gtest/gtest.h>

#include <string>

namespace varno {
namespace {

TEST(PathText, KeepsTextsOfUtf8) {
    const std::string text = "folder/Größe ☃ 𝄞.txt";
    EXPECT_EQ("Größe ☃ 𝄞.txt", pathFromText(text).filename().native());
    EXPECT_EQ(text, textOfPath(pathFromText(text)));
    EXPECT_EQ("", textOfPath(pathFromText("")));
}

// A file of Linux may have any name.
TEST(PathText, KeepsBytesThatAreNoText) {
    const std::string bytes = "\xff\xc3/\xe4.txt";
    EXPECT_EQ(bytes, pathFromText(bytes).native());
    EXPECT_EQ(bytes, textOfPath(std::filesystem::path(bytes)));
}

} // namespace
} // namespace varno
