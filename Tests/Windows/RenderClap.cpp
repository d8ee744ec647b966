// Renders every case with the CLAP plug-ins of a binary, which is loaded as by a host, and writes what they
// gave to a file: descriptions, sound, texts of the values, states, and states after presets were loaded.
// Usage: RenderClap BINARY OUTPUT PRESETS
#include "CLAP/Clap/Events.h"
#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Gui.h"
#include "CLAP/Clap/Plugin.h"
#include "CLAP/Clap/Presets.h"
#include "Host/BinaryFile.h"
#include "Tests/Windows/BitsFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>

namespace varno::test {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kSettings = 4;

void require(bool isTrue, const std::string& what) {
    if (!isTrue) {
        throw std::runtime_error(what);
    }
}

// A host that offers nothing.
constexpr clap_host_t kHost = {
    .clap_version = CLAP_VERSION,
    .host_data = nullptr,
    .name = "RenderClap",
    .vendor = "",
    .url = "",
    .version = "1",
    .get_extension = [](const clap_host_t*, const char*) -> const void* { return nullptr; },
    .request_restart = [](const clap_host_t*) {},
    .request_process = [](const clap_host_t*) {},
    .request_callback = [](const clap_host_t*) {}};

using Events = std::vector<clap_event_param_value_t>;

clap_input_events_t listOf(Events& events) {
    return {&events,
            [](const clap_input_events_t* list) {
                return static_cast<std::uint32_t>(static_cast<Events*>(list->ctx)->size());
            },
            [](const clap_input_events_t* list, std::uint32_t index) -> const clap_event_header_t* {
                return &(*static_cast<Events*>(list->ctx))[index].header;
            }};
}

constexpr clap_output_events_t kNoOutput = {
    nullptr, [](const clap_output_events_t*, const clap_event_header_t*) { return true; }};

// One plug-in, made and initialised.
class Plugin {
public:
    Plugin(const clap_plugin_factory_t& factory, const char* id)
        : mPlugin(factory.create_plugin(&factory, &kHost, id)) {
        require(mPlugin != nullptr && mPlugin->init(mPlugin), std::string("cannot make ") + id);
        mParams = static_cast<const clap_plugin_params_t*>(extension(CLAP_EXT_PARAMS));
        require(mParams != nullptr, "no parameters");
        for (std::uint32_t index = 0; index < mParams->count(mPlugin); ++index) {
            clap_param_info_t info{};
            require(mParams->get_info(mPlugin, index, &info), "a parameter has no description");
            mParameters.push_back(info);
        }
    }
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin() { mPlugin->destroy(mPlugin); }

    const void* extension(const char* id) const { return mPlugin->get_extension(mPlugin, id); }

    // Every parameter but bypass and quality, at frames below `frames`.
    Events randomValues(SameNumbers& numbers, std::uint32_t frames) const {
        Events events;
        for (const clap_param_info_t& info : mParameters) {
            const double share = double{numbers.unit()};
            const std::uint32_t frame = numbers.below(frames);
            if ((info.flags & CLAP_PARAM_IS_AUTOMATABLE) != 0 && (info.flags & CLAP_PARAM_IS_BYPASS) == 0) {
                const double value = info.min_value + share * (info.max_value - info.min_value);
                const bool isStepped = (info.flags & CLAP_PARAM_IS_STEPPED) != 0;
                events.push_back(clapValueEvent(info.id, isStepped ? std::floor(value + 0.5) : value, frame));
            }
        }
        std::sort(events.begin(), events.end(),
                  [](const auto& left, const auto& right) { return left.header.time < right.header.time; });
        return events;
    }

    // The quality is the one parameter that is not automatable.
    void setQuality(std::int32_t factor) {
        const auto quality = std::find_if(mParameters.begin(), mParameters.end(), [](const auto& info) {
            return (info.flags & CLAP_PARAM_IS_AUTOMATABLE) == 0;
        });
        require(quality != mParameters.end(), "no quality");
        const auto* const place = std::find(kBitsFactors.begin(), kBitsFactors.end(), factor);
        Events events{clapValueEvent(quality->id, static_cast<double>(place - kBitsFactors.begin()), 0)};
        flush(events);
    }

