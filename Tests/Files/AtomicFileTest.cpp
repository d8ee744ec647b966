#include "Files/AtomicFile.h"

#include "CommandLine/Interruption.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Files/FailingCalls.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace varno::test {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

unsigned modeOf(const std::string& path) {
    return static_cast<unsigned>(fs::status(path).permissions()) & 07777U;
}

class AtomicFileTest : public testing::Test {
protected:
    void commitBytes(const std::string& path, const std::string& bytes,
                     Overwrite overwrite = Overwrite::kRefuse) {
        AtomicFile file(path, overwrite);
        file.write(bytes);
        file.commit();
    }

    TemporaryFolder mFolder;
    std::string mPath = mFolder / "out.txt";
};

TEST_F(AtomicFileTest, AppearsUnderItsNameOnlyWhenCommitted) {
    AtomicFile file(mPath, Overwrite::kRefuse);
    file.write("whole");
    EXPECT_FALSE(fs::exists(mPath));
    file.commit();
    EXPECT_EQ(readFile(mPath), "whole");
    EXPECT_EQ(mFolder.listing(), "out.txt");
}

TEST_F(AtomicFileTest, LeavesNothingWithoutCommit) {
    {
        AtomicFile file(mPath, Overwrite::kRefuse);
        file.write("half");
    }
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(AtomicFileTest, LeavesAnOldFileAsItWasWithoutCommit) {
    writeFile(mPath, "old");
    {
        AtomicFile file(mPath, Overwrite::kReplace);
        file.write("half");
    }
    EXPECT_EQ(readFile(mPath), "old");
    EXPECT_EQ(mFolder.listing(), "out.txt");
}

TEST_F(AtomicFileTest, RefusesAnExistingFile) {
    writeFile(mPath, "old");
    const std::string text = errorText(kExitWorkFailed, [&] { AtomicFile(mPath, Overwrite::kRefuse); });
    EXPECT_EQ(text, mPath + ": exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(readFile(mPath), "old");
}

TEST_F(AtomicFileTest, RefusesAFileThatAppearsMeanwhile) {
    AtomicFile file(mPath, Overwrite::kRefuse);
    file.write("mine");
    writeFile(mPath, "theirs");
    EXPECT_THAT(errorText(kExitWorkFailed, [&] { file.commit(); }), HasSubstr("exists already"));
    EXPECT_EQ(readFile(mPath), "theirs");
}

TEST_F(AtomicFileTest, ReplacesAndKeepsThePermissions) {
    writeFile(mPath, "old");
    fs::permissions(mPath, fs::perms(0640));
    commitBytes(mPath, "new", Overwrite::kReplace);
    EXPECT_EQ(readFile(mPath), "new");
    EXPECT_EQ(modeOf(mPath), 0640U);
}

// Also while it is replaced, nobody may read what nobody could read.
TEST_F(AtomicFileTest, AReplacementIsNeverMoreReadable) {
    writeFile(mPath, "old");
    fs::permissions(mPath, fs::perms(0400));
    for (const bool hasUnnamed : {true, false}) {
        failingCalls.hasUnnamed = hasUnnamed;
        const AtomicFile file(mPath, Overwrite::kReplace);
        EXPECT_EQ(modeOf(file.pathBeforeCommit()) & 0077U, 0U);
    }
    failingCalls = {};
}

// As the super user, of another owner; else of the user's own.
TEST_F(AtomicFileTest, ReplacesAndKeepsOwnerAndSpecialBits) {
    for (const bool hasUnnamed : {true, false}) {
        failingCalls.hasUnnamed = hasUnnamed;
        writeFile(mPath, "old");
        if (::geteuid() == 0) {
            ASSERT_EQ(::chown(mPath.c_str(), 1234, 2345), 0);
        }
        ASSERT_EQ(::chmod(mPath.c_str(), 07751), 0);
        struct stat before {};
        ASSERT_EQ(::stat(mPath.c_str(), &before), 0);
        commitBytes(mPath, "new", Overwrite::kReplace);
        struct stat after {};
        ASSERT_EQ(::stat(mPath.c_str(), &after), 0);
        EXPECT_NE(after.st_ino, before.st_ino);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        EXPECT_EQ(after.st_mode, before.st_mode);
    }
    failingCalls = {};
}

// Who may write into the folder may replace a file of another owner, but not make a file of that owner.
TEST_F(AtomicFileTest, SpecialBitsGoWithTheOwner) {
    writeFile(mPath, "old");
    ASSERT_EQ(::chmod(mPath.c_str(), 07755), 0);
    fs::permissions(mFolder.path(), fs::perms(0777));
    const bool losesOwner = ::geteuid() == 0;
    const int status = inChildProcess([&] {
        becomeOrdinaryUser();
        commitBytes(mPath, "new", Overwrite::kReplace);
        return 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(mPath), "new");
    EXPECT_EQ(modeOf(mPath), losesOwner ? 0755U : 07755U);
}

TEST_F(AtomicFileTest, NewFilesFollowTheUsersMask) {
    for (const bool hasUnnamed : {true, false}) {
        failingCalls.hasUnnamed = hasUnnamed;
        const mode_t before = ::umask(027);
        commitBytes(mPath, "new");
        ::umask(before);
        EXPECT_EQ(modeOf(mPath), 0640U);
        fs::remove(mPath);
    }
    failingCalls = {};
}

TEST_F(AtomicFileTest, FollowsASymbolicLink) {
    fs::create_directory(mFolder / "elsewhere");
    const std::string real = mFolder / "elsewhere/real.txt";
    writeFile(real, "old");
    fs::create_symlink(real, mPath);
    commitBytes(mPath, "new", Overwrite::kReplace);
    EXPECT_TRUE(fs::is_symlink(mPath));
    EXPECT_EQ(readFile(real), "new");
}

// Neither at the start nor where it appears meanwhile.
TEST_F(AtomicFileTest, MayBeToldToFollowNoLink) {
    const std::string real = mFolder / "real.txt";
    writeFile(real, "old");
    const std::string reason = ": is a link; expected a file to replace, or nothing of this name";
    for (const std::string& name : {real, mFolder / "missing"}) {
        AtomicFile early(mPath, Overwrite::kReplaceFile);
        fs::create_symlink(name, mPath);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { AtomicFile(mPath, Overwrite::kReplaceFile); }),
                  mPath + reason);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { early.commit(); }), mPath + reason);
        EXPECT_TRUE(fs::is_symlink(mPath));
        fs::remove(mPath);
    }
    EXPECT_EQ(readFile(real), "old");
    EXPECT_FALSE(fs::exists(mFolder / "missing"));
    ASSERT_EQ(::mkfifo(mPath.c_str(), 0600), 0);
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { AtomicFile(mPath, Overwrite::kReplaceFile); }),
              mPath + ": is no file; expected a file to replace, or nothing of this name");
    commitBytes(real, "new", Overwrite::kReplaceFile);
    EXPECT_EQ(readFile(real), "new");
}

