#include "Host/AudioContext.h"

#include "Host/InstanceHost.h"
#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace varno {

namespace {

constexpr std::size_t aligned(std::size_t bytes) {
    constexpr std::size_t alignment = alignof(std::max_align_t);
    return (bytes + alignment - 1) / alignment * alignment;
}

std::vector<Port> layOut(const VariantDescription& variant) {
    std::vector<Port> ports;
    std::size_t offset = 0;
    for (const FieldDescription& field : variant.fields) {
        if (field.kind == FieldKind::kDataInPort) {
            ports.push_back({field.index, field.size, offset, false});
            offset += aligned(field.size);
        }
    }
    return ports;
}

std::size_t imageSize(const std::vector<Port>& ports) {
    return ports.empty() ? 0 : ports.back().offset + aligned(ports.back().size);
}

constexpr std::align_val_t kCacheLine{64};

} // namespace

PacketExchange::PacketExchange(const VariantDescription& variant, std::int32_t oversampling,
                               const std::vector<UnscaledCoefficient>& coefficients)
    : mPorts(layOut(variant)),
      mOversampling(oversampling),
      mStaging(imageSize(mPorts)),
      mBuffer(mStaging) {
    for (const UnscaledCoefficient& coefficient : coefficients) {
        const auto field = floatPort(coefficient.field);
        const auto choice = floatPort(coefficient.choice);
        if (oversampling > 1 && field && choice) {
            mUnscaled.push_back({*field, *choice, coefficient.isUnscaled});
        }
    }
}

std::optional<std::size_t> PacketExchange::floatPort(AAX_CFieldIndex field) const {
    const auto port = std::ranges::find(mPorts, field, &Port::field);
    const bool isFloat = port != mPorts.end() && port->size == sizeof(float);
    return isFloat ? std::optional(port->offset) : std::nullopt;
}

// By square roots, which every machine rounds alike.
void PacketExchange::scale(Image& image) const {
    for (const Unscaled& unscaled : mUnscaled) {
        float choice = 0.0F;
        std::memcpy(&choice, image.data() + unscaled.choice, sizeof choice);
        if (unscaled.isUnscaled(choice)) {
            float coefficient = 0.0F;
            std::memcpy(&coefficient, image.data() + unscaled.field, sizeof coefficient);
            double root = coefficient;
            for (std::int32_t order = mOversampling; order > 1; order /= 2) {
                root = std::sqrt(root);
            }
            coefficient = static_cast<float>(root);
            std::memcpy(image.data() + unscaled.field, &coefficient, sizeof coefficient);
        }
    }
}

