// The program over a long file, and what of that is no work of its own: libsndfile's decoding and encoding,
// and the routine. The file is of 16 bits, the cheapest to decode and encode, and of the length of a long
// song.
#include "AudioFile/Sndfile.h"
#include "Benchmarks/MeasuredProcess.h"
#include "Benchmarks/Music.h"
#include "Benchmarks/Way.h"
#include "Render/DemoLoop.h"
#include "Tests/Support/TemporaryFolder.h"

#include <chrono>
#include <ctime>
#include <filesystem>
#include <stdexcept>

namespace varno::bench {
namespace {

constexpr int kChannels = 2;
constexpr int kWav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
constexpr std::int64_t kMinuteFrames = 60 * static_cast<std::int64_t>(kRate);
constexpr std::int64_t kSongFrames = 10 * kMinuteFrames;
constexpr std::int64_t kThreeHoursFrames = 180 * kMinuteFrames;

SndfileOwner openSound(const std::string& path, int mode, SF_INFO& ioInfo) {
    SndfileOwner sound(sf_open(path.c_str(), mode, &ioInfo));
    if (sound == nullptr) {
        throw std::runtime_error(path + ": " + sf_strerror(nullptr));
    }
    return sound;
}

SndfileOwner createSound(const std::string& path) {
    SF_INFO info{};
    info.samplerate = static_cast<int>(kRate);
    info.channels = kChannels;
    info.format = kWav16;
    return openSound(path, SFM_WRITE, info);
}

// Appends the frames of a file, block by block.
void append(SNDFILE* target, const std::string& source) {
    constexpr sf_count_t kBlockFrames = 4096;
    std::vector<float> block(static_cast<std::size_t>(kBlockFrames * kChannels));
    SF_INFO info{};
    const SndfileOwner reader = openSound(source, SFM_READ, info);
    while (const sf_count_t frames = sf_readf_float(reader.get(), block.data(), kBlockFrames)) {
        sf_writef_float(target, block.data(), frames);
    }
}

// The files of these measurements.
struct Files {
    // Ten minutes of music: the program's demo loop again and again. (It is made by the program, since
    // making it takes more memory than this process may hold; see ownResidentMebis.)
    const std::string& song() {
        if (mSong.empty()) {
            mSong = folder / "song.wav";
            runMeasured({VARNO_PROGRAM, "render", "--quiet"}, folder.path());
            const SndfileOwner sound = createSound(mSong);
            for (std::int64_t frames = 0; frames < kSongFrames; frames += kDemoLoopFrames) {
                append(sound.get(), folder / "varno-demo-dry.wav");
            }
        }
        return mSong;
    }
    // Three hours of silence that take no room on the disk.
    std::string threeHours() const {
        std::string path = folder / "three-hours.wav";
        const SndfileOwner sound = createSound(path);
        sf_count_t frames = kThreeHoursFrames;
        if (sf_command(sound.get(), SFC_FILE_TRUNCATE, &frames, sizeof frames) != 0) {
            throw std::runtime_error(path + ": " + sf_strerror(sound.get()));
        }
        return path;
    }
    // A name that is free.
    std::string output() const {
        std::string path = folder / "output.wav";
        std::filesystem::remove(path);
        return path;
    }

    test::TemporaryFolder folder;

private:
    std::string mSong;
};

Files& files() {
    static Files all;
    return all;
}

ProcessCost runProgram(const std::string& input) {
    return runMeasured({VARNO_PROGRAM, "render", "--quiet", input, files().output()}, files().folder.path());
}

void tell(benchmark::State& state, const ProcessCost& cost) {
    state.SetIterationTime(cost.elapsedS);
    state.counters["processor_s"] = cost.processorS;
}

// Runs `operation` once an iteration, with its time by the clock and the processor's.
template<class Operation>
void measureHere(benchmark::State& state, Operation operation) {
    for ([[maybe_unused]] auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        const std::clock_t before = std::clock();
        operation();
        ProcessCost cost;
        cost.processorS = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        cost.elapsedS = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        tell(state, cost);
    }
    countFrames(state, kSongFrames);
}

void once(benchmark::internal::Benchmark* benchmark) {
    benchmark->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
}

// The program itself, with its default settings.
void program(benchmark::State& state) {
    const std::string& song = files().song();
    for ([[maybe_unused]] auto _ : state) {
        tell(state, runProgram(song));
    }
    countFrames(state, kSongFrames);
}
BENCHMARK(program)->Name("render/program")->Apply(once);

// The same file decoded and encoded in blocks as large as the program's.
void sndfile(benchmark::State& state) {
    const std::string& song = files().song();
    const std::string output = files().output();
    measureHere(state, [&] {
        constexpr sf_count_t kBlockFrames = 32768;
        std::vector<float> block(static_cast<std::size_t>(kBlockFrames * kChannels));
        SF_INFO info{};
        const SndfileOwner reader = openSound(song, SFM_READ, info);
        const SndfileOwner writer = createSound(output);
        while (const sf_count_t frames = sf_readf_float(reader.get(), block.data(), kBlockFrames)) {
            sf_writef_float(writer.get(), block.data(), frames);
        }
    });
}
BENCHMARK(sndfile)->Name("render/sndfile")->Apply(once);

// As many frames through the routine in buffers as long as the program's.
template<Way kWay>
void frames(benchmark::State& state) {
    constexpr std::int32_t kBufferFrames = 512;
    test::AlgParameters settings;
    settings.hot = 0.07F; // the product's default
    test::AlgInstance instance(kChannels, kRate);
    instance.set(settings);
    measureHere(state, [&] {
        LoopedSignal signal(music(kChannels), kBufferFrames);
        for (std::int64_t frame = 0; frame < kSongFrames; frame += kBufferFrames) {
            processBuffer<kWay>(instance, signal);
            signal.next();
        }
    });
}
BENCHMARK(frames<Way::kProduct>)->Name("render/routine")->Apply(once);
BENCHMARK(frames<Way::kLiteral>)->Name("render/routine_literal")->Apply(once);
BENCHMARK(frames<Way::kCopy>)->Name("render/routine_copy")->Apply(once);

// How much memory the program holds. To be run in a process without any of the measurements above, which
// hold more.
void memory(benchmark::State& state, const std::string& input) {
    for ([[maybe_unused]] auto _ : state) {
        const ProcessCost cost = runProgram(input);
        tell(state, cost);
        if (cost.residentMebis <= ownResidentMebis()) {
            throw std::runtime_error("the measuring program holds more memory than the measured one");
        }
        state.counters["resident_MiB"] = cost.residentMebis;
    }
}

void memoryOfSong(benchmark::State& state) {
    memory(state, files().song());
}
BENCHMARK(memoryOfSong)->Name("memory/song")->Apply(once);

// Writes 2 GB.
void memoryOfThreeHours(benchmark::State& state) {
    memory(state, files().threeHours());
}
BENCHMARK(memoryOfThreeHours)->Name("memory/three_hours")->Apply(once);

} // namespace
} // namespace varno::bench
