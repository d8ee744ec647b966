#include "CLAP/AudioSide.h"

#include <algorithm>
#include <limits>

namespace varno {

namespace {

constexpr std::uint32_t kNever = std::numeric_limits<std::uint32_t>::max();
bool hasChannels(const clap_audio_buffer_t* ports, std::uint32_t count, std::size_t channels) noexcept {
    return count > 0 && ports != nullptr && ports->data32 != nullptr && ports->channel_count >= channels &&
           std::all_of(ports->data32, ports->data32 + channels,
                       [](const float* samples) { return samples != nullptr; });
}

std::uint32_t sizeOf(const clap_input_events_t* events) noexcept {
    return events == nullptr ? 0 : events->size(events);
}

} // namespace

AudioSide::AudioSide(std::shared_ptr<Module> module, const RunSetup& setup, const Surroundings& surroundings)
    : mAround(surroundings),
      mQuality(setup.quality),
      mEffect(std::move(module), setup),
      mSender(surroundings.parameters.size()),
      mMeters(mEffect.meters()),
      mInputs(static_cast<std::size_t>(setup.channels)),
      mOutputs(mInputs.size()) {
    for (std::size_t index = 0; index < mAround.parameters.size(); ++index) {
        mAround.values.take(index, ValueExchange::kForAudio);
        apply(index);
    }
}

void AudioSide::reset() noexcept {
    mEffect.reset();
    mEffect.values().settle();
    mIsStarting = true;
}

// The routine has the quality of its making; a host that restarts the plug-in has it made anew.
void AudioSide::apply(std::size_t parameter) noexcept {
    const float value = mAround.values.value(parameter);
    if (parameter < mAround.parameters.effectParameters()) {
        mEffect.values().moveTo(parameter, value,
                                mIsStarting ? GlidingValues::Move::kAtOnce
                                            : GlidingValues::Move::kGlideFromHere);
    } else if (parameter == mAround.parameters.bypass()) {
        mEffect.bypass().set(isOn(value));
    } else if (qualityFactor(value) != quality()) {
        mAround.host.requestRestart();
    }
}

void AudioSide::takeChanges() noexcept {
    if (!mAround.values.takeAny(ValueExchange::kForAudio)) {
        return;
    }
    for (std::size_t index = 0; index < mAround.parameters.size(); ++index) {
        if (mAround.values.take(index, ValueExchange::kForAudio) != 0) {
            apply(index);
        }
    }
}

// All events up to that frame. Returns the next one.
std::uint32_t AudioSide::receive(const clap_input_events_t& events, std::uint32_t next,
                                 std::uint32_t frame) noexcept {
    for (const std::uint32_t size = events.size(&events); next < size; ++next) {
        const clap_event_header_t* const event = events.get(&events, next);
        if (event == nullptr) {
            continue;
        }
        if (event->time > frame) {
            break;
        }
        if (const auto parameter = receiveEvent(*event, mAround.parameters, mAround.values)) {
            apply(*parameter);
        }
    }
    return next;
}

bool AudioSide::point(const clap_process_t& process) noexcept {
    if (!hasChannels(process.audio_inputs, process.audio_inputs_count, mInputs.size()) ||
        !hasChannels(process.audio_outputs, process.audio_outputs_count, mOutputs.size())) {
        return false;
    }
    std::copy_n(process.audio_inputs->data32, mInputs.size(), mInputs.begin());
    std::copy_n(process.audio_outputs->data32, mOutputs.size(), mOutputs.begin());
    process.audio_outputs->constant_mask = 0;
    return true;
}

clap_process_status AudioSide::process(const clap_process_t& process) noexcept {
    const clap_input_events_t* const events = process.in_events;
    const std::uint32_t frames = process.frames_count;
    if (frames > 0 && !point(process)) {
        flush(events, process.out_events);
        return CLAP_PROCESS_ERROR;
    }
    mSender.send(mAround.parameters, mAround.values, process.out_events);
    takeChanges();
    std::uint32_t next = 0;
    for (std::uint32_t done = 0; done < frames;) {
        std::uint32_t end = frames;
        if (events != nullptr) {
            next = receive(*events, next, done);
            if (next < sizeOf(events)) {
                end = std::min(end, events->get(events, next)->time);
            }
        }
        const auto most = static_cast<std::int32_t>(std::min<std::uint32_t>(end - done, kBufferFrames));
        const std::int32_t length = mEffect.begin(most);
        processBuffer(length);
        done += static_cast<std::uint32_t>(length);
    }
    if (events != nullptr) {
        receive(*events, next, kNever);
    }
    return CLAP_PROCESS_CONTINUE;
}

void AudioSide::processBuffer(std::int32_t frames) noexcept {
    mEffect.process(mInputs.data(), mOutputs.data(), frames);
    mIsStarting = false;
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        mInputs[channel] += frames;
        mOutputs[channel] += frames;
    }
    for (std::size_t tap = 0; tap < mMeters.size(); ++tap) {
        mMeters[tap].store(mEffect.showMeter(tap, frames), std::memory_order_relaxed);
    }
}

void AudioSide::flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept {
    mSender.send(mAround.parameters, mAround.values, out);
    takeChanges();
    if (in != nullptr) {
        receive(*in, 0, kNever);
    }
}

} // namespace varno
