#include "Surround/Settings/TextFile.h"

#include "Files/FileError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace varno::test {
namespace {

using testing::HasSubstr;

TEST(TextFile, isReadWhole) {
    const TemporaryFolder folder;
    EXPECT_EQ(readTextFile(folder.write("a", "one\ntwo")).text, "one\ntwo");
    EXPECT_EQ(readTextFile(folder.write("empty", "")).text, "");
    EXPECT_EQ(readTextFile(folder / "empty").refusal, "");
    const std::string longest(kMostTextBytes, 'x');
    EXPECT_EQ(readTextFile(folder.write("long", longest)).text, longest);
}

TEST(TextFile, isRefusedWithAReason) {
    const TemporaryFolder folder;
    EXPECT_EQ(readTextFile(folder / "none").refusal, "cannot be read: No such file or directory");
    EXPECT_EQ(readTextFile(folder.path()).refusal, "is no file");
    const TextFile tooLong = readTextFile(folder.write("long", std::string(kMostTextBytes + 1, 'x')));
    EXPECT_EQ(tooLong.refusal, "has more than 65536 bytes");
    EXPECT_EQ(tooLong.text, "");
}

TEST(TextFile, isNotWaitedFor) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(readTextFile(folder / "pipe").refusal, "is no file");
}

TEST(TextFile, makesItsFolders) {
    const TemporaryFolder folder;
    writeTextFile(folder / "a/b/c.txt", "text", Overwrite::kRefuse);
    EXPECT_EQ(readFile(folder / "a/b/c.txt"), "text");
    writeTextFile(folder / "a/b/c.txt", "other", Overwrite::kReplace);
    EXPECT_EQ(readFile(folder / "a/b/c.txt"), "other");
    EXPECT_THROW(writeTextFile(folder / "a/b/c.txt", "third", Overwrite::kRefuse), FileError);
    EXPECT_EQ(readFile(folder / "a/b/c.txt"), "other");
    EXPECT_EQ(folder.listing(), "a");
}

TEST(TextFile, namesTheFolderThatCannotBeMade) {
    const TemporaryFolder folder;
    folder.write("file", "");
    try {
        writeTextFile(folder / "file/below/c.txt", "text", Overwrite::kReplace);
        FAIL() << "written";
    } catch (const FileError& error) {
        EXPECT_THAT(error.what(), HasSubstr("file/below: cannot be made: "));
    }
}

} // namespace
} // namespace varno::test
