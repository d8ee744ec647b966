#include "Validate/Clap/ClapInstance.h"

#include "CLAP/Clap/Events.h"
#include "Validate/Clap/ClapAttempts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <utility>

namespace varno::validate {
namespace {

template<class Extension>
const Extension* extensionOf(const clap_plugin_t* plugin, const char* id) {
    return static_cast<const Extension*>(plugin->get_extension(plugin, id));
}

using ValueEvents = std::vector<clap_event_param_value_t>;

clap_input_events_t eventsOf(ValueEvents& events) {
    return {&events,
            [](const clap_input_events_t* list) {
                return static_cast<std::uint32_t>(static_cast<ValueEvents*>(list->ctx)->size());
            },
            [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
                const ValueEvents& all = *static_cast<ValueEvents*>(list->ctx);
                return index < all.size() ? &all[index].header : nullptr;
            }};
}

// One buffer for each port, over channels that follow each other.
std::vector<clap_audio_buffer_t> buffersOf(const ClapPorts& ports, float** channels) {
    std::vector<clap_audio_buffer_t> buffers;
    for (const std::uint32_t count : ports.channels) {
        buffers.push_back({.data32 = channels,
                           .data64 = nullptr,
                           .channel_count = count,
                           .latency = 0,
                           .constant_mask = 0});
        channels += count;
    }
    return buffers;
}

} // namespace

int ClapPorts::allChannels() const {
    return static_cast<int>(std::accumulate(channels.begin(), channels.end(), 0U));
}

ClapPorts readClapPorts(const clap_plugin_t* plugin, bool isInput) {
    ClapPorts ports;
    const auto* const extension = extensionOf<clap_plugin_audio_ports_t>(plugin, CLAP_EXT_AUDIO_PORTS);
    const std::uint32_t count = extension == nullptr ? 0 : extension->count(plugin, isInput);
    for (std::uint32_t index = 0; index < count; ++index) {
        clap_audio_port_info_t info{};
        if (!extension->get(plugin, index, isInput, &info)) {
            throw PluginError("audio port " + std::to_string(index) + " cannot be read");
        }
        ports.channels.push_back(info.channel_count);
        ports.runInPlace = ports.runInPlace && info.in_place_pair != CLAP_INVALID_ID;
    }
    return ports;
}

ClapInstance::ClapInstance(std::unique_ptr<ClapHost> host, OwnedClap plugin, double rateHz,
                           std::int32_t mostFrames)
    : mHost(std::move(host)),
      mPlugin(std::move(plugin)),
      mRateHz(rateHz),
      mMostFrames(static_cast<std::uint32_t>(std::max(mostFrames, 1))),
      mParams(extensionOf<clap_plugin_params_t>(mPlugin.get(), CLAP_EXT_PARAMS)),
      mState(extensionOf<clap_plugin_state_t>(mPlugin.get(), CLAP_EXT_STATE)),
      mLatency(extensionOf<clap_plugin_latency_t>(mPlugin.get(), CLAP_EXT_LATENCY)),
      mInputs(readClapPorts(mPlugin.get(), true)),
      mOutputs(readClapPorts(mPlugin.get(), false)) {
    readParameters();
}

void ClapInstance::prepare() {
    if (!mPlugin->activate(mPlugin.get(), mRateHz, 1, mMostFrames)) {
        throw PluginError("the plug-in cannot be activated");
    }
    mIsActive = true;
}

ClapInstance::~ClapInstance() {
    stopProcessing();
    if (mIsActive) {
        mPlugin->deactivate(mPlugin.get());
    }
    if (mEditor != nullptr) {
        mEditor->pluginEnds();
    }
}

void ClapInstance::readParameters() {
    const std::uint32_t count = mParams == nullptr ? 0 : mParams->count(mPlugin.get());
    for (std::uint32_t index = 0; index < count; ++index) {
        clap_param_info_t info{};
        if (!mParams->get_info(mPlugin.get(), index, &info)) {
            throw PluginError("parameter " + std::to_string(index) + " cannot be read");
        }
        const bool isStepped = (info.flags & CLAP_PARAM_IS_STEPPED) != 0;
        constexpr double kMostSteps = 100000.0;
        const double span = info.max_value - info.min_value;
        mInfos.push_back(info);
        mParameters.push_back(
            {.id = std::to_string(info.id),
             .name = info.name,
             .minimum = info.min_value,
             .maximum = info.max_value,
             .defaultValue = info.default_value,
             .steps = isStepped && span < kMostSteps ? static_cast<int>(std::lround(span)) + 1 : 0,
             .isBypass = (info.flags & CLAP_PARAM_IS_BYPASS) != 0,
             .isAutomatable = (info.flags & CLAP_PARAM_IS_AUTOMATABLE) != 0});
    }
}

Capabilities ClapInstance::capabilities() const {
    return {.hasValueTexts = mParams != nullptr,
            .readsTexts = mParams != nullptr,
            .hasState = mState != nullptr,
            .hasReset = true,
            .hasLatency = mLatency != nullptr,
            .editorObstacle = ClapEditor::obstacleOf(mPlugin.get()),
            .mayEndWithEditor = true,
            .runsInPlace = mInputs.runInPlace && mOutputs.runInPlace};
}

void ClapInstance::set(std::size_t index, double value) {
    const clap_param_info_t& info = mInfos.at(index);
    const std::lock_guard lock(mMutex);
    mWaiting.push_back(clapValueEvent(info.id, value, 0, info.cookie));
}

// Never beside process(), so that it may be on any thread.
void ClapInstance::flush(bool isAsked) {
    const std::lock_guard sound(mSound);
    ValueEvents events;
    {
        const std::lock_guard lock(mMutex);
        events = std::exchange(mWaiting, {});
    }
    if ((isAsked || !events.empty()) && mParams != nullptr) {
        const clap_input_events_t in = eventsOf(events);
        const clap_output_events_t out = outputEvents();
        mParams->flush(mPlugin.get(), &in, &out);
    }
}

clap_output_events_t ClapInstance::outputEvents() {
    return {this, [](const clap_output_events_t* list, const clap_event_header_t* header) {
                return static_cast<ClapInstance*>(list->ctx)->takeEvent(*header);
            }};
}

// What is not about an open window is forgotten.
bool ClapInstance::takeEvent(const clap_event_header_t& header) {
    using Kind = EditorEvent::Kind;
    const bool isValue = header.type == CLAP_EVENT_PARAM_VALUE;
    const bool isGesture =
        header.type == CLAP_EVENT_PARAM_GESTURE_BEGIN || header.type == CLAP_EVENT_PARAM_GESTURE_END;
    if (header.space_id != CLAP_CORE_EVENT_SPACE_ID || (!isValue && !isGesture)) {
        return true;
    }
    const auto& value = reinterpret_cast<const clap_event_param_value_t&>(header);
    const auto& gesture = reinterpret_cast<const clap_event_param_gesture_t&>(header);
    const clap_id id = isValue ? value.param_id : gesture.param_id;
    const auto found = std::ranges::find(mInfos, id, &clap_param_info_t::id);
    if (found == mInfos.end()) {
        mHost->complain("an event for parameter " + std::to_string(id) + ", which there is not");
        return true;
    }
    const std::lock_guard lock(mMutex);
    if (mEditor != nullptr) {
        mFromPlugin.push_back({.kind = isValue                                       ? Kind::kValue
                                       : header.type == CLAP_EVENT_PARAM_GESTURE_END ? Kind::kRelease
                                                                                     : Kind::kTouch,
                               .parameter = static_cast<std::size_t>(found - mInfos.begin()),
                               .value = isValue ? value.value : 0.0});
    }
    return true;
}

double ClapInstance::get(std::size_t index) {
    flush();
    double value = 0.0;
    if (!mParams->get_value(mPlugin.get(), mInfos.at(index).id, &value)) {
        throw PluginError("the value of " + mParameters.at(index).name + " cannot be read");
    }
    return value;
}

std::optional<std::string> ClapInstance::text(std::size_t index, double value) {
    std::array<char, CLAP_NAME_SIZE> text{};
    const bool isGiven = mParams->value_to_text(mPlugin.get(), mInfos.at(index).id, value, text.data(),
                                                static_cast<std::uint32_t>(text.size()));
    text.back() = '\0';
    return isGiven ? std::optional<std::string>(text.data()) : std::nullopt;
}

std::optional<double> ClapInstance::value(std::size_t index, const std::string& text) {
    double value = 0.0;
    const bool isGiven = mParams->text_to_value(mPlugin.get(), mInfos.at(index).id, text.c_str(), &value);
    return isGiven ? std::optional<double>(value) : std::nullopt;
}

void ClapInstance::startProcessing() {
    if (!mIsProcessing && !mPlugin->start_processing(mPlugin.get())) {
        throw PluginError("start_processing() failed");
    }
    mIsProcessing = true;
}

void ClapInstance::stopProcessing() {
    if (std::exchange(mIsProcessing, false)) {
        mPlugin->stop_processing(mPlugin.get());
    }
}

void ClapInstance::process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    if (frames < 1) {
        // The format has no empty buffers.
        flush();
        return;
    }
    const std::lock_guard sound(mSound);
    ValueEvents events;
    {
        const std::lock_guard lock(mMutex);
        events = std::exchange(mWaiting, {});
    }
    processWith(eventsOf(events), inputs, outputs, frames);
}