    void flush(Events& events) {
        const clap_input_events_t in = listOf(events);
        mParams->flush(mPlugin, &in, &kNoOutput);
    }

    void activate(double sampleRateHz) {
        require(mPlugin->activate(mPlugin, sampleRateHz, 1, kBitsMostFrames), "cannot be activated");
        require(mPlugin->start_processing(mPlugin), "cannot process");
    }

    void deactivate() {
        mPlugin->stop_processing(mPlugin);
        mPlugin->deactivate(mPlugin);
    }

    // In place.
    void process(std::vector<float*>& channels, std::int32_t frames, Events& events) {
        clap_audio_buffer_t port{channels.data(), nullptr, static_cast<std::uint32_t>(channels.size()), 0, 0};
        const clap_audio_buffer_t input = port;
        const clap_input_events_t in = listOf(events);
        const clap_process_t process{
            -1, static_cast<std::uint32_t>(frames), nullptr, &input, &port, 1, 1, &in, &kNoOutput};
        require(mPlugin->process(mPlugin, &process) == CLAP_PROCESS_CONTINUE, "does not process");
    }

    std::uint32_t latency() const {
        return static_cast<const clap_plugin_latency_t*>(extension(CLAP_EXT_LATENCY))->get(mPlugin);
    }

    std::string valueTexts() const {
        std::string texts = "latency " + std::to_string(latency()) + '\n';
        for (const clap_param_info_t& info : mParameters) {
            double value = 0.0;
            std::array<char, CLAP_NAME_SIZE> text{};
            require(mParams->get_value(mPlugin, info.id, &value) &&
                        mParams->value_to_text(mPlugin, info.id, value, text.data(),
                                               static_cast<std::uint32_t>(text.size())),
                    "a value has no text");
            texts += std::string(info.name) + ' ' + text.data() + '\n';
        }
        return texts;
    }

    std::string state() const {
        std::string bytes;
        const clap_ostream_t stream{
            &bytes, [](const clap_ostream_t* self, const void* buffer, std::uint64_t size) {
                static_cast<std::string*>(self->ctx)->append(static_cast<const char*>(buffer), size);
                return static_cast<std::int64_t>(size);
            }};
        const auto* const state = static_cast<const clap_plugin_state_t*>(extension(CLAP_EXT_STATE));
        require(state->save(mPlugin, &stream), "cannot save");
        return bytes;
    }

