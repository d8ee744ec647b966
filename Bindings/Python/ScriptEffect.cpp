#include "Python/ScriptEffect.h"

#include "DemoGain_Oversampling.h"
#include "DemoGain_PresetText.h"
#include "Host/HostError.h"
#include "Host/InstanceGroup.h"
#include "Host/Module.h"
#include "Surround/Settings/EffectHost.h"
#include "Surround/Settings/QualityText.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <utility>

namespace varno {
namespace {

// The module, and the making and ending of its instances, belong to one thread at a time.
std::mutex gModuleMutex;

// Started with the first effect, shut down at the end of the process. Under the mutex.
std::shared_ptr<Module> linkedModule() {
    static const std::shared_ptr<Module> module = Module::linked(linkedEntryPoints(), effectHostOptions());
    return module;
}

// Frames between two questions whether to go on: some hundredths of a second of work.
constexpr std::int64_t kFramesAtATime = 262144;

InstanceSetup checkedSetup(double rateHz, std::int32_t channels) {
    if (channels != 1 && channels != 2) {
        throw std::invalid_argument("channels is " + std::to_string(channels) +
                                    "; expected 1 (mono) or 2 (stereo)");
    }
    if (const auto refusal = sampleRateRefusal(effectHostOptions().sampleRates, rateHz)) {
        throw std::invalid_argument(*refusal);
    }
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = rateHz;
    setup.offline = true;
    return setup;
}

std::int32_t checkedFactor(const std::string& quality, double rateHz) {
    const auto factor = qualityNamed(quality);
    if (!factor) {
        throw std::invalid_argument("quality is " + quoted(quality) +
                                    R"(; expected "1x", "2x", "4x" or "8x")");
    }
    if (const auto refusal = qualityRefusal(*factor, effectHostOptions().sampleRates, rateHz)) {
        throw std::invalid_argument(*refusal);
    }
    return *factor;
}

// What is left of sounds that are processed a part at a time.
class Parts {
public:
    explicit Parts(std::span<const Sound> sounds)
        : mSounds(sounds.begin(), sounds.end()) {}

    // The next part of each; false where nothing is left of any.
    bool next() {
        bool isAny = false;
        mBuffers.clear();
        for (Sound& sound : mSounds) {
            const std::int64_t frames = std::min(sound.frames, kFramesAtATime);
            isAny = isAny || frames > 0;
            mBuffers.push_back(
                {sound.inputs.data(), sound.outputs.data(), static_cast<std::int32_t>(frames)});
        }
        return isAny;
    }

    std::span<const MemberBuffer> buffers() const { return mBuffers; }

    void done() {
        for (std::size_t i = 0; i < mSounds.size(); ++i) {
            const std::int32_t frames = mBuffers[i].frames;
            for (const float*& input : mSounds[i].inputs) {
                input += frames;
            }
            for (float*& output : mSounds[i].outputs) {
                output += frames;
            }
            mSounds[i].frames -= frames;
        }
    }

private:
    std::vector<Sound> mSounds;
    std::vector<MemberBuffer> mBuffers;
};

} // namespace

EffectInUse::EffectInUse()
    : std::runtime_error(
          "the effect is in use by another call; expected an effect of its own for each thread") {
}

ScriptEffect::Use::Use(ScriptEffect& effect)
    : mEffect(&effect) {
    if (effect.mIsInUse.exchange(true, std::memory_order_acquire)) {
        throw EffectInUse();
    }
}

ScriptEffect::Use::Use(Use&& other) noexcept
    : mEffect(std::exchange(other.mEffect, nullptr)) {
}

ScriptEffect::Use::~Use() {
    if (mEffect != nullptr) {
        mEffect->mIsInUse.store(false, std::memory_order_release);
    }
}

ScriptEffect::ScriptEffect(double rateHz, std::int32_t channels, const std::string& quality) {
    const InstanceSetup setup = checkedSetup(rateHz, channels);
    const std::int32_t factor = checkedFactor(quality, rateHz);
    const std::lock_guard lock(gModuleMutex);
    mInstance = std::make_unique<Instance>(linkedModule(), setup);
    mOversampling = std::make_unique<Oversampling>(
        *mInstance, OversamplingSetup{.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = factor});
}

ScriptEffect::~ScriptEffect() {
    const std::lock_guard lock(gModuleMutex);
    mOversampling.reset();
    mInstance.reset();
}

double ScriptEffect::normalized(const SDemoGain_Parameter& row) const {
    return mInstance->normalized(row.mIdentifier);
}

double ScriptEffect::trueValue(const SDemoGain_Parameter& row) const {
    return DemoGain_ValueText::InUnit(row, normalized(row), unitSettings(*mInstance));
}

void ScriptEffect::set(std::vector<ParameterText> texts) {
    sortForSetting(texts);
    std::vector<std::pair<std::string, double>> before;
    for (const ParameterText& text : texts) {
        const WrittenValue value = writtenValue(*mInstance, text, unitSettings(*mInstance));
        if (!value.normalized) {
            for (auto old = before.rbegin(); old != before.rend(); ++old) {
                mInstance->setNormalized(old->first, old->second);
            }
            throw std::invalid_argument(value.refusal);
        }
        before.emplace_back(text.id, mInstance->normalized(text.id));
        mInstance->setNormalized(text.id, *value.normalized);
    }
}

std::string ScriptEffect::presetText() {
    return DemoGain_PresetText::Write(mInstance->dataModel());
}

void ScriptEffect::setPresetText(const std::string& text, const std::string& source) {
    const auto values = DemoGain_PresetText::Parse(text);
    if (!values) {
        throw std::invalid_argument(
            source + ": is no preset; expected a word, a version from 030001 on and " +
            std::to_string(std::size(DemoGain_PresetText::kItems)) + " values, each behind a label");
    }
    DemoGain_PresetText::Apply(*values, mInstance->dataModel());
    mInstance->idle();
}

std::vector<std::byte> ScriptEffect::state() {
    return mInstance->save().toBytes();
}

void ScriptEffect::setState(std::span<const std::byte> bytes) {
    try {
        mInstance->restore(StoredChunk::fromBytes(bytes));
    } catch (const HostError& error) {
        throw std::invalid_argument(std::string("state: ") + error.what());
    }
}

void ScriptEffect::reset() {
    mOversampling->reset();
}

void ScriptEffect::process(const Sound& sound, const std::function<void()>& goOn) {
    for (Parts parts({&sound, 1}); parts.next(); parts.done()) {
        const MemberBuffer& part = parts.buffers().front();
        goOn();
        mOversampling->process(part.inputs, part.outputs, part.frames);
    }
}

void ScriptEffect::processTogether(std::span<ScriptEffect* const> effects, std::span<const Sound> sounds,
                                   const std::function<void()>& goOn) {
    // Oversampled ones have filters around their instances, and are processed one after the other.
    for (const std::int32_t channels : {1, 2}) {
        std::vector<Instance*> members;
        std::vector<Sound> ofMembers;
        for (std::size_t i = 0; i < effects.size(); ++i) {
            if (effects[i]->channels() != channels) {
                continue;
            }
            if (effects[i]->factor() > 1) {
                effects[i]->process(sounds[i], goOn);
            } else {
                members.push_back(effects[i]->mInstance.get());
                ofMembers.push_back(sounds[i]);
            }
        }
        if (members.empty()) {
            continue;
        }
        InstanceGroup group(members);
        for (Parts parts(ofMembers); parts.next(); parts.done()) {
            goOn();
            group.process(parts.buffers());
        }
    }
}

} // namespace varno
