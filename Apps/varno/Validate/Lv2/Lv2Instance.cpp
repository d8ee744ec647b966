#include "Validate/Lv2/Lv2Instance.h"

#include "Validate/Lv2/Lv2Attempts.h"
#include "Validate/Lv2/StateStore.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <lv2/atom/atom.h>
#include <utility>

namespace varno::validate {
Lv2Instance::Lv2Instance(const Source& source, PortList ports, double rateHz, std::int32_t mostFrames)
    : mSource(source),
      mNumbers(source.numbers),
      mPorts(std::move(ports)),
      mPlugin(source.plugin),
      mRateHz(rateHz),
      mMostFrames(mostFrames),
      mHost(mNumbers, rateHz, mostFrames),
      mValues(mPorts.ports.size()),
      mModulation(mPorts.ports.size()),
      mEvents(mPorts.ports.size()),
      mInstance(lilv_plugin_instantiate(source.plugin, rateHz, mHost.features())) {
    if (mInstance == nullptr) {
        throw PluginError("the plug-in makes no instance");
    }
    const auto extension = [&](const char* uri) { return lilv_instance_get_extension_data(mInstance, uri); };
    mWorker = static_cast<const LV2_Worker_Interface*>(extension(LV2_WORKER__interface));
    mState = static_cast<const LV2_State_Interface*>(extension(LV2_STATE__interface));
    connectPorts(mostFrames);
    mHost.work().doRequests(lilv_instance_get_handle(mInstance), mWorker);
    mShown = mValues;
}

void Lv2Instance::prepare() {
    lilv_instance_activate(mInstance);
    mIsActive = true;
}

Lv2Instance::~Lv2Instance() {
    if (mEditor != nullptr) {
        mEditor->instanceEnds();
    }
    if (mIsActive) {
        lilv_instance_deactivate(mInstance);
    }
    lilv_instance_free(mInstance);
}

void Lv2Instance::connectPorts(std::int32_t mostFrames) {
    for (const Port& port : mPorts.ports) {
        void* data = nullptr;
        if (port.kind == PortKind::kControl) {
            mValues[port.index] = port.defaultValue;
            data = &mValues[port.index];
        } else if (port.kind == PortKind::kModulation) {
            mModulation[port.index].resize(static_cast<std::size_t>(std::max(mostFrames, 1)));
            data = mModulation[port.index].data();
        } else if (port.kind == PortKind::kEvents) {
            mEvents[port.index].resize(kEventBytes / sizeof(std::uint64_t));
            data = mEvents[port.index].data();
        }
        if (port.kind != PortKind::kAudio) {
            lilv_instance_connect_port(mInstance, port.index, data);
        }
    }
}

// An output states its room; an input is a sequence of no events, or of those that are to come in.
void Lv2Instance::clearEvents() {
    for (const Port& port : mPorts.ports) {
        if (port.kind == PortKind::kEvents) {
            const LV2_Atom room{kEventBytes - sizeof(LV2_Atom), mNumbers.numberOf(LV2_ATOM__Chunk)};
            const LV2_Atom_Sequence none{
                {sizeof(LV2_Atom_Sequence_Body), mNumbers.numberOf(LV2_ATOM__Sequence)}, {0, 0}};
            if (port.isInput && !mIncoming.empty()) {
                std::memcpy(mEvents[port.index].data(), mIncoming.data(), mIncoming.size());
            } else if (port.isInput) {
                std::memcpy(mEvents[port.index].data(), &none, sizeof none);
            } else {
                std::memcpy(mEvents[port.index].data(), &room, sizeof room);
            }
        }
    }
}

Capabilities Lv2Instance::capabilities() const {
    return {.hasState = true,
            .hasReset = lilv_instance_get_descriptor(mInstance)->activate != nullptr,
            .hasLatency = std::ranges::any_of(mPorts.ports, &Port::isLatency),
            .editorObstacle = mSource.window.obstacle,
            .mayEndWithEditor = !mSource.window.usesInstance,
            .runsInPlace = mSource.runsInPlace};
}

void Lv2Instance::set(std::size_t index, double value) {
    const std::lock_guard lock(mMutex);
    const std::uint32_t port = mPorts.parameterPorts.at(index);
    mValues[port] = static_cast<float>(value);
    mShown[port] = mValues[port];
}

// What the window has written is in force from the next buffer on; without one, when it is asked for.
void Lv2Instance::takeWritten() {
    const std::lock_guard lock(mMutex);
    for (const auto& [port, value] : std::exchange(mWritten, {})) {
        mValues[port] = value;
        mShown[port] = value;
    }
}

void Lv2Instance::write(std::uint32_t port, float value) {
    const std::lock_guard lock(mMutex);
    mWritten.emplace_back(port, value);
}

std::vector<float> Lv2Instance::shownValues() {
    const std::lock_guard lock(mMutex);
    return mShown;
}

double Lv2Instance::get(std::size_t index) {
    const std::lock_guard lock(mMutex);
    return static_cast<double>(mValues[mPorts.parameterPorts.at(index)]);
}

std::optional<std::string> Lv2Instance::text(std::size_t /*index*/, double /*value*/) {
    return std::nullopt;
}

std::optional<double> Lv2Instance::value(std::size_t /*index*/, const std::string& /*text*/) {
    return std::nullopt;
}

void Lv2Instance::process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    clearEvents();
    takeWritten();
    std::size_t input = 0;
    std::size_t output = 0;
    for (const Port& port : mPorts.ports) {
        if (port.kind == PortKind::kAudio) {
            // The ports of a plug-in are all connected in the same way; it must not write to an input.
            void* const data = port.isInput ? const_cast<float*>(inputs[input]) : outputs[output];
            ++(port.isInput ? input : output);
            lilv_instance_connect_port(mInstance, port.index, data);
        }
    }
    lilv_instance_run(mInstance, static_cast<std::uint32_t>(std::max(frames, 0)));
    LV2_Handle handle = lilv_instance_get_handle(mInstance);
    mHost.work().doRequests(handle, mWorker);
    mHost.work().endRun(handle, mWorker);
    const std::lock_guard lock(mMutex);
    mShown = mValues;
}

