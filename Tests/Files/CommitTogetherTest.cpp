#include "Files/AtomicFile.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Files/FailingCalls.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

namespace varno::test {
namespace {

// What file systems may lack.
constexpr FailingCalls kFileSystems[] = {
    {},
    {.hasExchange = false},
    {.hasUnnamed = false},
    {.hasExchange = false, .hasUnnamed = false},
    {.hasExchange = false, .hasLinks = false},
    {.hasExchange = false, .hasUnnamed = false, .hasLinks = false},
};

class CommitTogetherTest : public testing::Test {
protected:
    ~CommitTogetherTest() override { failingCalls = {}; }

    void add(const std::string& path, Overwrite overwrite = Overwrite::kReplace) {
        mOwned.push_back(std::make_unique<AtomicFile>(path, overwrite));
        mOwned.back()->write("new");
        mFiles.push_back(mOwned.back().get());
    }

    std::string refusal() {
        std::string text = errorText(kExitWorkFailed, [&] { commitTogether(mFiles); });
        mOwned.clear();
        return text;
    }

    TemporaryFolder mFolder;
    std::vector<std::unique_ptr<AtomicFile>> mOwned;
    std::vector<AtomicFile*> mFiles;
};

TEST_F(CommitTogetherTest, AllAppearAndNothingElse) {
    for (const FailingCalls& lacking : kFileSystems) {
        failingCalls = lacking;
        writeFile(mFolder / "a", "old");
        add(mFolder / "a");
        add(mFolder / "b");
        add(mFolder / "c", Overwrite::kRefuse);
        commitTogether(mFiles);
        EXPECT_EQ(mFolder.listing(), "a b c"); // while the objects are there
        for (const std::string name : {"a", "b", "c"}) {
            EXPECT_EQ(readFile(mFolder / name), "new");
            ::unlink((mFolder / name).c_str());
        }
        mFiles.clear();
    }
}

TEST_F(CommitTogetherTest, NoneAppearsBeforeAllAreOnTheDisk) {
    for (const int failing : {0, 1, 2}) {
        writeFile(mFolder / "a", "old");
        add(mFolder / "a");
        add(mFolder / "b");
        add(mFolder / "c");
        failingCalls.syncsUntilFailure = failing;
        const std::string failed = mFiles[static_cast<std::size_t>(failing)]->name();
        EXPECT_EQ(refusal(), failed + ": cannot be written: Input/output error");
        EXPECT_EQ(mFolder.listing(), "a");
        EXPECT_EQ(readFile(mFolder / "a"), "old");
        mFiles.clear();
    }
}

TEST_F(CommitTogetherTest, NoneAppearsWhereAStreamFails) {
    writeFile(mFolder / "a", "old");
    add(mFolder / "a");
    add("/dev/full");
    EXPECT_EQ(refusal(), "/dev/full: cannot be written: No space left on device");
    EXPECT_EQ(mFolder.listing(), "a");
    EXPECT_EQ(readFile(mFolder / "a"), "old");
}

TEST_F(CommitTogetherTest, NamesAreTakenBackWhereOneCannotBeGiven) {
    for (const FailingCalls& lacking : kFileSystems) {
        failingCalls = lacking;
        writeFile(mFolder / "a", "old");
        add(mFolder / "a");
        add(mFolder / "b");
        add(mFolder / "c", Overwrite::kRefuse);
        add(mFolder / "d", Overwrite::kRefuse);
        writeFile(mFolder / "d", "of another program");
        EXPECT_EQ(refusal(),
                  mFolder / "d" + ": exists already; expected a new name, or --force to replace it");
        EXPECT_EQ(mFolder.listing(), "a d");
        EXPECT_EQ(readFile(mFolder / "a"), "old");
        EXPECT_EQ(readFile(mFolder / "d"), "of another program");
        ::unlink((mFolder / "d").c_str());
        mFiles.clear();
    }
}

} // namespace
} // namespace varno::test
