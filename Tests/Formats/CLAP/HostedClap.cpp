#include "Tests/Formats/CLAP/HostedClap.h"

#include "CLAP/Clap/Events.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace varno::test {

const clap_plugin_factory_t& factoryOf(const clap_plugin_entry_t& entry) {
    const auto* const factory =
        static_cast<const clap_plugin_factory_t*>(entry.get_factory(CLAP_PLUGIN_FACTORY_ID));
    if (factory == nullptr) {
        throw std::runtime_error("the binary has no factory");
    }
    return *factory;
}

const void* requireExtension(const clap_plugin_t* plugin, const char* id) {
    const void* const functions = plugin->get_extension(plugin, id);
    if (functions == nullptr) {
        throw std::runtime_error(std::string("the plug-in lacks ") + id);
    }
    return functions;
}

HostedClap::HostedClap(const clap_plugin_entry_t& entry, ClapHost& host, std::size_t channels)
    : mChannels(channels) {
    const clap_plugin_factory_t& factory = factoryOf(entry);
    const clap_plugin_descriptor_t* const descriptor =
        factory.get_plugin_descriptor(&factory, channels == 1 ? 0 : 1);
    mPlugin = factory.create_plugin(&factory, &host.table(), descriptor->id);
    if (mPlugin == nullptr || !mPlugin->init(mPlugin)) {
        throw std::runtime_error("the plug-in was not made");
    }
    mParams = &extension<clap_plugin_params_t>(CLAP_EXT_PARAMS);
    for (std::uint32_t index = 0; index < mParams->count(mPlugin); ++index) {
        clap_param_info_t info{};
        mParams->get_info(mPlugin, index, &info);
        mIds[info.name] = info.id;
    }
}

HostedClap::~HostedClap() {
    deactivate();
    mPlugin->destroy(mPlugin);
}

bool HostedClap::activate(double sampleRateHz) {
    deactivate();
    mIsActive = mPlugin->activate(mPlugin, sampleRateHz, 1, 8192);
    return mIsActive && mPlugin->start_processing(mPlugin);
}

void HostedClap::deactivate() {
    if (mIsActive) {
        mPlugin->stop_processing(mPlugin);
        mPlugin->deactivate(mPlugin);
        mIsActive = false;
    }
}

void HostedClap::add(const std::vector<ClapEvent>& events) {
    for (const ClapEvent& event : events) {
        mEvents.push_back(clapValueEvent(event.id, event.value, event.frame));
        mEvents.back().header.type = event.type;
    }
}

clap_input_events_t HostedClap::inputEvents() {
    return {this,
            [](const clap_input_events_t* list) {
                return static_cast<std::uint32_t>(static_cast<HostedClap*>(list->ctx)->mPresent.size());
            },
            [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
                return &static_cast<HostedClap*>(list->ctx)->mPresent.at(index).header;
            }};
}

clap_output_events_t HostedClap::outputEvents() {
    return {this, [](const clap_output_events_t* list, const clap_event_header_t* event) {
                HostedClap& self = *static_cast<HostedClap*>(list->ctx);
                if (self.mRoom == 0) {
                    return false;
                }
                --self.mRoom;
                if (event->type == CLAP_EVENT_PARAM_VALUE) {
                    const auto& value = *reinterpret_cast<const clap_event_param_value_t*>(event);
                    std::string number = std::to_string(value.value);
                    number.erase(number.find_last_not_of('0') + 1);
                    self.mSent.push_back(std::to_string(value.param_id) + '=' + number);
                } else {
                    const auto& gesture = *reinterpret_cast<const clap_event_param_gesture_t*>(event);
                    self.mSent.push_back((event->type == CLAP_EVENT_PARAM_GESTURE_BEGIN ? "begin " : "end ") +
                                         std::to_string(gesture.param_id));
                }
                return true;
            }};
}