TEST_F(AtomicFileTest, RefusesALinkToNothing) {
    fs::create_symlink(mFolder / "missing", mPath);
    EXPECT_THAT(errorText(kExitWorkFailed, [&] { AtomicFile(mPath, Overwrite::kReplace); }),
                HasSubstr("is a link to a file that does not exist"));
}

TEST_F(AtomicFileTest, RefusesAFolder) {
    const std::string folder = mFolder.path().string();
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { AtomicFile(folder, Overwrite::kReplace); }),
              folder + ": is a folder; expected the name of a file");
}

TEST_F(AtomicFileTest, RefusesAFolderThatDoesNotExist) {
    const std::string path = mFolder / "missing/out.txt";
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { AtomicFile(path, Overwrite::kRefuse); }),
              path +
                  ": cannot be written: No such file or directory; expected a folder that exists and can be "
                  "written to");
    EXPECT_THAT(errorText(kExitWorkFailed, [&] { AtomicFile(mFolder / "missing/", Overwrite::kRefuse); }),
                HasSubstr("is no file name"));
    EXPECT_THAT(errorText(kExitWorkFailed, [&] { AtomicFile("", Overwrite::kRefuse); }),
                HasSubstr("is no file name"));
}

TEST_F(AtomicFileTest, RefusesAFolderThatCannotBeWritten) {
    fs::permissions(mFolder.path().string(), fs::perms(0555));
    const int status = inChildProcess([&] {
        becomeOrdinaryUser();
        EXPECT_THAT(errorText(kExitWorkFailed, [&] { AtomicFile(mPath, Overwrite::kRefuse); }),
                    HasSubstr("Permission denied"));
        return testing::Test::HasFailure() ? 1 : 0;
    });
    fs::permissions(mFolder.path().string(), fs::perms(0755));
    EXPECT_EQ(status, 0);
}

