#include "AudioFile/AtomicFile.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <sys/syscall.h>

#include <cerrno>
#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>
#include <vector>

// Calls of the system that fail on demand: these definitions take the place of the C library's.
namespace {

int syncsUntilFailure = -1; // -1: none fails
bool hasExchange = true;

} // namespace

extern "C" int fsync(int descriptor) {
    if (syncsUntilFailure >= 0 && syncsUntilFailure-- == 0) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                         unsigned flags) noexcept {
    if (flags == RENAME_EXCHANGE && !hasExchange) {
        errno = EINVAL;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

namespace varno::test {
namespace {

class CommitTogetherTest : public testing::Test {
protected:
    ~CommitTogetherTest() override {
        syncsUntilFailure = -1;
        hasExchange = true;
    }

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
    for (const bool exchange : {true, false}) {
        hasExchange = exchange;
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
        syncsUntilFailure = failing;
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
    for (const bool exchange : {true, false}) {
        hasExchange = exchange;
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
