#include "Benchmarks/Peers/LoadedEffect.h"

#include "Benchmarks/Peers/UridMap.h"

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/core/lv2.h>
#include <lv2/options/options.h>
#include <lv2/urid/urid.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <stdexcept>
#include <string>

namespace varno::bench {

template<auto kFree>
struct Freed {
    template<class T>
    void operator()(T* object) const {
        kFree(object);
    }
};
template<class T, auto kFree>
using Owned = std::unique_ptr<T, Freed<kFree>>;

// Bytes of an event port: what a host typically offers.
constexpr std::size_t kEventBytes = 8192;

// An event port's memory.
struct alignas(8) EventPortMemory {
    std::array<std::byte, kEventBytes> bytes{};

    LV2_Atom_Sequence& sequence() { return *reinterpret_cast<LV2_Atom_Sequence*>(bytes.data()); }
};

namespace {

using World = Owned<LilvWorld, lilv_world_free>;
using Node = Owned<LilvNode, lilv_node_free>;

// What is installed, read once.
LilvWorld* world() {
    static const World loaded = [] {
        World made(lilv_world_new());
        lilv_world_load_all(made.get());
        return made;
    }();
    return loaded.get();
}

Node uriNode(const char* uri) {
    return Node(lilv_new_uri(world(), uri));
}

const LilvPlugin* findEffect(const Peer& peer) {
    const Node uri = uriNode(peer.uri);
    const LilvPlugin* const found = lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world()), uri.get());
    if (found == nullptr) {
        throw std::runtime_error(std::string(peer.name) + " (" + peer.uri + ") is not installed");
    }
    return found;
}

} // namespace

struct LoadedEffect::Parts {
    Parts(const Peer& peer, double sampleRateHz, std::int32_t frames)
        : plugin(findEffect(peer)),
          bufferFrames(frames),
          options{{{LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__minBlockLength), sizeof(std::int32_t),
                    urids.map(LV2_ATOM__Int), &bufferFrames},
                   {LV2_OPTIONS_INSTANCE, 0, urids.map(LV2_BUF_SIZE__maxBlockLength), sizeof(std::int32_t),
                    urids.map(LV2_ATOM__Int), &bufferFrames},
                   {LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}}} {
        const LV2_Feature optionsFeature = {LV2_OPTIONS__options, options.data()};
        const LV2_Feature bounded = {LV2_BUF_SIZE__boundedBlockLength, nullptr};
        const LV2_Feature fixed = {LV2_BUF_SIZE__fixedBlockLength, nullptr};
        const LV2_Feature* const features[] = {
            urids.mapFeature(), urids.unmapFeature(), &optionsFeature, &bounded, &fixed, nullptr};
        instance.reset(lilv_plugin_instantiate(plugin, sampleRateHz, features));
        if (instance == nullptr) {
            throw std::runtime_error(std::string(peer.name) + " refused to start");
        }
        connect(peer);
        lilv_instance_activate(instance.get());
    }
    Parts(const Parts&) = delete;
    Parts& operator=(const Parts&) = delete;
    ~Parts() { lilv_instance_deactivate(instance.get()); }

    void connect(const Peer& peer) {
        const std::uint32_t ports = lilv_plugin_get_num_ports(plugin);
        controls.resize(ports);
        std::vector<float> defaults(ports);
        lilv_plugin_get_port_ranges_float(plugin, nullptr, nullptr, defaults.data());
        for (std::uint32_t index = 0; index < ports; ++index) {
            lilv_instance_connect_port(instance.get(), index, memoryFor(index, defaults[index]));
        }
        for (const PeerControl& control : peer.controls) {
            const Node symbol(lilv_new_string(world(), control.symbol));
            const LilvPort* const port = lilv_plugin_get_port_by_symbol(plugin, symbol.get());
            if (port == nullptr) {
                throw std::runtime_error(std::string(peer.name) + " has no port " + control.symbol);
            }
            controls[lilv_port_get_index(plugin, port)] = control.value;
        }
    }

    void* memoryFor(std::uint32_t index, float defaultValue) {
        const LilvPort* const port = lilv_plugin_get_port_by_index(plugin, index);
        const bool isInput = is(port, LV2_CORE__InputPort);
        if (is(port, LV2_CORE__AudioPort)) {
            auto& buffers = isInput ? inputs : outputs;
            buffers.push_back(std::make_unique<float[]>(static_cast<std::size_t>(bufferFrames)));
            return buffers.back().get();
        }
        if (is(port, LV2_ATOM__AtomPort)) {
            events.push_back(std::make_unique<EventPortMemory>());
            (isInput ? eventInputs : eventOutputs).push_back(events.back().get());
            return events.back().get();
        }
        controls[index] = std::isnan(defaultValue) ? 0.0F : defaultValue;
        return &controls[index];
    }

    bool is(const LilvPort* port, const char* type) const {
        return lilv_port_is_a(plugin, port, uriNode(type).get());
    }

    // Nothing comes in, and there is room for what goes out.
    void emptyEvents() {
        for (EventPortMemory* const input : eventInputs) {
            input->sequence() = {{sizeof(LV2_Atom_Sequence_Body), sequenceType}, {0, 0}};
        }
        for (EventPortMemory* const output : eventOutputs) {
            output->sequence() = {{kEventBytes - sizeof(LV2_Atom), chunkType}, {0, 0}};
        }
    }

    const LilvPlugin* plugin;
    std::int32_t bufferFrames;
    UridMap urids;
    LV2_URID sequenceType = urids.map(LV2_ATOM__Sequence);
    LV2_URID chunkType = urids.map(LV2_ATOM__Chunk);
    std::array<LV2_Options_Option, 3> options;
    std::vector<float> controls; // By port.
    std::vector<std::unique_ptr<float[]>> inputs;
    std::vector<std::unique_ptr<float[]>> outputs;
    std::vector<std::unique_ptr<EventPortMemory>> events;
    std::vector<EventPortMemory*> eventInputs;
    std::vector<EventPortMemory*> eventOutputs;
    Owned<LilvInstance, lilv_instance_free> instance;
};

LoadedEffect::LoadedEffect(const Peer& peer, double sampleRateHz, std::int32_t bufferFrames)
    : mParts(std::make_unique<Parts>(peer, sampleRateHz, bufferFrames)) {
}

LoadedEffect::~LoadedEffect() = default;

std::size_t LoadedEffect::channels() const {
    return std::min({mParts->inputs.size(), mParts->outputs.size(), std::size_t{2}});
}

void LoadedEffect::run(const float* const* inputs) {
    for (std::size_t channel = 0; channel < channels(); ++channel) {
        std::copy_n(inputs[channel], mParts->bufferFrames, mParts->inputs[channel].get());
    }
    mParts->emptyEvents();
    lilv_instance_run(mParts->instance.get(), static_cast<std::uint32_t>(mParts->bufferFrames));
}

const float* LoadedEffect::output(std::size_t channel) const {
    return mParts->outputs[channel].get();
}

} // namespace varno::bench