TEST_F(AtomicFileTest, ReportsAFullDisk) {
    const int status = inChildProcess([&] {
        catchInterruptions();
        const rlimit limit{1000, 1000}; // most bytes of a file: writing fails as on a full disk
        ::setrlimit(RLIMIT_FSIZE, &limit);
        AtomicFile file(mPath, Overwrite::kRefuse);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { file.write(std::string(1001, 'x')); }),
                  mPath + ": cannot be written: File too large");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(AtomicFileTest, ReportsAFullDevice) {
    AtomicFile file("/dev/full", Overwrite::kRefuse);
    file.write("bytes");
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { file.commit(); }),
              "/dev/full: cannot be written: No space left on device");
}

TEST_F(AtomicFileTest, WritesIntoADeviceAndLeavesItADevice) {
    commitBytes("/dev/null", "bytes");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST_F(AtomicFileTest, WritesIntoANamedPipe) {
    ASSERT_EQ(::mkfifo(mPath.c_str(), 0600), 0);
    std::string received;
    std::thread reader([&] { received = shell("cat " + mPath); });
    commitBytes(mPath, "through");
    reader.join();
    EXPECT_EQ(received, "through");
    EXPECT_TRUE(fs::is_fifo(mPath));
}

TEST_F(AtomicFileTest, StandardOutputGetsEverythingAtCommit) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const int status = inChildProcess([&] {
        ::dup2(ends[1], STDOUT_FILENO);
        AtomicFile abandoned("-", Overwrite::kRefuse);
        abandoned.write("never seen");
        commitBytes("-", "all of it");
        return abandoned.name() == "standard output" ? 0 : 1;
    });
    ::close(ends[1]);
    char buffer[64];
    const ssize_t got = ::read(ends[0], buffer, sizeof buffer);
    ::close(ends[0]);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(std::string(buffer, static_cast<std::size_t>(std::max<ssize_t>(got, 0))), "all of it");
}

TEST_F(AtomicFileTest, APipeMayReceiveBytesAtOnce) {
    ASSERT_EQ(::mkfifo(mPath.c_str(), 0600), 0);
    const FileDescriptor reader(::open(mPath.c_str(), O_RDONLY | O_NONBLOCK));
    EXPECT_TRUE(isPipeOutput(mPath));
    AtomicFile file(mPath, Overwrite::kRefuse, {}, Delivery::kAsWritten);
    file.write("now");
    char bytes[8] = {};
    EXPECT_EQ(::read(reader.get(), bytes, sizeof bytes), 3);
    file.write("more");
    file.commit();
    EXPECT_EQ(::read(reader.get(), bytes, sizeof bytes), 4);
    EXPECT_EQ(::read(reader.get(), bytes, sizeof bytes), 0); // the end
    EXPECT_FALSE(isPipeOutput(mFolder / "none"));
}

TEST_F(AtomicFileTest, ReportsAPipeThatNobodyReads) {
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ::close(ends[0]);
    const int status = inChildProcess([&] {
        catchInterruptions();
        ::dup2(ends[1], STDOUT_FILENO);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { commitBytes("-", "lost"); }),
                  "standard output: cannot be written: Broken pipe");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    ::close(ends[1]);
    EXPECT_EQ(status, 0);
}

TEST_F(AtomicFileTest, ManyAtOnceDoNotDisturbEachOther) {
    std::vector<std::unique_ptr<AtomicFile>> files;
    for (int i = 0; i < 50; ++i) {
        files.push_back(std::make_unique<AtomicFile>(mFolder / std::to_string(i), Overwrite::kRefuse));
    }
    for (const auto& file : files) {
        file->write(file->name());
        file->commit();
    }
    EXPECT_EQ(std::distance(fs::directory_iterator(mFolder.path()), {}), std::ssize(files));
    EXPECT_EQ(readFile(mFolder / "17"), mFolder / "17");
}

TEST_F(AtomicFileTest, AnInterruptionLeavesNothing) {
    const int status = inChildProcess([&] {
        catchInterruptions();
        AtomicFile file(mPath, Overwrite::kRefuse);
        file.write("half");
        std::raise(SIGTERM);
        throwIfInterrupted();
        file.commit();
        return 0;
    });
    EXPECT_EQ(status, kExitWorkFailed);
    EXPECT_EQ(mFolder.listing(), "");
}

} // namespace
} // namespace varno::test
