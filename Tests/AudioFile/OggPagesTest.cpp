#include "AudioFile/OggPages.h"

#include "Files/Transfer.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sndfile.h>

namespace varno::test {
namespace {

class OggPagesTest : public testing::Test {
protected:
    OggPagesTest() {
        writeSound(mPath, {SF_FORMAT_OGG | SF_FORMAT_VORBIS, 2, 48'000, {}, testReals(96'000)});
    }

    FileDescriptor open() { return FileDescriptor(::open(mPath.c_str(), O_RDWR)); }

    TemporaryFolder mFolder;
    std::string mPath = mFolder / "file.ogg";
};

// libsndfile's Ogg layer checks every page's checksum and skips those that fail; so do sox and all other
// players.
TEST_F(OggPagesTest, TheSoundStaysAndThePagesAreValid) {
    const std::vector<double> before = readReals(mPath).reals;
    setOggSerial(open().get(), mPath);
    EXPECT_EQ(readReals(mPath).reals, before);
    EXPECT_EQ(shell("soxi -s " + mPath), "48000\n");
}

TEST_F(OggPagesTest, EveryPageGetsTheSerialNumber) {
    setOggSerial(open().get(), mPath);
    const std::string bytes = readFile(mPath);
    int pages = 0;
    for (std::size_t at = bytes.find("OggS"); at != std::string::npos;
         at = bytes.find("OggS", at + 4), ++pages) {
        EXPECT_EQ(bytes.substr(at + 14, 4), std::string("\1\0\0\0", 4)) << at;
    }
    EXPECT_GT(pages, 3);
}

TEST_F(OggPagesTest, ASecondTimeChangesNothing) {
    setOggSerial(open().get(), mPath);
    const std::string once = readFile(mPath);
    setOggSerial(open().get(), mPath);
    EXPECT_TRUE(readFile(mPath) == once);
}

TEST_F(OggPagesTest, ADamagedPageIsReported) {
    std::string bytes = readFile(mPath);
    const std::size_t second = bytes.find("OggS", 4);
    bytes[second] = 'X';
    writeFile(mPath, bytes);
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { setOggSerial(open().get(), mPath); }),
              mPath + ": damaged while it was written: no Ogg page at byte " + std::to_string(second));
}

TEST_F(OggPagesTest, DetectsAFileThatWasCutOff) {
    EXPECT_FALSE(isOggWithoutEnd(open().get()));
    const std::string bytes = readFile(mPath);
    for (const std::size_t missing : {std::size_t{1}, std::size_t{1000}, bytes.size() / 2}) {
        writeFile(mPath, bytes.substr(0, bytes.size() - missing));
        EXPECT_TRUE(isOggWithoutEnd(open().get())) << missing;
    }
}

TEST_F(OggPagesTest, OtherFilesAreNoOggFiles) {
    for (const std::string& bytes : {std::string(), std::string("OggS"), std::string(100, 'x')}) {
        writeFile(mPath, bytes);
        EXPECT_FALSE(isOggWithoutEnd(open().get()));
    }
}

} // namespace
} // namespace varno::test
