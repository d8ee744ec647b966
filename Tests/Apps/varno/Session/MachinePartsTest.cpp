#include "Session/MachineParts.h"
#include "Tests/Apps/varno/Session/FakeJack.h"
#include "Tests/Apps/varno/Session/FakeRtAudio.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/XServer.h"

#include <gmock/gmock.h>

#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// The display and the sound systems as varno doctor reports them.

namespace varno::test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;

TEST(DisplayFinding, StatesScreenAndScale) {
    const XServer server({.width = 1024, .height = 700});
    const auto plain = displayFinding(server.display(), std::nullopt);
    EXPECT_EQ(plain.part, "display");
    EXPECT_EQ(plain.state, PartState::kGood);
    EXPECT_EQ(plain.detail, server.display() + ", 1024 x 700 pixels, monitors: 1, scale 1");
    EXPECT_EQ(displayFinding(server.display(), "1.5").detail,
              server.display() + ", 1024 x 700 pixels, monitors: 1, scale 1.5");
}

TEST(DisplayFinding, NoneIsMissingAndADeadOneFails) {
    EXPECT_EQ(displayFinding("", std::nullopt).state, PartState::kMissing);
    const auto dead = displayFinding(":4711", std::nullopt);
    EXPECT_EQ(dead.state, PartState::kFailing);
    EXPECT_THAT(dead.detail, HasSubstr("no X server answers at DISPLAY \":4711\""));
}

TEST(JackFinding, StatesRateAndPeriod) {
    const FakeJack jack;
    const auto found = jackFinding(FakeJack::functions);
    EXPECT_EQ(found.state, PartState::kGood);
    EXPECT_EQ(found.detail, "44100 Hz, period 128 frames");
    EXPECT_EQ(jack.clientName, "varno-doctor");
    EXPECT_NE(jack.options & JackNoStartServer, 0);
    EXPECT_TRUE(jack.isClosed);
}

TEST(JackFinding, WithoutAServerNamesItsPackageWhereItIsNotInstalled) {
    FakeJack jack;
    jack.refusal = JackServerFailed;
    const TemporaryFolder folder;
    const EnvironmentVariable path("PATH", folder.path().string());
    const auto found = jackFinding(FakeJack::functions);
    EXPECT_EQ(found.state, PartState::kMissing);
    EXPECT_THAT(found.detail, MatchesRegex("no server \".*\" answers"));
    EXPECT_EQ(found.package, "jackd2");
    std::filesystem::permissions(folder.write("jackd", ""), std::filesystem::perms::owner_all);
    EXPECT_EQ(jackFinding(FakeJack::functions).package, "");
}

TEST(JackFinding, WithoutTheLibraryNamesItsPackage) {
    const auto found =
        jackFinding([]() -> JackFunctions { throw SoundUnavailable("libjack is not installed"); });
    EXPECT_EQ(found.state, PartState::kMissing);
    EXPECT_EQ(found.detail, "libjack is not installed");
    EXPECT_EQ(found.package, "libjack-jackd2-0");
}

Finding alsa() {
    return rtAudioFinding("ALSA", RTAUDIO_API_LINUX_ALSA, FakeRtAudio::functions);
}

TEST(RtAudioFinding, CountsDevicesAndLeavesNothingOpen) {
    FakeRtAudio audio;
    EXPECT_EQ(alsa().state, PartState::kGood);
    EXPECT_THAT(alsa().detail, MatchesRegex("devices: [1-9]"));
    audio.apisWithDevices = {RTAUDIO_API_LINUX_PULSE};
    EXPECT_EQ(alsa().state, PartState::kMissing);
    EXPECT_EQ(alsa().detail, "no device");
    EXPECT_EQ(alsa().package, "");
    audio.unknownApis = {RTAUDIO_API_LINUX_ALSA};
    EXPECT_EQ(alsa().state, PartState::kFailing);
    EXPECT_EQ(alsa().detail, "not known to RtAudio");
    EXPECT_EQ(audio.openInstances, 0);
}

TEST(RtAudioFinding, WithoutTheLibraryNamesItsPackage) {
    const auto found = rtAudioFinding("ALSA", RTAUDIO_API_LINUX_ALSA, []() -> RtAudioFunctions {
        throw SoundUnavailable("it is not installed");
    });
    EXPECT_EQ(found.state, PartState::kMissing);
    EXPECT_THAT(found.package, MatchesRegex("librtaudio[0-9]+"));
}

class SocketFinding : public testing::Test {
protected:
    // Binds a socket of that name, which takes connections once it listens.
    int bound(const std::string& name) const {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::strncpy(address.sun_path, (mFolder / name).c_str(), sizeof address.sun_path - 1);
        const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        EXPECT_EQ(::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        return descriptor;
    }
    Finding find(const std::string& name) const {
        return socketFinding("Server", mFolder / name, "the-package", "varno-no-such-command");
    }

    TemporaryFolder mFolder;
};

TEST_F(SocketFinding, IsGoodWhereAServerListens) {
    const int server = bound("s");
    EXPECT_EQ(find("s").state, PartState::kMissing); // not yet
    ASSERT_EQ(::listen(server, 8), 0);
    EXPECT_EQ(find("s").state, PartState::kGood);
    EXPECT_EQ(find("s").detail, mFolder / "s");
    EXPECT_EQ(find("s").package, "");
    ::close(server); // its file stays
    EXPECT_EQ(find("s").state, PartState::kMissing);
}

TEST_F(SocketFinding, NamesWhatBringsAServer) {
    const auto found = find("none");
    EXPECT_EQ(found.detail, "no server answers at " + (mFolder / "none"));
    EXPECT_EQ(found.package, "the-package");
    EXPECT_EQ(socketFinding("Server", mFolder / "none", "the-package", "sh").package, "");
    EXPECT_EQ(find(std::string(200, 'x')).state, PartState::kMissing);
    EXPECT_THAT(socketFinding("Server", "pipewire-0", "p", "sh").detail,
                HasSubstr("XDG_RUNTIME_DIR is not set"));
}

} // namespace
} // namespace varno::test
