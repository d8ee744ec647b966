#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sys/stat.h>

// Renders for which the memory does not suffice.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// A render keeps the file's metadata several times; the other files of these tests need next to nothing.
constexpr std::uint32_t kManyBytes = 60U << 20;
constexpr std::uint64_t kTooLittle = 128U << 20;
constexpr std::uint64_t kEnoughForOne = 400U << 20;

class RenderMemory : public ProgramTest {
protected:
    RenderMemory() { fs::create_directory(path("wet")); }

    void makeSmall(const std::string& name) {
        makeMusic(name, kWav16, 1, 3000, 44'100);
        mNames.push_back(name);
    }
    // With a description ("bext") of kManyBytes zeros.
    void makeLarge(const std::string& name) {
        makeSmall(name);
        const auto size = static_cast<std::uint32_t>(fs::file_size(path(name)));
        std::fstream file(path(name), std::ios::in | std::ios::out | std::ios::binary);
        file.seekp(4);
        writeNumber(file, size + kManyBytes);
        file.seekp(size);
        file << "bext";
        writeNumber(file, kManyBytes);
        file.close();
        fs::resize_file(path(name), std::uint64_t{size} + 8 + kManyBytes);
    }
    static void writeNumber(std::fstream& file, std::uint32_t number) {
        file.write(reinterpret_cast<const char*>(&number), sizeof number);
    }

    // Renders all files with so much memory.
    Outcome render(std::uint64_t bytes, const std::string& jobs) const {
        std::vector<std::string> words = {"prlimit", "--as=" + std::to_string(bytes)};
        std::vector<std::string> options = {"render", "--out-dir", "wet", "--jobs", jobs};
        options.insert(options.end(), mNames.begin(), mNames.end());
        const auto program = varnoWords(options);
        words.insert(words.end(), program.begin(), program.end());
        return run(words, {.folder = mFolder.path()});
    }

    std::vector<std::string> mNames;
};

TEST_F(RenderMemory, OnlyWhatIsTooLargeIsRefused) {
    makeLarge("in0.wav");
    for (const char* name : {"in1.wav", "in2.wav", "in3.wav", "in4.wav"}) {
        makeSmall(name);
    }
    for (const char* jobs : {"1", "2"}) {
        const auto outcome = render(kTooLittle, jobs);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.err, "varno: in0.wav: cannot be rendered: not enough memory\n");
        EXPECT_FALSE(fs::exists(path("wet/in0.wav")));
        for (const char* name : {"in1.wav", "in2.wav", "in3.wav", "in4.wav"}) {
            varnoOut({"render", name, "single.wav", "--force"});
            EXPECT_EQ(content(std::string("wet/") + name), content("single.wav"))
                << name << ", jobs " << jobs;
        }
        fs::remove_all(path("wet"));
        fs::create_directory(path("wet"));
    }
}

// The pipe is in one group with the file before it, and comes after it.
TEST_F(RenderMemory, APipeBehindAFileThatIsTooLargeIsRendered) {
    makeLarge("in0.wav");
    for (const char* name : {"in1.wav", "in2.wav", "in3.wav"}) {
        makeSmall(name);
    }
    fs::rename(path("in1.wav"), path("content.wav"));
    ASSERT_EQ(mkfifo(path("in1.wav").c_str(), 0600), 0);
    Subprocess writer({"cp", path("content.wav"), path("in1.wav")});
    const auto outcome = render(kTooLittle, "2");
    EXPECT_EQ(outcome.status, 1);
    ASSERT_EQ(outcome.err, "varno: in0.wav: cannot be rendered: not enough memory\n");
    EXPECT_EQ(writer.wait().status, 0);
    varnoOut({"render", "content.wav", "single.wav"});
    EXPECT_EQ(content("wet/in1.wav"), content("single.wav"));
}

TEST_F(RenderMemory, ForOneAtATimeIsEnoughForAll) {
    for (const char* name : {"in0.wav", "in1.wav", "in2.wav", "in3.wav"}) {
        makeLarge(name);
    }
    const auto outcome = render(kEnoughForOne, "2");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    for (const auto& name : mNames) {
        EXPECT_GT(fs::file_size(path("wet/" + name)), kManyBytes);
    }
}

} // namespace
} // namespace varno::test
