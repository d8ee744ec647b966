#include "Tests/Apps/varno/Support/SoundFiles.h"

#include "Render/MetadataText.h"
#include "Tests/Support/Subprocess.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sndfile.h>

namespace varno::test {

namespace {

constexpr unsigned kSeed = 20240611;

SNDFILE* openForReading(const std::string& path, SF_INFO& info) {
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    EXPECT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    return file;
}

template<typename Sample, typename Read>
Sound readSound(const std::string& path, std::vector<Sample> Sound::*samples, Read read) {
    SF_INFO info{};
    SNDFILE* file = openForReading(path, info);
    if (file == nullptr) {
        return {};
    }
    Sound sound;
    sound.format = info.format;
    sound.channels = info.channels;
    sound.rateHz = info.samplerate;
    (sound.*samples).resize(static_cast<std::size_t>(info.frames * info.channels));
    EXPECT_EQ(read(file, (sound.*samples).data(), info.frames), info.frames) << path;
    sf_close(file);
    return sound;
}

} // namespace

void writeSound(const std::string& path, const Sound& sound) {
    SF_INFO info{};
    info.samplerate = sound.rateHz;
    info.channels = sound.channels;
    info.format = sound.format;
    SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr) << path << ": " << sf_strerror(nullptr);
    const auto count = static_cast<sf_count_t>(std::max(sound.integers.size(), sound.reals.size()));
    const sf_count_t written = sound.integers.empty() ? sf_write_double(file, sound.reals.data(), count)
                                                      : sf_write_int(file, sound.integers.data(), count);
    EXPECT_EQ(written, count) << path;
    sf_close(file);
}

Sound readIntegers(const std::string& path) {
    return readSound(path, &Sound::integers, sf_readf_int);
}
Sound readReals(const std::string& path) {
    return readSound(path, &Sound::reals, sf_readf_double);
}

std::vector<std::int32_t> testIntegers(int bits, std::size_t count) {
    const std::int64_t step = std::int64_t{1} << (32 - bits);
    const std::int64_t most = (std::int64_t{1} << (bits - 1)) - 1;
    std::vector<std::int32_t> values;
    for (const std::int64_t value :
         {-most - 1, -most, most, most - 1, std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}}) {
        values.push_back(static_cast<std::int32_t>(value * step));
    }
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<std::int64_t> range(-most - 1, most);
    while (values.size() < count) {
        values.push_back(static_cast<std::int32_t>(range(random) * step));
    }
    values.resize(count);
    return values;
}

std::vector<double> testReals(std::size_t count) {
    std::mt19937_64 random(kSeed);
    std::uniform_real_distribution<double> range(-1.0, 1.0);
    std::vector<double> values(count);
    std::generate(values.begin(), values.end(), [&] { return range(random); });
    return values;
}

Copy::Result Copy::run(const std::string& input, const std::string& output) const {
    AudioReader reader(input);
    const OutputFormat chosen = chooseOutputFormat(reader.format(), output, format, reader.format().frames);
    AudioWriter::Options writerOptions = options;
    writerOptions.inputSample = reader.format().sample;
    AudioWriter writer(output, chosen.format, reader.metadata(), writerOptions);
    AudioBlock block(reader.format().channels, blockFrames);
    while (reader.read(block) > 0) {
        writer.write(block, block.samples());
    }
    writer.commit();
    return {chosen.note, writer.clippedSamples(),
            metadataWarnings(writer.metadataLeftOut(), {"IN", "OUT"}, chosen.format.container)};
}

std::string shell(const std::string& command) {
    const Outcome outcome = test::run({"sh", "-c", command});
    EXPECT_EQ(outcome.status, 0) << command << "\n" << outcome.err;
    return outcome.out;
}

} // namespace varno::test