void ClapInstance::processWith(const clap_input_events_t& events, const float* const* inputs,
                               float* const* outputs, std::int32_t frames) {
    {
        const std::lock_guard lock(mMutex);
        startProcessing();
    }
    std::vector<clap_audio_buffer_t> in = buffersOf(mInputs, const_cast<float**>(inputs));
    std::vector<clap_audio_buffer_t> out = buffersOf(mOutputs, const_cast<float**>(outputs));
    const clap_output_events_t outEvents = outputEvents();
    const clap_process_t process{.steady_time = -1,
                                 .frames_count = static_cast<std::uint32_t>(frames),
                                 .transport = nullptr,
                                 .audio_inputs = in.data(),
                                 .audio_outputs = out.data(),
                                 .audio_inputs_count = static_cast<std::uint32_t>(in.size()),
                                 .audio_outputs_count = static_cast<std::uint32_t>(out.size()),
                                 .in_events = &events,
                                 .out_events = &outEvents};
    if (mPlugin->process(mPlugin.get(), &process) == CLAP_PROCESS_ERROR) {
        mHost->complain("process() failed");
    }
}

void ClapInstance::answerCallbacks() {
    if (mHost->takeCallback()) {
        mPlugin->on_main_thread(mPlugin.get());
    }
}

std::optional<std::vector<std::byte>> ClapInstance::saveState() {
    flush();
    std::vector<std::byte> kept;
    const clap_ostream_t stream{&kept, [](const clap_ostream_t* to, const void* buffer, std::uint64_t size) {
                                    const auto* const begin = static_cast<const std::byte*>(buffer);
                                    auto& all = *static_cast<std::vector<std::byte>*>(to->ctx);
                                    all.insert(all.end(), begin, begin + size);
                                    return static_cast<std::int64_t>(size);
                                }};
    return mState->save(mPlugin.get(), &stream) ? std::optional(kept) : std::nullopt;
}