AAX_Result PacketExchange::post(AAX_CFieldIndex field, const void* payload, std::uint32_t size) {
    const auto port = std::find_if(mPorts.begin(), mPorts.end(),
                                   [&](const Port& candidate) { return candidate.field == field; });
    if (port == mPorts.end()) {
        return AAX_ERROR_INVALID_FIELD_INDEX;
    }
    if (payload == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (size != port->size) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    std::memcpy(mStaging.data() + port->offset, payload, size);
    port->posted = true;
    mIsChanged = true;
    if (!mIsSetOpen) {
        publish();
    }
    return AAX_SUCCESS;
}

void PacketExchange::endSet() {
    mIsSetOpen = false;
    if (mIsChanged) {
        publish();
    }
}

void PacketExchange::publish() {
    // The whole image is copied, so that a value is kept however many images the reader skips.
    std::copy(mStaging.begin(), mStaging.end(), mBuffer.back().begin());
    scale(mBuffer.back());
    mBuffer.publish();
    mIsChanged = false;
}

std::vector<AAX_CFieldIndex> PacketExchange::portsNeverPosted() const {
    std::vector<AAX_CFieldIndex> fields;
    for (const Port& port : mPorts) {
        if (!port.posted) {
            fields.push_back(port.field);
        }
    }
    return fields;
}

MeterBank::MeterBank(std::vector<AAX_CTypeID> ids, double sampleRateHz,
                     std::vector<std::size_t> reductionTaps)
    : mIDs(std::move(ids)),
      mTaps(mIDs.size(), 0.0F),
      mReadings(mIDs.size()),
      mReductionTaps(std::move(reductionTaps)),
      mFallPerFrame(-kMeterFallDBPerSecond / 20.0 * std::log(10.0) / sampleRateHz) {
}

std::optional<std::size_t> MeterBank::indexOf(AAX_CTypeID id) const {
    const auto found = std::find(mIDs.begin(), mIDs.end(), id);
    return found == mIDs.end() ? std::nullopt : std::optional<std::size_t>(found - mIDs.begin());
}

void MeterBank::beforeBuffer() noexcept {
    if (mLastFrames == 0) {
        return;
    }
    if (mLastFrames != mFactorFrames) {
        mFactor = static_cast<float>(std::exp(mFallPerFrame * mLastFrames));
        mFactorFrames = mLastFrames;
    }
    for (float& tap : mTaps) {
        // Written so that a tap which is not a number ends at 0 too.
        tap = tap * mFactor >= kMeterFloor ? tap * mFactor : 0.0F;
    }
    mLastFrames = 0;
}

void MeterBank::afterBuffer(std::int32_t frames) noexcept {
    mLastFrames = frames;
    if (mIsBypassed) {
        for (const std::size_t tap : mReductionTaps) {
            mTaps[tap] = 0.0F;
        }
    }
    for (std::size_t i = 0; i < mTaps.size(); ++i) {
        Readings& readings = mReadings[i];
        readings.value.store(mTaps[i], std::memory_order_relaxed);
        if (mTaps[i] > readings.peak.load(std::memory_order_relaxed)) {
            readings.peak.store(mTaps[i], std::memory_order_relaxed);
        }
        if (mTaps[i] > 1.0F) {
            readings.clipped.store(true, std::memory_order_relaxed);
        }
    }
}

float MeterBank::peak(std::size_t tap) const noexcept {
    return mReadings[tap].peak.load(std::memory_order_relaxed);
}

bool MeterBank::clipped(std::size_t tap) const noexcept {
    return mReadings[tap].clipped.load(std::memory_order_relaxed);
}

void MeterBank::clearPeak(std::size_t tap) noexcept {
    mReadings[tap].peak.store(0.0F, std::memory_order_relaxed);
}

void MeterBank::clearClip(std::size_t tap) noexcept {
    mReadings[tap].clipped.store(false, std::memory_order_relaxed);
}

void MeterBank::reset() noexcept {
    std::fill(mTaps.begin(), mTaps.end(), 0.0F);
    mLastFrames = 0;
    for (std::size_t i = 0; i < mReadings.size(); ++i) {
        mReadings[i].value.store(0.0F, std::memory_order_relaxed);
        clearPeak(i);
        clearClip(i);
    }
}

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
    findLevels();
    if (state.setup.coefficientDelayFrames > 0) {
        mDelay.emplace(state.packets.imageBytes(), state.setup.coefficientDelayFrames);
    }
    bindPorts(mDelay ? mDelay->inForce() : state.packets.image());
}

void* AudioContext::pointerFor(const FieldDescription& field) {
    switch (field.kind) {
    case FieldKind::kAudioIn:
        return mInputs.data();
    case FieldKind::kAudioOut:
        return mOutputs.data();
    case FieldKind::kBufferLength:
        return &mFrames;
    case FieldKind::kSampleRate:
        return &mSampleRateHz;
    case FieldKind::kClock:
        return &mClock;
    case FieldKind::kSideChainIn:
        return &mSideChain;
    case FieldKind::kMeters:
        return mState.meters.taps();
    case FieldKind::kPrivateData:
        mPrivate.push_back({field.index, AlignedBlock(field.size)});
        return mPrivate.back().memory.bytes().data();
    case FieldKind::kTemporaryData:
        mTemporary.emplace_back(field.size);
        return mTemporary.back().bytes().data();
    case FieldKind::kDataInPort: // bound to the latest packets
    case FieldKind::kReserved:   // this host puts nothing there
        break;
    }
    return nullptr;
}

void AudioContext::bindPorts(const std::byte* image) noexcept {
    for (const Port& port : mState.packets.ports()) {
        // The routine reads its ports; the context block has no type of its own for that.
        mPointers[static_cast<std::size_t>(port.field)] = const_cast<std::byte*>(image + port.offset);
    }
}

