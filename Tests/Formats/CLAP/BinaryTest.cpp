// The binary as a host loads it, beside what the program renders.
#include "Tests/Formats/CLAP/EventPlan.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Validate/ElfFile.h"

#include <cstring>
#include <dlfcn.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>

namespace varno::test {
namespace {

using validate::ElfFile;

constexpr std::uint32_t kRateHz = 48000;

// A loaded binary.
class Loaded {
public:
    Loaded()
        : mHandle(dlopen(VARNO_CLAP_BINARY, RTLD_NOW | RTLD_LOCAL)) {
        if (mHandle == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    ~Loaded() { dlclose(mHandle); }

    const clap_plugin_entry_t& entry() const {
        return *static_cast<const clap_plugin_entry_t*>(dlsym(mHandle, "clap_entry"));
    }

private:
    void* mHandle;
};

void append(std::string& bytes, std::uint32_t number, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        bytes.push_back(static_cast<char>(number >> (8 * i)));
    }
}

// A WAV file of 32-bit floats.
std::string waveOf(const Signal& signal) {
    const auto channels = static_cast<std::uint32_t>(signal.size());
    const auto bytes = static_cast<std::uint32_t>(4 * channels * signal.front().size());
    std::string wave = "RIFF";
    append(wave, 36 + bytes, 4);
    wave += "WAVEfmt ";
    append(wave, 16, 4);
    append(wave, 3, 2);
    append(wave, channels, 2);
    append(wave, kRateHz, 4);
    append(wave, kRateHz * channels * 4, 4);
    append(wave, channels * 4, 2);
    append(wave, 32, 2);
    wave += "data";
    append(wave, bytes, 4);
    for (std::size_t frame = 0; frame < signal.front().size(); ++frame) {
        for (const std::vector<float>& channel : signal) {
            std::uint32_t word = 0;
            std::memcpy(&word, &channel[frame], sizeof word);
            append(wave, word, 4);
        }
    }
    return wave;
}

// The samples of one, behind whatever chunks come before them.
Signal signalOf(const std::string& wave, std::size_t channels) {
    std::uint32_t length = 0;
    std::size_t at = 12;
    for (; wave.compare(at, 4, "data") != 0; at += 8 + length) {
        std::memcpy(&length, wave.data() + at + 4, sizeof length);
    }
    std::memcpy(&length, wave.data() + at + 4, sizeof length);
    Signal signal(channels, std::vector<float>(length / (4 * channels)));
    for (std::size_t sample = 0; sample < length / 4; ++sample) {
        std::memcpy(&signal[sample % channels][sample / channels], wave.data() + at + 8 + 4 * sample, 4);
    }
    return signal;
}

class ClapBinary : public testing::Test {
protected:
    // What the program makes of the sound. @param automation as --automate reads it
    Signal rendered(const Signal& input, const std::string& quality, const std::string& automation) {
        std::ofstream(mFolder / "in.wav", std::ios::binary) << waveOf(input);
        std::ofstream(mFolder / "values.csv") << automation;
        const Outcome outcome =
            run({VARNO_PROGRAM, "render", "--quality", quality, "--automate", mFolder / "values.csv",
                 "--force", "--compensate", mFolder / "in.wav", mFolder / "out.wav"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        std::ifstream file(mFolder / "out.wav", std::ios::binary);
        return signalOf({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()},
                        input.size());
    }

    TemporaryFolder mFolder;
    const Loaded mBinary;
};

TEST_F(ClapBinary, exportsItsEntryAlone) {
    EXPECT_EQ(ElfFile(VARNO_CLAP_BINARY).exportedSymbols(), std::set<std::string>{"clap_entry"});
}

TEST_F(ClapBinary, isLoadedAndUnloadedAgainAndAgain) {
    for (int round = 0; round < 20; ++round) {
        const Loaded again;
        EXPECT_TRUE(again.entry().init(VARNO_CLAP_BINARY));
        ClapHost host;
        {
            HostedClap plugin(again.entry(), host, 2);
            EXPECT_TRUE(plugin.activate());
        }
        again.entry().deinit();
    }
}

std::string automationOf(const EventPlan& plan) {
    std::string text;
    for (const PlannedValue& value : plan.values) {
        char line[96];
        std::snprintf(line, sizeof line, "%.9f,%s,%.9g\n", static_cast<double>(value.frame) / kRateHz,
                      value.parameter.c_str(), value.normalized);
        text += line;
    }
    return text;
}

// At every quality, with the reported latency taken out, and with values that move at any frame.
TEST_F(ClapBinary, rendersTheBitsOfTheProgram) {
    std::mt19937 random(20261124);
    const char* const qualities[] = {"1x", "2x", "4x", "8x"};
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const Signal input = drums(channels, 24000, kRateHz, 5);
        for (std::size_t stages = 0; stages < std::size(qualities); ++stages) {
            const EventPlan plan = randomEvents(random, 24000, 100);
            const Signal expected = rendered(input, qualities[stages], automationOf(plan));
            for (const std::int32_t block : {1, 64, 333, 8192}) {
                ClapHost host;
                HostedClap plugin(mBinary.entry(), host, channels);
                plugin.add({{0, plugin.idOf("Quality"), static_cast<double>(stages)}});
                plugin.flush();
                ASSERT_TRUE(plugin.activate(kRateHz));
                plugin.add(plan.events);
                const std::size_t latency = plugin.latency();
                Signal longer = input;
                for (std::vector<float>& channel : longer) {
                    channel.resize(channel.size() + latency);
                }
                Signal output = renderChecked(plugin.processor(), longer, {.blocks = {block}}).output;
                for (std::vector<float>& channel : output) {
                    channel.erase(channel.begin(), channel.begin() + static_cast<std::ptrdiff_t>(latency));
                }
                EXPECT_EQ(firstDifference(expected, output), "") << qualities[stages] << ", " << block;
            }
        }
    }
}

} // namespace
} // namespace varno::test
