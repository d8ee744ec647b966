/// What one instance's processing routine works on: packets, meters and the context block.
#ifndef VARNO_HOST_AUDIOCONTEXT_H
#define VARNO_HOST_AUDIOCONTEXT_H

#include "AAX.h"
#include "Host/CoefficientDelay.h"
#include "Host/HostOptions.h"
#include "Host/ModuleDescription.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace varno {

struct InstanceState;

/// One thread writes and publishes, another acquires the latest published value; neither ever waits, and
/// values published in between are skipped. Of the three slots each side owns one; the third lies in the
/// middle with a mark that says whether it is newer than the reader's.
template<class T>
class TripleBuffer {
public:
    /// All slots start as copies of `initial`.
    explicit TripleBuffer(const T& initial)
        : mSlots{initial, initial, initial} {}

    /// The writer's slot; its contents are an older value until it is written over. Writer only.
    T& back() noexcept { return mSlots[mBack]; }
    /// Makes the writer's slot the latest value. Writer only.
    void publish() noexcept { mBack = mMiddle.exchange(mBack | kNew, std::memory_order_acq_rel) & kIndex; }

    /// Moves on to the latest published value; false when there is none newer. Reader only.
    bool acquire() noexcept {
        if ((mMiddle.load(std::memory_order_relaxed) & kNew) == 0) {
            return false;
        }
        mFront = mMiddle.exchange(mFront, std::memory_order_acq_rel) & kIndex;
        return true;
    }
    /// The reader's value, unchanged until the next `acquire`. Reader only.
    const T& front() const noexcept { return mSlots[mFront]; }

private:
    static constexpr std::uint8_t kIndex = 3;
    static constexpr std::uint8_t kNew = 4;

    std::array<T, 3> mSlots;
    std::uint8_t mBack = 0;
    std::atomic<std::uint8_t> mMiddle{1};
    std::uint8_t mFront = 2;
};

/// Where a data-in port lies in the image of all ports.
struct Port {
    AAX_CFieldIndex field = 0;
    std::uint32_t size = 0; ///< Bytes of a packet.
    std::size_t offset = 0; ///< Bytes from the start of the image, suitably aligned for any packet.
    bool posted = false;    ///< Whether a packet was ever posted.
};

/// Packets are collected in an image of all ports, which is handed over as a whole: the audio thread sees
/// either all of a published set or none of it, always each port's last value, and never waits.
class PacketExchange {
public:
    using Image = std::vector<std::byte>;

    /// Ports of a variant; every packet is zero until posted. Above an `oversampling` of 1, each of the
    /// coefficients is published as its root of that order, a power of 2, while it is unscaled.
    explicit PacketExchange(const VariantDescription& variant, std::int32_t oversampling = 1,
                            const std::vector<UnscaledCoefficient>& coefficients = {});

    /// Takes a packet of `size` bytes (copied) for a port. It is published at once, unless a set is open.
    /// Returns AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a field that is no port;
    /// AAX_ERROR_NULL_ARGUMENT; AAX_ERROR_INVALID_ARGUMENT for a size other than the port's. [main]
    AAX_Result post(AAX_CFieldIndex field, const void* payload, std::uint32_t size);
    /// Opens a set: packets posted until `endSet` arrive together. [main]
    void beginSet() { mIsSetOpen = true; }
    /// Publishes the set, if anything was posted. [main]
    void endSet();
    /// The ports without any packet so far. [main]
    std::vector<AAX_CFieldIndex> portsNeverPosted() const;

    /// Moves on to the latest published image; false when there is none newer. [audio]
    bool acquire() noexcept { return mBuffer.acquire(); }
    /// The image acquired last, unchanged until the next `acquire`. [audio]
    const std::byte* image() const noexcept { return mBuffer.front().data(); }
    /// Bytes of every image. [any]
    std::size_t imageBytes() const noexcept { return mStaging.size(); }
    /// All ports in field order of declaration. [any]
    const std::vector<Port>& ports() const { return mPorts; }

private:
    /// An unscaled coefficient by the places of its ports in the image.
    struct Unscaled {
        std::size_t field;
        std::size_t choice;
        bool (*isUnscaled)(float choice);
    };

    void publish();
    std::optional<std::size_t> floatPort(AAX_CFieldIndex field) const;
    void scale(Image& image) const;

    std::vector<Port> mPorts;
    std::int32_t mOversampling;
    std::vector<Unscaled> mUnscaled;
    Image mStaging; ///< Each port's last packet.
    TripleBuffer<Image> mBuffer;
    bool mIsSetOpen = false;
    bool mIsChanged = false;
};

/// Rate at which a meter falls between buffers, in dB a second: about that of a peak programme meter (20 dB
/// in 1.7 s), so that a person can follow it. The routine itself only raises its taps.
inline constexpr double kMeterFallDBPerSecond = 12.0;
/// A tap below this (-120 dB) is set to 0, so that its fall ends.
inline constexpr float kMeterFloor = 1.0e-6F;

/// Taps lie contiguously for the audio thread; values, peaks and clips can be read from any thread. The fall
/// depends on the time that a buffer lasts, not on the number of buffers.
class MeterBank {
public:
    /// One tap per identifier, all at 0. @param reductionTaps those that show gain reduction
    MeterBank(std::vector<AAX_CTypeID> ids, double sampleRateHz, std::vector<std::size_t> reductionTaps = {});

