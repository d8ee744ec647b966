#include "Settings/FileRoles.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <sys/stat.h>

namespace varno::test {
namespace {

namespace fs = std::filesystem;

class FileRolesTest : public testing::Test {
protected:
    // The refusal of an output; the test fails where it is accepted.
    std::string refusal(const std::string& output) {
        return errorText(kExitWrongUsage, [&] { mRoles.addOutput(output); });
    }

    TemporaryFolder mFolder;
    FileRoles mRoles;
};

TEST_F(FileRolesTest, InputsAreKnownUnderEveryName) {
    writeFile(mFolder / "a.wav", "a");
    writeFile(mFolder / "b.wav", "b");
    fs::create_symlink("b.wav", mFolder / "link.wav");
    fs::create_hard_link(mFolder / "b.wav", mFolder / "hard.wav");
    mRoles.addInput(mFolder / "a.wav");
    mRoles.addInput(mFolder / "b.wav");
    for (const std::string name : {"b.wav", "link.wav", "hard.wav", "./b.wav"}) {
        EXPECT_EQ(refusal(mFolder / name),
                  mFolder / name + ": is the input file " + (mFolder / "b.wav") + "; expected another file");
    }
}

TEST_F(FileRolesTest, NewFilesAreKnownByFolderAndName) {
    fs::create_directory(mFolder / "real");
    fs::create_directory_symlink("real", mFolder / "link");
    mRoles.addOutput(mFolder / "real/x");
    EXPECT_EQ(refusal(mFolder / "link/x"), "outputs \"" + (mFolder / "real/x") + "\" and \"" +
                                               (mFolder / "link/x") + "\" are one file; expected one each");
    EXPECT_NO_THROW(mRoles.addOutput(mFolder / "link/y"));
    EXPECT_NO_THROW(mRoles.addOutput(mFolder / "x"));
}

TEST_F(FileRolesTest, OtherOutputsAreAccepted) {
    writeFile(mFolder / "a.wav", "a");
    writeFile(mFolder / "b.wav", "a");
    mRoles.addInput(mFolder / "a.wav");
    mRoles.addInput(mFolder / "missing.wav");
    EXPECT_NO_THROW(mRoles.addOutput(mFolder / "b.wav"));
    EXPECT_NO_THROW(mRoles.addOutput(mFolder / "new.wav"));
    EXPECT_NO_THROW(mRoles.addOutput(mFolder / "none/new.wav"));
}

TEST_F(FileRolesTest, DevicesAndPipesMayStandInSeveralPlaces) {
    const std::string pipe = mFolder / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& name : {std::string("/dev/null"), pipe}) {
        mRoles.addInput(name);
        EXPECT_NO_THROW(mRoles.addOutput(name));
        EXPECT_NO_THROW(mRoles.addOutput(name));
    }
}

} // namespace
} // namespace varno::test