std::optional<std::vector<std::byte>> Lv2Instance::saveState() {
    Lv2State state;
    for (std::size_t index = 0; index < mPorts.parameters.size(); ++index) {
        state.values[mPorts.parameters[index].id] = mValues[mPorts.parameterPorts[index]];
    }
    StateStore store(mNumbers, state);
    if (mState != nullptr &&
        store.save(lilv_instance_get_handle(mInstance), *mState, mHost.features()) != LV2_STATE_SUCCESS) {
        return std::nullopt;
    }
    return bytesOf(state);
}

bool Lv2Instance::restoreState(std::span<const std::byte> bytes) {
    std::optional<Lv2State> state = stateOf(bytes);
    if (!state ||
        std::ranges::any_of(state->values, [](const auto& entry) { return !std::isfinite(entry.second); })) {
        return false;
    }
    if (mState != nullptr) {
        LV2_Handle handle = lilv_instance_get_handle(mInstance);
        StateStore store(mNumbers, *state);
        if (store.restore(handle, *mState, mHost.features()) != LV2_STATE_SUCCESS) {
            return false;
        }
        mHost.work().doRequests(handle, mWorker);
    }
    for (std::size_t index = 0; index < mPorts.parameters.size(); ++index) {
        const Parameter& parameter = mPorts.parameters[index];
        if (const auto found = state->values.find(parameter.id); found != state->values.end()) {
            set(index, std::clamp(static_cast<double>(found->second), parameter.minimum, parameter.maximum));
        }
    }
    return true;
}

void Lv2Instance::reset() {
    lilv_instance_deactivate(mInstance);
    lilv_instance_activate(mInstance);
}

std::int32_t Lv2Instance::latencyFrames() {
    const auto port = std::ranges::find_if(mPorts.ports, &Port::isLatency);
    return port == mPorts.ports.end() ? 0 : static_cast<std::int32_t>(std::lround(mValues[port->index]));
}

void Lv2Instance::runSilence(std::span<const std::byte> sequence) {
    constexpr std::int32_t kFrames = 64;
    std::vector<std::vector<float>> channels(mPorts.ports.size(), std::vector<float>(kFrames));
    std::vector<const float*> inputs;
    std::vector<float*> outputs;
    for (const Port& port : mPorts.ports) {
        if (port.kind == PortKind::kAudio && port.isInput) {
            inputs.push_back(channels[port.index].data());
        } else if (port.kind == PortKind::kAudio) {
            outputs.push_back(channels[port.index].data());
        }
    }
    mIncoming.assign(sequence.begin(), sequence.end());
    process(inputs.data(), outputs.data(), std::min(kFrames, mMostFrames));
    mIncoming.clear();
}

std::vector<Attempt> Lv2Instance::attempts(AttemptKind kind) {
    const Lv2Use use{.plugin = mPlugin,
                     .instance = mInstance,
                     .numbers = &mNumbers,
                     .host = &mHost,
                     .worker = mWorker,
                     .state = mState,
                     .rateHz = mRateHz,
                     .mostFrames = mMostFrames,
                     .takesEvents = mPorts.count(PortKind::kEvents, true) > 0,
                     .run = [this](std::span<const std::byte> sequence) { runSilence(sequence); },
                     .setAll =
                         [this](bool isMost) {
                             for (std::size_t index = 0; index < mPorts.parameters.size(); ++index) {
                                 const Parameter& parameter = mPorts.parameters[index];
                                 set(index, isMost ? parameter.maximum : parameter.defaultValue);
                             }
                         }};
    return kind == AttemptKind::kUnknownIdentifiers ? unknownIdentifiers(use)
           : kind == AttemptKind::kForeignStates    ? foreignStates(use)
                                                    : callsFromWithin(use);
}

std::unique_ptr<PluginEditor> Lv2Instance::openEditor(const EditorSetup& setup) {
    auto editor = std::make_unique<Lv2Editor>(
        mSource.window,
        Lv2Editor::Host{.numbers = mNumbers,
                        .complaints = mSource.complaints,
                        .plugin = lilv_node_as_uri(lilv_plugin_get_uri(mSource.plugin)),
                        .instance = lilv_instance_get_handle(mInstance),
                        .rateHz = static_cast<float>(mRateHz)},
        *this, setup);
    mEditor = editor.get();
    return editor;
}

} // namespace varno::validate
