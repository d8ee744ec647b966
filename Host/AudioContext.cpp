#include "Host/AudioContext.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace varno {

namespace {

constexpr std::align_val_t kCacheLine{64};

} // namespace

AlignedBlock::AlignedBlock(std::size_t size)
    : mSize(size),
      mMemory(static_cast<std::byte*>(::operator new(size, kCacheLine))) {
    std::memset(mMemory.get(), 0, size);
}

void AlignedBlock::Free::operator()(std::byte* memory) const {
    ::operator delete(memory, kCacheLine);
}

AudioContext::AudioContext(InstanceState& state)
    : mState(state),
      mProcess(state.variant.natives.front().process),
      mPointers(state.variant.contextLength(), nullptr),
      mInputs(static_cast<std::size_t>(state.variant.inputChannels()), nullptr),
      mOutputs(static_cast<std::size_t>(state.variant.outputChannels()), nullptr),
      mSampleRateHz(static_cast<float>(state.setup.sampleRateHz)) {
    for (const FieldDescription& field : state.variant.fields) {
        mPointers[static_cast<std::size_t>(field.index)] = pointerFor(field);
    }
    bindPorts();
}

void* AudioContext::pointerFor(const FieldDescription& field) {
    switch (field.kind) {
    case FieldKind::AudioIn:
        return mInputs.data();
    case FieldKind::AudioOut:
        return mOutputs.data();
    case FieldKind::BufferLength:
        return &mFrames;
    case FieldKind::SampleRate:
        return &mSampleRateHz;
    case FieldKind::Clock:
        return &mClock;
    case FieldKind::SideChainIn:
        return &mSideChain;
    case FieldKind::Meters:
        return mState.meters.taps();
    case FieldKind::PrivateData:
        mPrivate.push_back({field.index, AlignedBlock(field.size)});
        return mPrivate.back().memory.bytes().data();
    case FieldKind::TemporaryData:
        mTemporary.emplace_back(field.size);
        return mTemporary.back().bytes().data();
    case FieldKind::DataInPort: // bound to the latest packets
    case FieldKind::Reserved:   // this host puts nothing there
        break;
    }
    return nullptr;
}

void AudioContext::bindPorts() noexcept {
    const std::byte* image = mState.packets.image();
    for (const Port& port : mState.packets.ports()) {
        // The routine reads its ports; the context block has no type of its own for that.
        mPointers[static_cast<std::size_t>(port.field)] = const_cast<std::byte*>(image + port.offset);
    }
}

void AudioContext::run(const float* const* inputs, float* const* outputs, std::int32_t offset,
                       std::int32_t frames) noexcept {
    if (mState.packets.acquire()) {
        bindPorts();
    }
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        mInputs[channel] = inputs[channel] + offset;
    }
    for (std::size_t channel = 0; channel < mOutputs.size(); ++channel) {
        mOutputs[channel] = outputs[channel] + offset;
    }
    mFrames = frames;
    mClock = mState.positionFrames.load(std::memory_order_relaxed);
    mState.meters.beforeBuffer();

    void* const instances[] = {mPointers.data()};
    mProcess(instances, instances + 1);

    mState.meters.afterBuffer(frames);
    mState.positionFrames.store(mClock + frames, std::memory_order_relaxed);
}

std::span<std::byte> AudioContext::privateData(AAX_CFieldIndex field) const {
    const auto found = std::find_if(mPrivate.begin(), mPrivate.end(),
                                    [&](const PrivateField& entry) { return entry.field == field; });
    return found == mPrivate.end() ? std::span<std::byte>() : found->memory.bytes();
}

} // namespace varno