bool ClapInstance::restoreState(std::span<const std::byte> state) {
    flush();
    const clap_istream_t stream{&state, [](const clap_istream_t* from, void* buffer, std::uint64_t size) {
                                    auto& rest = *static_cast<std::span<const std::byte>*>(from->ctx);
                                    const auto taken = rest.first(std::min<std::size_t>(size, rest.size()));
                                    std::ranges::copy(taken, static_cast<std::byte*>(buffer));
                                    rest = rest.subspan(taken.size());
                                    return static_cast<std::int64_t>(taken.size());
                                }};
    const bool isTaken = mState->load(mPlugin.get(), &stream);
    answerCallbacks();
    return isTaken;
}

void ClapInstance::reset() {
    flush();
    const std::lock_guard lock(mMutex);
    startProcessing();
    mPlugin->reset(mPlugin.get());
}

std::int32_t ClapInstance::latencyFrames() {
    answerCallbacks();
    return mLatency == nullptr ? 0 : static_cast<std::int32_t>(mLatency->get(mPlugin.get()));
}

void ClapInstance::processSilence(const clap_input_events_t& events) {
    constexpr std::int32_t kFrames = 1;
    const std::vector<float> silence(static_cast<std::size_t>(mInputs.allChannels()));
    std::vector<float> sound(static_cast<std::size_t>(mOutputs.allChannels()));
    std::vector<const float*> inputs;
    std::vector<float*> outputs;
    for (const float& sample : silence) {
        inputs.push_back(&sample);
    }
    for (float& sample : sound) {
        outputs.push_back(&sample);
    }
    processWith(events, inputs.data(), outputs.data(), kFrames);
}

bool ClapInstance::restart() {
    stopProcessing();
    mPlugin->deactivate(mPlugin.get());
    return mPlugin->activate(mPlugin.get(), mRateHz, 1, mMostFrames);
}

std::vector<Attempt> ClapInstance::attempts(AttemptKind kind) {
    flush();
    const ClapUse use{.plugin = mPlugin.get(),
                      .host = mHost.get(),
                      .params = mParams,
                      .state = mState,
                      .latency = mLatency,
                      .infos = mInfos,
                      .process = [this](const clap_input_events_t& events) { processSilence(events); },
                      .restart = [this] { return restart(); }};
    return kind == AttemptKind::kUnknownIdentifiers ? unknownIdentifiers(use)
           : kind == AttemptKind::kForeignStates    ? foreignStates(use)
                                                    : callsFromWithin(use);
}

std::unique_ptr<PluginEditor> ClapInstance::openEditor(const EditorSetup& setup) {
    auto editor =
        std::make_unique<ClapEditor>(*mHost, mPlugin.get(), setup,
                                     ClapEditor::Calls{.answer =
                                                           [this](bool inAnyCase) {
                                                               answerCallbacks();
                                                               if (mHost->takeFlush() || inAnyCase) {
                                                                   flush(true);
                                                               }
                                                           },
                                                       .takeEvents =
                                                           [this] {
                                                               const std::lock_guard lock(mMutex);
                                                               return std::exchange(mFromPlugin, {});
                                                           },
                                                       .onClosed =
                                                           [this] {
                                                               const std::lock_guard lock(mMutex);
                                                               mEditor = nullptr;
                                                           }});
    const std::lock_guard lock(mMutex);
    mEditor = editor.get();
    return editor;
}

} // namespace varno::validate