void AudioContext::run(const float* const* inputs, float* const* outputs, std::int32_t offset,
                       std::int32_t frames) noexcept {
    takeUpPackets();
    void* const instances[] = {begin(inputs, outputs, offset, frames)};
    if (mDelay) {
        keepLevels();
        runParts(inputs, outputs, offset, frames);
        scaleLevels(frames);
    } else {
        mProcess(instances, instances + 1);
    }
    end();
}

void AudioContext::takeUpPackets() noexcept {
    if (!mState.packets.acquire()) {
        return;
    }
    if (mDelay) {
        mDelay->take({mState.packets.image(), mState.packets.imageBytes()},
                     mState.positionFrames.load(std::memory_order_relaxed));
    } else {
        bindPorts(mState.packets.image());
    }
}

void* AudioContext::begin(const float* const* inputs, float* const* outputs, std::int32_t offset,
                          std::int32_t frames) noexcept {
    point(inputs, outputs, offset);
    mFrames = frames;
    mClock = mState.positionFrames.load(std::memory_order_relaxed);
    mState.meters.beforeBuffer();
    return mPointers.data();
}

void AudioContext::point(const float* const* inputs, float* const* outputs, std::int32_t offset) noexcept {
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        mInputs[channel] = inputs[channel] + offset;
    }
    for (std::size_t channel = 0; channel < mOutputs.size(); ++channel) {
        mOutputs[channel] = outputs[channel] + offset;
    }
}

// A call of the routine for each run of frames with the same coefficients.
void AudioContext::runParts(const float* const* inputs, float* const* outputs, std::int32_t offset,
                            std::int32_t frames) noexcept {
    const std::int64_t position = mClock;
    void* const instances[] = {mPointers.data()};
    std::int32_t done = 0;
    do {
        mClock = position + done;
        mFrames = mDelay->begin(mClock, frames - done);
        point(inputs, outputs, offset + done);
        mProcess(instances, instances + 1);
        done += mFrames;
    } while (done < frames);
    mClock = position;
    mFrames = frames;
}

void AudioContext::findLevels() {
    const OversamplingRules& rules = mState.context->options.oversampling;
    const std::span<std::byte> state = privateData(rules.stateField);
    for (const AveragedLevel& level : rules.levels) {
        if (mState.setup.oversampling > 1 && level.tap < mState.meters.ids().size() &&
            level.stateOffset + sizeof(float) <= state.size()) {
            auto* const average = reinterpret_cast<float*>(state.data() + level.stateOffset);
            mLevels.push_back({mState.meters.taps() + level.tap, average, level.coefficient});
        }
    }
}

void AudioContext::keepLevels() noexcept {
    for (Level& level : mLevels) {
        level.tapBefore = *level.tap;
        level.averageBefore = *level.average;
    }
}

// From what the buffer has added to an average that runs too fast follows what it adds to one that does not.
void AudioContext::scaleLevels(std::int32_t frames) noexcept {
    if (frames == 0) {
        return;
    }
    for (Level& level : mLevels) {
        const double fast = std::pow(level.coefficient, frames);
        const double slow =
            std::pow(level.coefficient, static_cast<double>(frames) / mState.setup.oversampling);
        const double before = level.averageBefore;
        const double mean = (*level.average - before * fast) / (1.0 - fast);
        *level.average = static_cast<float>(before * slow + mean * (1.0 - slow));
        *level.tap = std::max(level.tapBefore, *level.average);
    }
}

void AudioContext::end() noexcept {
    mState.meters.afterBuffer(mFrames);
    mState.positionFrames.store(mClock + mFrames, std::memory_order_relaxed);
}

void AudioContext::restartCoefficients() noexcept {
    if (mDelay) {
        mDelay->restart();
    }
}

std::span<std::byte> AudioContext::privateData(AAX_CFieldIndex field) const {
    const auto found = std::find_if(mPrivate.begin(), mPrivate.end(),
                                    [&](const PrivateField& entry) { return entry.field == field; });
    return found == mPrivate.end() ? std::span<std::byte>() : found->memory.bytes();
}

} // namespace varno
