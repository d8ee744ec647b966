#include "Files/HiddenFiles.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/Eventually.h"

#include <sys/stat.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <sndfile.h>
#include <unistd.h>

// Renders that a signal ends, and renders that run in a terminal.

namespace varno::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr int kSignalStatus = 128;

// Whether a program has opened outputs in a folder, which have no names or hidden ones.
bool hasUnfinishedOutput(const Subprocess& program, const std::string& folder) {
    std::error_code error;
    const auto files = "/proc/" + std::to_string(program.pid()) + "/fd";
    for (const auto& file : std::filesystem::directory_iterator(files, error)) {
        const auto target = std::filesystem::read_symlink(file.path(), error).string();
        if (target.starts_with(folder + "/#") || target.starts_with(folder + "/.")) {
            return true;
        }
    }
    return false;
}

class RenderInterruption : public ProgramTest {
protected:
    // Two channels of silence at 384 kHz, long enough that a render takes many times as long as a signal does
    // to arrive. The file system holds its header alone.
    void makeLongSilence(const std::string& name) const {
        constexpr int kRateHz = 384'000;
        constexpr sf_count_t kFrames = 300LL * kRateHz;
        SF_INFO info{};
        info.samplerate = kRateHz;
        info.channels = 2;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* file = sf_open(path(name).c_str(), SFM_WRITE, &info);
        ASSERT_NE(file, nullptr);
        const short last[] = {0, 0};
        ASSERT_GE(sf_seek(file, kFrames - 1, SEEK_SET), 0) << sf_strerror(file);
        ASSERT_EQ(sf_writef_short(file, last, 1), 1);
        sf_close(file);
    }

    Outcome signalledRender(int signal) const {
        Subprocess program(varnoWords({"render", "--block", "1", "--meters", "m.csv", "--save-preset",
                                       "p.txt", "long.wav", "out.wav"}),
                           {.folder = mFolder.path()});
        EXPECT_TRUE(eventually([&] { return hasUnfinishedOutput(program, mFolder.path()); }));
        kill(program.pid(), signal);
        return program.wait();
    }
};

TEST_F(RenderInterruption, LeavesNothingBehind) {
    makeLongSilence("long.wav");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const auto outcome = signalledRender(signal);
        EXPECT_EQ(outcome.status, kSignalStatus + signal);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "varno: interrupted\n");
        EXPECT_EQ(mFolder.listing(), "long.wav");
    }
}

// What nothing can react to.
TEST_F(RenderInterruption, AKillLeavesNothingBehind) {
    makeLongSilence("long.wav");
    const auto outcome = signalledRender(SIGKILL);
    EXPECT_EQ(outcome.status, kSignalStatus + SIGKILL);
    // Where this file system has no files without names, the next render removes those with hidden ones.
    EXPECT_EQ(mFolder.listing() == "long.wav", openUnnamed(mFolder.path(), 0600).isOpen());
    makeMusic("in.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 100);
    varnoOut({"render", "-q", "in.wav", "out.wav"});
    EXPECT_EQ(mFolder.listing(), "in.wav long.wav out.wav");
}

TEST_F(RenderInterruption, EndsTheWaitForAPipe) {
    ASSERT_EQ(mkfifo(path("pipe.wav").c_str(), 0600), 0);
    Subprocess program(varnoWords({"render", "pipe.wav", "out.wav"}), {.folder = mFolder.path()});
    // Opening the other end returns once the program has opened its own.
    const int writeEnd = open(path("pipe.wav").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_GE(writeEnd, 0);
    ASSERT_EQ(write(writeEnd, "RIFF", 4), 4);
    kill(program.pid(), SIGTERM);
    close(writeEnd); // also ends a read that began just after the signal
    const auto outcome = program.wait();
    EXPECT_EQ(outcome.status, kSignalStatus + SIGTERM);
    EXPECT_EQ(outcome.err, "varno: interrupted\n");
    EXPECT_EQ(mFolder.listing(), "pipe.wav");
}

TEST_F(RenderInterruption, EndsSeveralJobs) {
    std::vector<std::string> words = {"render", "--jobs", "2", "--out-dir", "wet"};
    for (const std::string name :
         {"a.wav", "b.wav", "c.wav", "d.wav", "e.wav"}) { // two side by side, and others
        makeLongSilence(name);
        words.push_back(name);
    }
    std::filesystem::create_directory(mFolder.path() / "wet");
    Subprocess program(varnoWords(words), {.folder = mFolder.path()});
    EXPECT_TRUE(eventually([&] { return hasUnfinishedOutput(program, path("wet")); }));
    kill(program.pid(), SIGTERM);
    const auto outcome = program.wait();
    EXPECT_EQ(outcome.status, kSignalStatus + SIGTERM);
    EXPECT_EQ(outcome.err, "varno: interrupted\n");
    EXPECT_TRUE(std::filesystem::is_empty(path("wet")));
}

// `script` gives the program a terminal and prints what it shows there. The second input is a pipe, which
// gives half of its content, and the rest after a pause. The pause is longer than the interval between two
// redraws of the bar, so that these renders include a redraw on a machine of any speed. The pipe is written
// once: a second reading of an input would wait for ever.
class RenderTerminal : public ProgramTest {
protected:
    RenderTerminal() {
        makeMusic("a.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 50'000);
        EXPECT_EQ(mkfifo(path("b.wav").c_str(), 0600), 0);
        std::filesystem::create_directory(path("wet"));
    }
    std::string onTerminal(const std::string& options) const {
        const std::string feed = "(head -c 100000 a.wav; sleep 1; tail -c +100001 a.wav) > b.wav";
        const std::string command = feed + " & exec " + std::string(VARNO_PROGRAM) +
                                    " render --out-dir wet " + options + " a.wav b.wav";
        const auto outcome = run({"script", "-qec", command, "/dev/null"}, {.folder = mFolder.path()});
        EXPECT_EQ(outcome.status, 0) << outcome.out;
        return outcome.out;
    }
};

TEST_F(RenderTerminal, ShowsProgressAndClearsIt) {
    const std::string shown = onTerminal("");
    EXPECT_THAT(shown, StartsWith("wet/a.wav\r\n")) << "reported before the second has ended";
    EXPECT_THAT(shown, HasSubstr("\r\x1B[K["));
    EXPECT_THAT(shown, HasSubstr(" x real time, "));
    EXPECT_THAT(shown, HasSubstr(" left\r\x1B[Kwet/b.wav\r\n"));
    EXPECT_EQ(onTerminal("--force --quiet"), "");
}

} // namespace
} // namespace varno::test
