#include "Files/HiddenFiles.h"

#include "Files/AtomicFile.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Files/FailingCalls.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <functional>
#include <gmock/gmock.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace varno::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kStale = ".varno-0123456789abcdef.part";

class HiddenFilesTest : public testing::Test {
protected:
    ~HiddenFilesTest() override { failingCalls = {}; }

    void commit(const std::string& name, const std::string& content) {
        AtomicFile file(mFolder / name, Overwrite::kReplace);
        file.write(content);
        file.commit();
    }

    // Runs `work` in a child process, which SIGKILL ends within it.
    void killed(const std::function<void()>& work) {
        EXPECT_EQ(inChildProcess([&] {
                      work();
                      return 0;
                  }),
                  -1);
    }

    TemporaryFolder mFolder;
    bool mCanBeUnnamed = openUnnamed(mFolder.path(), 0600).isOpen(); // on the file system of this test
};

TEST_F(HiddenFilesTest, AFileHasNoNameUntilItIsComplete) {
    AtomicFile file(mFolder / "a", Overwrite::kRefuse);
    file.write("whole");
    EXPECT_EQ(mFolder.listing().empty(), mCanBeUnnamed);
    EXPECT_EQ(readFile(file.pathBeforeCommit()), "whole");
    file.commit();
    EXPECT_EQ(readFile(mFolder / "a"), "whole");
}

TEST_F(HiddenFilesTest, ElseItHasAHiddenName) {
    failingCalls.hasUnnamed = false;
    AtomicFile file(mFolder / "a", Overwrite::kRefuse);
    file.write("whole");
    EXPECT_THAT(mFolder.listing(), testing::MatchesRegex("\\.varno-[0-9a-f]+\\.part"));
    EXPECT_EQ(readFile(file.pathBeforeCommit()), "whole");
    file.commit();
    EXPECT_EQ(mFolder.listing(), "a");
}

TEST_F(HiddenFilesTest, AKillLeavesNothingOrWhatTheNextFileRemoves) {
    for (const bool hasUnnamed : {true, false}) {
        failingCalls.hasUnnamed = hasUnnamed;
        writeFile(mFolder / "a", "old");
        killed([&] {
            AtomicFile replacing(mFolder / "a", Overwrite::kReplace);
            AtomicFile creating(mFolder / "b", Overwrite::kRefuse);
            replacing.write("half");
            creating.write("half");
            ::kill(::getpid(), SIGKILL); // before they are destroyed
        });
        if (hasUnnamed && mCanBeUnnamed) {
            EXPECT_EQ(mFolder.listing(), "a");
        } else {
            EXPECT_EQ(std::distance(fs::directory_iterator(mFolder.path()), {}), 3);
        }
        EXPECT_EQ(readFile(mFolder / "a"), "old");
        commit("c", "new");
        EXPECT_EQ(mFolder.listing(), "a c");
        fs::remove(mFolder / "c");
    }
}

// Killed before the first and before the second of three files gets its name.
TEST_F(HiddenFilesTest, AKillDuringTheCommitLeavesWholeFiles) {
    for (const bool hasUnnamed : {true, false}) {
        for (const int renames : {0, 1}) {
            for (const std::string name : {"a", "b", "c"}) {
                writeFile(mFolder / name, "old");
            }
            killed([&] {
                failingCalls.hasUnnamed = hasUnnamed;
                AtomicFile a(mFolder / "a", Overwrite::kReplace);
                AtomicFile b(mFolder / "b", Overwrite::kReplace);
                AtomicFile c(mFolder / "c", Overwrite::kReplace);
                AtomicFile* const files[] = {&a, &b, &c};
                for (AtomicFile* file : files) {
                    file->write("new");
                }
                failingCalls.renamesUntilKill = renames;
                commitTogether(files);
            });
            EXPECT_EQ(readFile(mFolder / "a"), renames == 0 ? "old" : "new");
            EXPECT_EQ(readFile(mFolder / "b"), "old");
            EXPECT_EQ(readFile(mFolder / "c"), "old");
            commit("d", "new");
            EXPECT_EQ(mFolder.listing(), "a b c d");
        }
    }
}