clap_process_status HostedClap::process(const float* const* inputs, float* const* outputs,
                                        std::int32_t frames) {
    const auto length = static_cast<std::uint32_t>(std::max(frames, 0));
    mPresent.clear();
    std::vector<clap_event_param_value_t> later;
    for (clap_event_param_value_t event : mEvents) {
        if (event.header.time < length || length == 0) {
            mPresent.push_back(event);
        } else {
            event.header.time -= length;
            later.push_back(event);
        }
    }
    mEvents = later;
    clap_audio_buffer_t input{.data32 = const_cast<float**>(inputs),
                              .data64 = nullptr,
                              .channel_count = static_cast<std::uint32_t>(mChannels),
                              .latency = 0,
                              .constant_mask = 0};
    clap_audio_buffer_t output = input;
    output.data32 = const_cast<float**>(outputs);
    const clap_input_events_t in = inputEvents();
    const clap_output_events_t out = outputEvents();
    const clap_process_t process{.steady_time = -1,
                                 .frames_count = length,
                                 .transport = nullptr,
                                 .audio_inputs = &input,
                                 .audio_outputs = &output,
                                 .audio_inputs_count = 1,
                                 .audio_outputs_count = 1,
                                 .in_events = &in,
                                 .out_events = &out};
    return mPlugin->process(mPlugin, &process);
}

BufferProcessor HostedClap::processor() {
    return [this](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        if (frames > 0) {
            process(inputs, outputs, frames);
        }
    };
}

void HostedClap::flush() {
    mPresent = mEvents;
    mEvents.clear();
    const clap_input_events_t in = inputEvents();
    const clap_output_events_t out = outputEvents();
    mParams->flush(mPlugin, &in, &out);
}

SentEvents HostedClap::takeSent() {
    return std::exchange(mSent, {});
}

clap_id HostedClap::idOf(const std::string& name) const {
    return mIds.at(name);
}

double HostedClap::value(clap_id id) const {
    double value = -1.0;
    return mParams->get_value(mPlugin, id, &value) ? value : -1.0;
}

std::string HostedClap::text(clap_id id, double value) const {
    char text[64] = "";
    return mParams->value_to_text(mPlugin, id, value, text, sizeof text) ? text : "";
}

std::optional<double> HostedClap::fromText(clap_id id, const std::string& text) const {
    double value = 0.0;
    return mParams->text_to_value(mPlugin, id, text.c_str(), &value) ? std::optional(value) : std::nullopt;
}

std::uint32_t HostedClap::latency() const {
    return extension<clap_plugin_latency_t>(CLAP_EXT_LATENCY).get(mPlugin);
}

namespace {

// A stream over a text.
struct Stream {
    std::string bytes;
    std::size_t most;
};

} // namespace

std::string HostedClap::save(std::uint32_t context, std::size_t most) const {
    Stream kept{{}, most};
    const clap_ostream_t stream{&kept, [](const clap_ostream_t* to, const void* buffer, std::uint64_t size) {
                                    Stream& into = *static_cast<Stream*>(to->ctx);
                                    const std::size_t taken = std::min<std::size_t>(size, into.most);
                                    into.bytes.append(static_cast<const char*>(buffer), taken);
                                    return static_cast<std::int64_t>(taken);
                                }};
    const bool isSaved =
        context == 0
            ? extension<clap_plugin_state_t>(CLAP_EXT_STATE).save(mPlugin, &stream)
            : extension<clap_plugin_state_context_t>(CLAP_EXT_STATE_CONTEXT).save(mPlugin, &stream, context);
    return isSaved ? kept.bytes : "";
}

bool HostedClap::load(const std::string& bytes, std::uint32_t context, std::size_t most) const {
    Stream given{bytes, most};
    const clap_istream_t stream{&given, [](const clap_istream_t* from, void* buffer, std::uint64_t size) {
                                    Stream& rest = *static_cast<Stream*>(from->ctx);
                                    const std::size_t taken = rest.bytes.copy(
                                        static_cast<char*>(buffer), std::min<std::size_t>(size, rest.most));
                                    rest.bytes.erase(0, taken);
                                    return static_cast<std::int64_t>(taken);
                                }};
    return context == 0 ? extension<clap_plugin_state_t>(CLAP_EXT_STATE).load(mPlugin, &stream)
                        : extension<clap_plugin_state_context_t>(CLAP_EXT_STATE_CONTEXT)
                              .load(mPlugin, &stream, context);
}

} // namespace varno::test