    /// The identifiers in the order of the taps. [any]
    const std::vector<AAX_CTypeID>& ids() const { return mIDs; }
    /// The index of a tap, if there is one of this identifier. [any]
    std::optional<std::size_t> indexOf(AAX_CTypeID id) const;

    /// The taps for the routine to raise; null when there are none. [audio]
    float* taps() noexcept { return mTaps.data(); }
    /// While the effect is bypassed, taps of gain reduction stay at 0. From the next buffer on. [audio]
    void setBypassed(bool isBypassed) noexcept { mIsBypassed = isBypassed; }
    /// Takes over the taps of another bank of the same meters. [audio]
    void copyTaps(const MeterBank& other) noexcept {
        std::copy(other.mTaps.begin(), other.mTaps.end(), mTaps.begin());
    }
    /// Lets the taps fall by the time of the last buffer, before the next one. [audio]
    void beforeBuffer() noexcept;
    /// Makes the taps readable, after a buffer of `frames` frames. [audio]
    void afterBuffer(std::int32_t frames) noexcept;

    /// The value after the latest buffer; 1.0 is full scale. [any]
    float value(std::size_t tap) const noexcept {
        return mReadings[tap].value.load(std::memory_order_relaxed);
    }
    /// The largest value since the peak was cleared. [any]
    float peak(std::size_t tap) const noexcept;
    /// Whether a value was above 1.0 since the clip was cleared. [any]
    bool clipped(std::size_t tap) const noexcept;
    /// Clear a peak to 0, a clip to false. A value that a buffer raises at the same time may win. [any]
    void clearPeak(std::size_t tap) noexcept;
    void clearClip(std::size_t tap) noexcept;
    /// Puts everything to 0; while nothing processes. [main]
    void reset() noexcept;

private:
    struct Readings {
        std::atomic<float> value{0.0F};
        std::atomic<float> peak{0.0F};
        std::atomic<bool> clipped{false};
    };

    std::vector<AAX_CTypeID> mIDs;
    std::vector<float> mTaps;
    std::vector<Readings> mReadings;
    std::vector<std::size_t> mReductionTaps;
    bool mIsBypassed = false;
    double mFallPerFrame; ///< Natural logarithm of the factor of one frame, negative.
    std::int32_t mLastFrames = 0;
    std::int32_t mFactorFrames =
        0; ///< Frames whose fall mFactor is: most buffers are as long as the one before.
    float mFactor = 1.0F;
};

/// Zero-filled memory on a cache line of its own.
class AlignedBlock {
public:
    explicit AlignedBlock(std::size_t size);
    std::span<std::byte> bytes() const { return {mMemory.get(), mSize}; }

private:
    struct Free {
        void operator()(std::byte* memory) const;
    };

    std::size_t mSize;
    std::unique_ptr<std::byte[], Free> mMemory;
};

/// The context block of an algorithm, with everything that its pointers point at. Made on a [main] thread;
/// afterwards `run` belongs to one audio thread at a time.
class AudioContext {
public:
    explicit AudioContext(InstanceState& state);
    AudioContext(const AudioContext&) = delete;
    AudioContext& operator=(const AudioContext&) = delete;

    /// Processes one buffer: `frames` frames from frame `offset` of the channels on. Packets, meters and
    /// position move by one buffer. [audio]
    void run(const float* const* inputs, float* const* outputs, std::int32_t offset,
             std::int32_t frames) noexcept;
    /// The parts of `run`, for a routine that is called with several contexts: the packets; what leads to the
    /// call, with the context for it; what follows it. Not for an instance whose coefficients are delayed.
    /// [audio]
    void takeUpPackets() noexcept;
    void* begin(const float* const* inputs, float* const* outputs, std::int32_t offset,
                std::int32_t frames) noexcept;
    void end() noexcept;
    /// The settings that have arrived, and those before the next frame, come into force at once. [audio]
    void restartCoefficients() noexcept;
    /// The bytes of a private-data field; empty for a field that is none. While nothing runs. [main]
    std::span<std::byte> privateData(AAX_CFieldIndex field) const;

private:
    /// An average that runs as many times too fast as the sound is oversampled, and its meter.
    struct Level {
        float* tap = nullptr;
        float* average = nullptr;
        double coefficient = 0.0;
        float tapBefore = 0.0F; ///< The present buffer.
        float averageBefore = 0.0F;
    };

    struct PrivateField {
        AAX_CFieldIndex field;
        AlignedBlock memory;
    };

    void* pointerFor(const FieldDescription& field);
    void bindPorts(const std::byte* image) noexcept;
    void point(const float* const* inputs, float* const* outputs, std::int32_t offset) noexcept;
    void findLevels();
    void keepLevels() noexcept;
    void scaleLevels(std::int32_t frames) noexcept;
    void runParts(const float* const* inputs, float* const* outputs, std::int32_t offset,
                  std::int32_t frames) noexcept;

    InstanceState& mState;
    AAX_CProcessProc mProcess;
    std::vector<void*> mPointers;
    std::vector<PrivateField> mPrivate;
    std::vector<AlignedBlock> mTemporary;
    std::vector<const float*> mInputs;
    std::vector<float*> mOutputs;
    std::vector<Level> mLevels;
    std::optional<CoefficientDelay> mDelay; ///< Nothing: coefficients come into force as they arrive.
    std::int32_t mFrames = 0;
    float mSampleRateHz;
    std::int64_t mClock = 0;
    std::int32_t mSideChain = -1; ///< No side chain.
};

} // namespace varno

#endif
