#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <cmath>
#include <functional>
#include <numbers>

namespace varno::test {

void PrintTo(const Bytes& bytes, std::ostream* out) {
    *out << bytes.content.size() << " bytes, hash " << std::hash<std::string>()(bytes.content);
}

std::vector<std::string> varnoWords(const std::vector<std::string>& arguments) {
    std::vector<std::string> words = {VARNO_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

Outcome runVarno(const std::vector<std::string>& arguments, Surroundings surroundings) {
    surroundings.environment.emplace_back("VARNO_MODULE=");
    return run(varnoWords(arguments), surroundings);
}

std::string onlyLine(const Outcome& outcome) {
    EXPECT_EQ(outcome.out, "");
    const std::string start = "varno: ";
    const std::string& line = outcome.err;
    EXPECT_TRUE(line.starts_with(start) && line.find('\n') + 1 == line.size()) << line;
    return line.size() > start.size() ? line.substr(start.size(), line.size() - start.size() - 1) : line;
}

Outcome ProgramTest::varno(const std::vector<std::string>& arguments) const {
    return runVarno(arguments, {.folder = mFolder.path()});
}

std::string ProgramTest::varnoOut(const std::vector<std::string>& arguments) const {
    const Outcome outcome = varno(arguments);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

std::string ProgramTest::refusal(int status, const std::vector<std::string>& arguments) const {
    const Outcome outcome = varno(arguments);
    EXPECT_EQ(outcome.status, status);
    return onlyLine(outcome);
}

void ProgramTest::makeMusic(const std::string& name, int format, int channels, int frames, int rateHz) const {
    constexpr double kToneHz = 110.0;
    constexpr double kBeatsPerSecond = 4.0;
    Sound sound;
    sound.format = format;
    sound.channels = channels;
    sound.rateHz = rateHz;
    const auto noise = testReals(static_cast<std::size_t>(frames) * static_cast<std::size_t>(channels));
    for (const double hiss : noise) {
        const auto frame = sound.reals.size() / static_cast<std::size_t>(channels);
        const auto channel = sound.reals.size() % static_cast<std::size_t>(channels);
        const double time = static_cast<double>(frame) / rateHz;
        const double decay = std::exp(-3.0 * std::fmod(time * kBeatsPerSecond, 1.0));
        const double pitch = kToneHz * static_cast<double>(channel + 1);
        sound.reals.push_back(decay * (0.4 * std::sin(2.0 * std::numbers::pi * pitch * time) + 0.1 * hiss));
    }
    writeSound(path(name), sound);
}

} // namespace varno::test
