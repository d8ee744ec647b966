#include "Tests/Apps/varno/Session/FakeJack.h"

#include <cstdlib>
#include <stdexcept>

namespace varno::test {
namespace {

FakeJack* server = nullptr;

FakeJack::Port& as(jack_port_t* port) {
    return *reinterpret_cast<FakeJack::Port*>(port);
}

const FakeJack::Port& as(const jack_port_t* port) {
    return *reinterpret_cast<const FakeJack::Port*>(port);
}

jack_client_t* openClient(const char* name, jack_options_t options, jack_status_t* status, ...) {
    server->clientName = name;
    server->options = options;
    *status = server->refusal;
    return server->refusal == 0 ? reinterpret_cast<jack_client_t*>(server) : nullptr;
}

jack_port_t* registerPort(jack_client_t*, const char* name, const char*, unsigned long flags, unsigned long) {
    if (server->refusesPorts) {
        return nullptr;
    }
    server->ports.push_back(std::make_unique<FakeJack::Port>());
    server->ports.back()->name = server->clientName + ':' + name;
    server->ports.back()->flags = flags;
    return reinterpret_cast<jack_port_t*>(server->ports.back().get());
}

void* buffer(jack_port_t* port, jack_nframes_t frames) {
    as(port).samples.resize(frames);
    return as(port).samples.data();
}

const char** physicalPorts(jack_client_t*, const char*, const char*, unsigned long flags) {
    if ((flags & JackPortIsPhysical) == 0) {
        return nullptr;
    }
    const auto& names = (flags & JackPortIsOutput) != 0 ? server->captures : server->playbacks;
    if (names.empty()) {
        return nullptr;
    }
    auto** list = static_cast<const char**>(std::calloc(names.size() + 1, sizeof(const char*)));
    std::copy(names.begin(), names.end(), list);
    return list;
}

jack_latency_range_t& range(FakeJack::Port& port, jack_latency_callback_mode_t mode) {
    return mode == JackCaptureLatency ? port.capture : port.playback;
}

// Keeps a callback that the client registers.
template<auto Member, class Callback>
int keep(jack_client_t*, Callback callback, void* self) {
    server->*Member = callback;
    server->self = self;
    return 0;
}

} // namespace

FakeJack::FakeJack() {
    server = this;
}

FakeJack::~FakeJack() {
    server = nullptr;
}

FakeJack::Port& FakeJack::port(const std::string& name) {
    for (const auto& candidate : ports) {
        if (candidate->name == name) {
            return *candidate;
        }
    }
    throw std::logic_error("no port " + name);
}

JackFunctions FakeJack::functions() {
    JackFunctions jack{};
    jack.set_error_function = [](void (*)(const char*)) {};
    jack.set_info_function = [](void (*)(const char*)) {};
    jack.client_open = openClient;
    jack.client_close = [](jack_client_t*) {
        server->isClosed = true;
        return 0;
    };
    jack.get_client_name = [](jack_client_t*) { return server->clientName.data(); };
    jack.get_sample_rate = [](jack_client_t*) { return server->rateHz; };
    jack.get_buffer_size = [](jack_client_t*) { return server->periodFrames; };
    jack.set_process_callback = keep<&FakeJack::process>;
    jack.set_xrun_callback = keep<&FakeJack::xrun>;
    jack.set_buffer_size_callback = keep<&FakeJack::bufferSize>;
    jack.set_sample_rate_callback = keep<&FakeJack::sampleRate>;
    jack.set_freewheel_callback = keep<&FakeJack::freewheel>;
    jack.last_frame_time = [](const jack_client_t*) { return server->frame; };
    jack.frames_since_cycle_start = [](const jack_client_t*) { return server->framesSince; };
    jack.set_latency_callback = keep<&FakeJack::latency>;
    jack.on_info_shutdown = [](jack_client_t* client, JackInfoShutdownCallback callback, void* effect) {
        keep<&FakeJack::shutdown>(client, callback, effect);
    };
    jack.port_register = registerPort;
    jack.port_get_buffer = buffer;
    jack.port_name = [](const jack_port_t* port) { return as(port).name.c_str(); };
    jack.recompute_total_latencies = [](jack_client_t*) {
        server->latency(JackCaptureLatency, server->self);
        server->latency(JackPlaybackLatency, server->self);
        return 0;
    };
    jack.port_get_latency_range = [](jack_port_t* port, jack_latency_callback_mode_t mode,
                                     jack_latency_range_t* out) { *out = range(as(port), mode); };
    jack.port_set_latency_range = [](jack_port_t* port, jack_latency_callback_mode_t mode,
                                     jack_latency_range_t* in) { range(as(port), mode) = *in; };
    jack.activate = [](jack_client_t*) {
        server->isActive = !server->refusesToStart;
        return server->refusesToStart ? 1 : 0;
    };
    jack.get_ports = physicalPorts;
    jack.connect = [](jack_client_t*, const char* from, const char* to) {
        server->connections.emplace_back(from, to);
        return 0;
    };
    jack.free = std::free;
    return jack;
}

} // namespace varno::test
