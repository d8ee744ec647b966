/// What one instance's processing routine sees.
#ifndef VARNO_HOST_AUDIOCONTEXT_H
#define VARNO_HOST_AUDIOCONTEXT_H

#include "Host/InstanceState.h"

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace varno {

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
    /// The bytes of a private-data field; empty for a field that is none. While nothing runs. [main]
    std::span<std::byte> privateData(AAX_CFieldIndex field) const;

private:
    struct PrivateField {
        AAX_CFieldIndex field;
        AlignedBlock memory;
    };

    void* pointerFor(const FieldDescription& field);
    void bindPorts() noexcept;

    InstanceState& mState;
    AAX_CProcessProc mProcess;
    std::vector<void*> mPointers;
    std::vector<PrivateField> mPrivate;
    std::vector<AlignedBlock> mTemporary;
    std::vector<const float*> mInputs;
    std::vector<float*> mOutputs;
    std::int32_t mFrames = 0;
    float mSampleRateHz;
    std::int64_t mClock = 0;
    std::int32_t mSideChain = -1; ///< No side chain.
};

} // namespace varno

#endif