TEST_F(HiddenFilesTest, FilesOfLivingProgramsStay) {
    failingCalls.hasUnnamed = false;
    AtomicFile first(mFolder / "a", Overwrite::kRefuse);
    first.write("first");
    int ends[2];
    ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
    const pid_t other = ::fork(); // holds one as well
    if (other == 0) {
        AtomicFile held(mFolder / "b", Overwrite::kRefuse);
        char go = 0;
        ::close(ends[1]);
        ::_exit(::write(ends[0], "h", 1) == 1 && ::read(ends[0], &go, 1) == 0 &&
                        fs::exists(held.pathBeforeCommit())
                    ? 0
                    : 1);
    }
    ::close(ends[0]);
    char held = 0;
    EXPECT_EQ(::read(ends[1], &held, 1), 1); // before, it may still use the folder
    writeFile(mFolder / kStale, "half");
    commit("c", "second");
    EXPECT_FALSE(fs::exists(mFolder / kStale));
    EXPECT_TRUE(fs::exists(first.pathBeforeCommit()));
    first.commit();
    ::close(ends[1]);
    int status = -1;
    ::waitpid(other, &status, 0);
    EXPECT_EQ(status, 0);
}

// What a commit replaces has a hidden name for a moment, and no lock.
TEST_F(HiddenFilesTest, NothingIsRemovedWhileTheFolderIsInUse) {
    writeFile(mFolder / kStale, "replaced");
    {
        const FolderInUse one(mFolder.path(), {});
        const FolderInUse two(mFolder.path(), {});
        removeStaleFiles(mFolder.path());
        EXPECT_EQ(mFolder.listing(), kStale);
    }
    removeStaleFiles(mFolder.path());
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(HiddenFilesTest, NothingElseIsRemoved) {
    const std::vector<std::string> names = {".varno-0123456789abcdef.old",  ".varno-0123456789abcde.part",
                                            ".varno-0123456789abcdeg.part", ".varno-0123456789ABCDEF.part",
                                            ".other-0123456789abcdef.part", "varno-0123456789abcdef.part",
                                            ".varno-0123456789abcdef.part~"};
    for (const std::string& name : names) {
        writeFile(mFolder / name, "of the user");
    }
    fs::create_directory(mFolder / ".varno-00000000000000aa.part");
    fs::create_symlink(names[0], mFolder / ".varno-00000000000000bb.part");
    ASSERT_EQ(::mkfifo((mFolder / ".varno-00000000000000cc.part").c_str(), 0600), 0);
    const std::string before = mFolder.listing();
    removeStaleFiles(mFolder.path());
    EXPECT_EQ(mFolder.listing(), before);
}

// A batch that reads it for each of its files takes a time that grows with the square of their number.
TEST_F(HiddenFilesTest, ALargeFolderIsReadNowAndThen) {
    constexpr int kEntries = 320;
    for (int number = 0; number < kEntries; ++number) {
        writeFile(mFolder / std::to_string(number), "");
    }
    const auto filesUntilRemoved = [&] {
        writeFile(mFolder / kStale, "half");
        int files = 0;
        while (fs::exists(mFolder / kStale) && files < kEntries) {
            commit("0", "new");
            ++files;
        }
        return files;
    };
    EXPECT_EQ(filesUntilRemoved(), 1) << "the first file of a process in a folder";
    EXPECT_THAT(filesUntilRemoved(), testing::AllOf(testing::Gt(kEntries / 20), testing::Le(kEntries / 10)));
    EXPECT_THAT(filesUntilRemoved(), testing::AllOf(testing::Gt(kEntries / 20), testing::Le(kEntries / 10)));
}

TEST_F(HiddenFilesTest, FilesOfOtherUsersStay) {
    writeFile(mFolder / kStale, "of another");
    constexpr uid_t kOther = 12'345;
    const bool isOthers = ::chown((mFolder / kStale).c_str(), kOther, kOther) == 0; // by the super user alone
    removeStaleFiles(mFolder.path());
    EXPECT_EQ(fs::exists(mFolder / kStale), isOthers);
}

} // namespace
} // namespace varno::test
