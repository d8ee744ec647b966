#include "Tests/Endurance/LongRun.h"

#include "Tests/Integration/OversampledEffect.h"

#include <algorithm>
#include <limits>
#include <sys/mman.h>
#include <vector>

namespace varno::test {
namespace {

constexpr std::int64_t kFrames = static_cast<std::int64_t>(120.0 * kLongRunRateHz);
// Of growth, over the whole run.
constexpr std::ptrdiff_t kMostBytes = 64 * 1024;
constexpr double kMostDifferenceDB = -100.0;

class LongRunTest : public OversampledEffect {
protected:
    template<class Effect = LongRunEffect>
    LongRunReport play(std::int32_t factor = 1, std::int64_t frames = kFrames) {
        return runForLong([&] { return std::make_unique<Effect>(module(), factor); },
                          {.frames = frames, .seed = 7});
    }
};

TEST_F(LongRunTest, LeavesNothingBehind) {
    for (const std::int32_t factor : {1, 4}) {
        SCOPED_TRACE(factor);
        const LongRunReport report = play(factor, kFrames / factor);
        EXPECT_GT(report.buffers, kFrames / factor / 1000);
        EXPECT_GT(report.changes, 20);
        EXPECT_GT(report.badInputs, 0);
        EXPECT_EQ(report.badBuffers, 0);
        EXPECT_EQ(report.badMeters, 0);
        EXPECT_EQ(report.positionError, 0);
        EXPECT_LT(report.residentBytes, 4 * kMostBytes);
        EXPECT_LT(report.allocatedBytes, kMostBytes);
        EXPECT_LT(report.differenceAfterSilenceDB, kMostDifferenceDB);
        EXPECT_EQ(report.differenceAfterReset, "");
    }
}

// Faults that a run must find.

class Leaking final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    ~Leaking() override {
        for (const char* const block : mBlocks) {
            delete[] block;
        }
    }
    Leaking(const Leaking&) = delete;
    Leaking& operator=(const Leaking&) = delete;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        mBlocks.push_back(new char[1024]{});
        LongRunEffect::process(inputs, outputs, frames);
    }

private:
    std::vector<const char*> mBlocks; // so that a check of leaks finds none
};

TEST_F(LongRunTest, FindsALeakInEachBuffer) {
    const LongRunReport report = play<Leaking>();
    EXPECT_GT(report.allocatedBytes, kMostBytes);
}

// As a leak does that the allocator knows nothing of.
class Mapping final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    ~Mapping() override {
        for (void* const page : mPages) {
            ::munmap(page, kPageBytes);
        }
    }
    Mapping(const Mapping&) = delete;
    Mapping& operator=(const Mapping&) = delete;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        void* const page = ::mmap(nullptr, kPageBytes, PROT_READ | PROT_WRITE,
                                  MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
        ASSERT_NE(page, MAP_FAILED);
        mPages.push_back(page);
        LongRunEffect::process(inputs, outputs, frames);
    }

private:
    static constexpr std::size_t kPageBytes = 4096;
    std::vector<void*> mPages;
};

TEST_F(LongRunTest, FindsMemoryThatIsMappedInEachBuffer) {
    EXPECT_GT(play<Mapping>().residentBytes, 4 * kMostBytes);
}

// It has a state that a reset does not put back.
class Remembering final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        LongRunEffect::process(inputs, outputs, frames);
        outputs[0][0] += mHeard;
        mHeard = mHeard * 0.5F + outputs[1][0];
    }

private:
    float mHeard = 0.0F;
};

TEST_F(LongRunTest, FindsAStateThatAResetLeaves) {
    EXPECT_NE(play<Remembering>().differenceAfterReset, "");
}

// It never forgets what it has heard, other than by a reset.
class Drifting final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        LongRunEffect::process(inputs, outputs, frames);
        for (std::int32_t i = 0; i < frames; ++i) {
            mLoudest = std::max(mLoudest, inputs[0][i]);
            outputs[0][i] += 1.0e-3F * mLoudest;
        }
    }
    void reset() override {
        LongRunEffect::reset();
        mLoudest = 0.0F;
    }

private:
    float mLoudest = 0.0F;
};

TEST_F(LongRunTest, FindsWhatThePastHasLeft) {
    const LongRunReport report = play<Drifting>();
    EXPECT_GT(report.differenceAfterSilenceDB, kMostDifferenceDB);
    EXPECT_EQ(report.differenceAfterReset, "");
}

class Forgetful final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    void restore(const StoredChunk& chunk) override {
        LongRunEffect::restore(chunk);
        instance().setNormalized("Hot", 0.07);
    }
};

TEST_F(LongRunTest, FindsAValueThatDoesNotReturn) {
    const LongRunReport report = play<Forgetful>();
    EXPECT_GT(report.differenceAfterSilenceDB, kMostDifferenceDB);
    EXPECT_NE(report.differenceAfterReset, "");
}

// It counts frames in 32 bits, and plays only while the number is positive.
class Counting final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        LongRunEffect::process(inputs, outputs, frames);
        mFrames += static_cast<std::uint32_t>(frames);
        if (static_cast<std::int32_t>(mFrames) < 0) {
            std::fill_n(outputs[0], frames, 0.0F);
        }
    }
    std::int64_t position() override {
        return static_cast<std::int32_t>(mFrames) - static_cast<std::int64_t>(kStart);
    }

private:
    // Within the run, and after a new effect has processed all that it is compared with.
    static constexpr std::int64_t kFramesToOverflow = kFrames * 3 / 4;
    static constexpr std::uint32_t kStart =
        static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max() - kFramesToOverflow);
    std::uint32_t mFrames = kStart;
};

TEST_F(LongRunTest, FindsACounterThatOverflows) {
    const LongRunReport report = play<Counting>();
    EXPECT_NE(report.positionError, 0);
    EXPECT_GT(report.differenceAfterSilenceDB, kMostDifferenceDB);
}

class Faltering final : public LongRunEffect {
public:
    using LongRunEffect::LongRunEffect;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        LongRunEffect::process(inputs, outputs, frames);
        if (++mBuffers == 100) {
            outputs[1][frames - 1] = std::numeric_limits<float>::quiet_NaN();
            outputs[0][0] = -std::numeric_limits<float>::infinity();
        } else if (mBuffers == 200) {
            instance().meters().taps()[0] = std::numeric_limits<float>::infinity();
            instance().meters().afterBuffer(frames);
            instance().meters().taps()[0] = 0.0F;
        }
    }

private:
    int mBuffers = 0;
};

TEST_F(LongRunTest, FindsSamplesAndMetersThatAreNotFinite) {
    const LongRunReport report = play<Faltering>();
    EXPECT_EQ(report.badBuffers, 1);
    EXPECT_GE(report.badMeters, 1);
}

} // namespace
} // namespace varno::test
