#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/TestRun.h"

#include <sys/stat.h>

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <poll.h>
#include <sndfile.h>
#include <thread>
#include <unistd.h>
#include <utility>

// Renders from pipes into pipes.

namespace varno::test {
namespace {

using testing::HasSubstr;

constexpr int kPipeWaitMs = 60'000;
constexpr int kPipedWav24 = SF_FORMAT_WAV | SF_FORMAT_PCM_24;

class RenderPipe : public ProgramTest {
protected:
    // A shell command in the test's folder, where VARNO is the program.
    Outcome inShell(std::string command) const {
        for (std::size_t at = command.find("VARNO"); at != std::string::npos; at = command.find("VARNO")) {
            command.replace(at, 5, VARNO_PROGRAM);
        }
        return run({"bash", "-o", "pipefail", "-c", command},
                   {.folder = mFolder.path(), .environment = {"VARNO_MODULE="}});
    }

    // Of a WAV file: the size of its samples as unknown as programs leave it that write to pipes.
    void makeUnknown(const std::string& from, const std::string& to) const {
        std::string bytes = readFile(path(from));
        bytes.replace(bytes.find("data") + 4, 4, 4, '\xFF');
        writeFile(path(to), bytes);
    }
};

TEST_F(RenderPipe, APipeReceivesTheBytesOfAFile) {
    struct Case {
        int format;
        int channels;
        int frames;
        std::string options;
    };
    for (const auto& [format, channels, frames, options] : {
             Case{kWav16, 2, 40'000, ""},
             Case{kWavFloat, 1, 4801, "--tail 0.5"},
             Case{kWav16, 1, 4801, "--format pcm24"},
             Case{SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1, 4801, "--block 100"},
             Case{SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 2, 10'000, ""},
             Case{SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 2, 10'000, ""},
         }) {
        makeMusic("in", format, channels, frames);
        EXPECT_EQ(inShell("VARNO render -q -f " + options + " in out.wav").status, 0);
        EXPECT_EQ(inShell("VARNO render -q " + options + " in - | cat > from-file").err, "");
        EXPECT_EQ(inShell("cat in | VARNO render -q " + options + " - - | cat > from-pipe").err, "");
        EXPECT_EQ(content("from-file"), content("out.wav")) << std::hex << format;
        EXPECT_EQ(content("from-pipe"), content("out.wav")) << std::hex << format;
    }
}

TEST_F(RenderPipe, CarriesMetadata) {
    makeMusic("plain.wav", kWav16, 2, 4801);
    shell("sox " + path("plain.wav") + " --comment 'Take seven' " + path("commented.aiff"));
    const std::string chunk = std::string("LIST\x14\0\0\0INFOINAM\7\0\0\0a name\0\0", 28);
    writeFile(path("after.wav"), readFile(path("plain.wav")) + chunk);
    for (const std::string name : {"after.wav", "commented.aiff"}) {
        EXPECT_EQ(inShell("VARNO render -q -f " + name + " out.wav").status, 0);
        EXPECT_EQ(inShell("VARNO render -q " + name + " - | cat > piped.wav").err, "");
        EXPECT_EQ(content("piped.wav"), content("out.wav")) << name;
    }
}

// What follows the samples of a pipe comes after the output's header has left.
TEST_F(RenderPipe, ReportsWhatComesTooLate) {
    makeMusic("plain.wav", kWav16, 2, 4801);
    writeFile(path("in.wav"),
              readFile(path("plain.wav")) + std::string("LIST\x10\0\0\0INFOINAM\4\0\0\0name", 24));
    const auto outcome = inShell("cat in.wav | VARNO render - - | cat > out.wav");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("varno: warning: -: 24 bytes after its samples are not carried over, "
                                       "since - is a pipe\n"));
    EXPECT_EQ(inShell("VARNO render -q plain.wav file.wav").status, 0);
    EXPECT_EQ(content("out.wav"), content("file.wav"));
}

TEST_F(RenderPipe, AnUnknownLengthStaysUnknown) {
    makeMusic("in.wav", kPipedWav24, 2, 10'000);
    makeUnknown("in.wav", "unknown.wav");
    const std::string options = "--format float --tail 0.25 ";
    EXPECT_EQ(inShell("VARNO render -q " + options + "in.wav out.wav").status, 0);
    const auto outcome =
        inShell("cat unknown.wav | VARNO render " + options + "--json - - | cat > piped.wav");
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, HasSubstr(R"("frames":22000,)"));
    const std::string piped = readFile(path("piped.wav"));
    EXPECT_EQ(piped.substr(0, 8), "RIFF\xFF\xFF\xFF\xFF");
    EXPECT_EQ(piped.substr(piped.find("data"), 8), "data\xFF\xFF\xFF\xFF");
    EXPECT_EQ(piped.substr(piped.find("fact") + 8, 4), "\xFF\xFF\xFF\xFF");
    EXPECT_EQ(readReals(path("piped.wav")).reals, readReals(path("out.wav")).reals);
}

// Chunks of samples of unknown number can only stand before them.
TEST_F(RenderPipe, MetadataStandsBeforeAnUnknownNumberOfSamples) {
    makeMusic("plain.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1, 4801);
    std::string bytes = readFile(path("plain.wav"));
    const std::size_t data = bytes.find("data");
    bytes.replace(data + 4, 4, 4, '\xFF');
    const std::string chunk("LIST\x10\0\0\0INFOINAM\4\0\0\0name", 24);
    writeFile(path("in.wav"), bytes.substr(0, data) + chunk + bytes.substr(data, 8 + 4801));
    EXPECT_EQ(inShell("cat in.wav | VARNO render -q - - | cat > out.wav").err, "");
    const std::string out = readFile(path("out.wav"));
    EXPECT_NE(out.find(chunk), std::string::npos);
    EXPECT_EQ(out.size() - out.find("data") - 8, 4801U); // not one byte more
}

// Where there is no place for temporary files, what is not passed on at once fails.
TEST_F(RenderPipe, OnlyWhatMustBeIsKeptInATemporaryFile) {
    makeMusic("in.wav", kWav16, 2, 4801);
    makeUnknown("in.wav", "unknown.wav");
    for (const std::string type : {"aiff", "au", "flac"}) {
        shell("sox " + path("in.wav") + " -t " + type + ' ' + path("in." + type));
    }
    const std::string nowhere = "TMPDIR=/nonexistent VARNO render -q -f ";
    for (const std::string name : {"in.wav", "unknown.wav", "in.aiff", "in.au"}) {
        std::string command = "cat ";
        command.append(name).append(" | ").append(nowhere).append("- - | cat > out.wav");
        EXPECT_EQ(inShell(command).err, "") << name;
    }
    EXPECT_EQ(inShell(nowhere + "in.flac - | cat > out.wav").err, "");
    for (const std::string& rest : std::initializer_list<std::string>{
             "in.flac | " + nowhere + "- - | cat", "in.wav | " + nowhere + "- out.wav",
             "in.wav | " + nowhere + "- - > out.wav"}) {
        EXPECT_THAT(inShell("cat " + rest).err, HasSubstr("temporary files")) << rest;
        EXPECT_EQ(inShell("cat " + rest + " | cat").status, 1) << rest;
    }
}

TEST_F(RenderPipe, OtherInputsArePassedOnToo) {
    makeMusic("in.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 2, 4801);
    EXPECT_EQ(inShell("VARNO render -q in.flac out.wav").status, 0);
    EXPECT_EQ(inShell("cat in.flac | VARNO render -q - - | cat > piped.wav").err, "");
    EXPECT_EQ(content("piped.wav"), content("out.wav"));
}

TEST_F(RenderPipe, AClosedReaderIsAnError) {
    makeMusic("in.wav", kWav16, 2, 400'000);
    const auto outcome = inShell("VARNO render in.wav - | head -c 1000 | wc -c; echo ${PIPESTATUS[0]}");
    EXPECT_EQ(outcome.out, "1000\n1\n");
    EXPECT_EQ(outcome.err, "varno: standard output: cannot be written: Broken pipe\n");
}

TEST_F(RenderPipe, ATruncatedInputIsAnErrorAtItsEnd) {
    makeMusic("in.wav", kWav16, 1, 4800);
    const std::string cut = "head -c 4844 in.wav | VARNO render -q ";
    const auto outcome = inShell(cut + "- - | cat > out.wav");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: standard input: is truncated: 2400 frames found, expected the 4800 that its "
              "header promises; --truncated reads what is there\n");
    const auto accepted = inShell("head -c 4844 in.wav | VARNO render --truncated - - | cat > out.wav");
    EXPECT_EQ(accepted.status, 0);
    EXPECT_THAT(accepted.err, HasSubstr("varno: warning: standard input: is truncated: 2400 frames found"));
    EXPECT_EQ(readReals(path("out.wav")).reals.size(), 2400U);
}

TEST_F(RenderPipe, AnInputWithoutFramesIsAnError) {
    makeMusic("in.wav", kWav16, 1, 100);
    makeUnknown("in.wav", "unknown.wav");
    const auto outcome = inShell("head -c 44 unknown.wav | VARNO render - - | wc -c; exit ${PIPESTATUS[1]}");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "0\n");
    EXPECT_EQ(outcome.err, "varno: standard input: holds no frames; expected at least one\n");
}

TEST_F(RenderPipe, NoSummaryIsMixedIntoTheAudio) {
    makeMusic("in.wav", kWav16, 2, 4801);
    EXPECT_EQ(inShell("VARNO render -q in.wav out.wav").status, 0);
    for (const std::string name : {"-", "/dev/stdout", "/proc/self/fd/1"}) {
        const auto outcome = inShell("VARNO render in.wav " + name + " | cat > piped.wav");
        EXPECT_THAT(outcome.err, HasSubstr("dBFS out")) << name;
        EXPECT_EQ(content("piped.wav"), content("out.wav")) << name;
    }
}

// Both ends of a render from one pipe into another.
class RenderLive : public RenderPipe {
protected:
    // Starts a render and sends it a header of unknown length and the first frame.
    // @param wav a file from which they are taken
    void start(const std::string& wav, std::size_t frameBytes, const std::vector<std::string>& options) {
        for (const char* name : {"in.fifo", "out.fifo"}) {
            ASSERT_EQ(mkfifo(path(name).c_str(), 0600), 0);
        }
        std::vector<std::string> words = {"render", "-q"};
        words.insert(words.end(), options.begin(), options.end());
        words.insert(words.end(), {"in.fifo", "out.fifo"});
        mProgram.emplace(
            varnoWords(words),
            Surroundings{.folder = mFolder.path(), .environment = {"VARNO_MODULE=", "TMPDIR=/nonexistent"}});
        mInput = open(path("in.fifo").c_str(), O_WRONLY | O_CLOEXEC);
        makeUnknown(wav, "unknown.wav");
        const std::string bytes = readFile(path("unknown.wav"));
        mHeaderBytes = bytes.find("data") + 8;
        mSamples = bytes.substr(mHeaderBytes);
        send(bytes.substr(0, mHeaderBytes) + mSamples.substr(0, frameBytes));
        mOutput = open(path("out.fifo").c_str(), O_RDONLY | O_CLOEXEC);
    }

    ~RenderLive() override {
        endInput();
        close(mOutput);
    }

    void send(const std::string& bytes) const {
        ASSERT_EQ(write(mInput, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }

    void endInput() { close(std::exchange(mInput, -1)); }

    // Waits until so many bytes have come in all, or the end, or too long a time.
    void receive(std::size_t bytes) {
        std::vector<char> piece(65536);
        while (mReceived.size() < bytes) {
            pollfd ready{mOutput, POLLIN, 0};
            ASSERT_EQ(::poll(&ready, 1, kPipeWaitMs), 1) << mReceived.size() << " of " << bytes;
            const ssize_t got = read(mOutput, piece.data(), piece.size());
            if (got <= 0) {
                return;
            }
            mReceived.append(piece.data(), static_cast<std::size_t>(got));
        }
    }

    // The most memory that the program has had, in KiB.
    long mostMemory() const {
        std::ifstream status("/proc/" + std::to_string(mProgram->pid()) + "/status");
        for (std::string line; std::getline(status, line);) {
            if (line.starts_with("VmHWM:")) {
                return std::stol(line.substr(6));
            }
        }
        return -1;
    }

    std::optional<Subprocess> mProgram;
    int mInput = -1;
    int mOutput = -1;
    std::size_t mHeaderBytes = 0;
    std::string mSamples;  // of the file that the header is from
    std::string mReceived; // the output so far
};

TEST_F(RenderLive, TheDelayIsAtMostTwoBlocks) {
    constexpr std::size_t kBlock = 64;
    constexpr std::size_t kFrames = 100 * kBlock;
    makeMusic("in.wav", kWav16, 1, kFrames);
    start("in.wav", 2, {"--block", std::to_string(kBlock)});
    // The input stays open while the output arrives, whatever the pieces are in which it is sent.
    const std::size_t pieces[] = {1, kBlock, kBlock / 2, 3 * kBlock, 7};
    std::size_t sent = 1;
    for (std::size_t i = 0; sent < kFrames; ++i) {
        const std::size_t count = std::min(pieces[i % std::size(pieces)], kFrames - sent);
        send(mSamples.substr(2 * sent, 2 * count));
        sent += count;
        receive(sent < 2 * kBlock ? 0 : mHeaderBytes + 2 * (sent - 2 * kBlock));
        ASSERT_FALSE(HasFatalFailure());
    }
    endInput();
    receive(SIZE_MAX);
    EXPECT_EQ(mProgram->wait().status, 0);
    EXPECT_EQ(varno({"render", "-q", "in.wav", "out.wav"}).status, 0);
    EXPECT_EQ(Bytes{mReceived.substr(mHeaderBytes)}, Bytes{readFile(path("out.wav")).substr(mHeaderBytes)});
}

// Far more than the program may grow by goes through it.
TEST_F(RenderLive, MemoryDoesNotDependOnTheLength) {
    constexpr std::size_t kPiece = 60'000;
    constexpr std::size_t kBytes = std::size_t{300} << 20;
    constexpr std::size_t kWarmUp = kBytes / 20;
    constexpr long kMostGrowthKiB = 4096;
    makeMusic("in.wav", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 2, 100);
    start("in.wav", 16, {"--block", "2048", "--set", "MasterBypassID=1"});
    std::jthread writer([&] {
        const std::string piece(kPiece, '\0');
        for (std::size_t sent = 0; sent < kBytes && !HasFatalFailure(); sent += kPiece) {
            send(piece);
        }
    });
    std::size_t received = 0;
    long before = 0;
    while (received < kBytes - kPiece && !HasFatalFailure()) {
        receive(kPiece);
        received += std::exchange(mReceived, {}).size();
        if (before == 0 && received > kWarmUp) {
            before = mostMemory();
        }
    }
    ASSERT_GT(before, 0);
    if (!kIsSanitized) { // sanitizers keep what was freed
        EXPECT_LT(mostMemory() - before, kMostGrowthKiB);
    }
    writer.join();
    endInput();
    receive(kBytes); // until the end
    EXPECT_EQ(mProgram->wait().status, 0);
}

TEST_F(RenderLive, ASignalEndsTheWaitForInput) {
    makeMusic("in.wav", kWav16, 2, 100);
    start("in.wav", 4, {"--block", "16"});
    send(mSamples.substr(4));
    receive(mHeaderBytes + 1);
    kill(mProgram->pid(), SIGTERM);
    endInput(); // also ends a read that began just after the signal
    const auto outcome = mProgram->wait();
    EXPECT_EQ(outcome.status, 128 + SIGTERM);
    EXPECT_EQ(outcome.err, "varno: interrupted\n");
}

} // namespace
} // namespace varno::test