    void loadPreset(const fs::path& preset) {
        const auto* const presets =
            static_cast<const clap_plugin_preset_load_t*>(extension(CLAP_EXT_PRESET_LOAD));
        const std::u8string path = preset.u8string();
        require(presets->from_location(mPlugin, CLAP_PRESET_DISCOVERY_LOCATION_FILE,
                                       reinterpret_cast<const char*>(path.c_str()), nullptr),
                "cannot load a preset");
    }

private:
    const clap_plugin_t* mPlugin;
    const clap_plugin_params_t* mParams = nullptr;
    std::vector<clap_param_info_t> mParameters;
};

const char* identifierOf(const clap_plugin_factory_t& factory, std::int32_t channels) {
    // Mono, then stereo.
    const auto* const descriptor =
        factory.get_plugin_descriptor(&factory, static_cast<std::uint32_t>(channels - 1));
    require(descriptor != nullptr, "no plug-in");
    return descriptor->id;
}

void describe(const clap_plugin_factory_t& factory, BitsFile& output) {
    std::string text;
    for (std::uint32_t index = 0; index < factory.get_plugin_count(&factory); ++index) {
        const clap_plugin_descriptor_t& descriptor = *factory.get_plugin_descriptor(&factory, index);
        text += std::string(descriptor.id) + '\n' + descriptor.name + '\n' + descriptor.vendor + '\n' +
                descriptor.version + '\n' + descriptor.description + '\n';
        for (const char* const* feature = descriptor.features; *feature != nullptr; ++feature) {
            text += std::string(*feature) + '\n';
        }
    }
    output.add("descriptions", text);
}

void render(const clap_plugin_factory_t& factory, const BitsCase& bitsCase, BitsFile& output) {
    Plugin plugin(factory, identifierOf(factory, bitsCase.channels));
    plugin.setQuality(bitsCase.factor);
    plugin.activate(bitsCase.sampleRateHz);
    SameNumbers numbers(bitsCase.seed);
    std::vector<std::vector<float>> sound = bitsInput(bitsCase);
    std::size_t done = 0;
    for (const std::int32_t frames : bitsBuffers(bitsCase)) {
        std::vector<float*> channels;
        channels.reserve(sound.size());
        for (std::vector<float>& channel : sound) {
            channels.push_back(channel.data() + done);
        }
        Events events;
        if (!bitsCase.hasDefaults && numbers.below(4) == 0) {
            events = plugin.randomValues(numbers, static_cast<std::uint32_t>(frames));
        }
        plugin.process(channels, frames, events);
        done += static_cast<std::size_t>(frames);
    }
    output.add(bitsCase.name + "-sound", sound);
    output.add(bitsCase.name + "-texts", plugin.valueTexts());
    output.add(bitsCase.name + "-state", plugin.state());
    plugin.deactivate();
}

void loadPresets(const clap_plugin_factory_t& factory, const fs::path& folder, BitsFile& output) {
    std::vector<fs::path> presets;
    for (const fs::directory_entry& file : fs::directory_iterator(folder)) {
        presets.push_back(file.path());
    }
    require(!presets.empty(), "no presets");
    std::sort(presets.begin(), presets.end());
    for (const fs::path& preset : presets) {
        Plugin plugin(factory, identifierOf(factory, 2));
        plugin.loadPreset(preset);
        output.add("preset-state", plugin.state());
    }
}

// Hosts of Windows have registers of the x87 unit with 53 bits, and the compiler's C library, which the
// binary contains, computes some functions there; programs of that compiler start with 64 bits.
void computeAsInHosts() {
#if defined(__x86_64__)
    constexpr std::uint16_t kControl = 0x27F;
    asm volatile("fldcw %0" : : "m"(kControl));
#endif
}

void run(const char* binary, const char* outputPath, const char* presets) {
    std::string refusal;
    void* const handle = loadBinary(binary, refusal);
    require(handle != nullptr, "cannot load the binary: " + refusal);
    const auto* const entry = static_cast<const clap_plugin_entry_t*>(binarySymbol(handle, "clap_entry"));
    require(entry != nullptr, "no clap_entry");
    require(entry->init(binary), "the entry refuses");
    const auto* const factory =
        static_cast<const clap_plugin_factory_t*>(entry->get_factory(CLAP_PLUGIN_FACTORY_ID));
    require(factory != nullptr, "no factory");
    BitsFile output(outputPath);
    describe(*factory, output);
    for (const BitsCase& bitsCase : bitsCases(kSettings)) {
        render(*factory, bitsCase, output);
    }
    loadPresets(*factory, presets, output);
    const bool hasWindow = Plugin(*factory, identifierOf(*factory, 1)).extension(CLAP_EXT_GUI) != nullptr;
    std::printf("window %s\n", hasWindow ? "yes" : "no");
    entry->deinit();
    unloadBinary(handle);
}

} // namespace

} // namespace varno::test

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: RenderClap BINARY OUTPUT PRESETS\n");
        return 2;
    }
    try {
        varno::test::computeAsInHosts();
        varno::test::run(argv[1], argv[2], argv[3]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "RenderClap: %s\n", error.what());
        return 1;
    }
    return 0;
}
