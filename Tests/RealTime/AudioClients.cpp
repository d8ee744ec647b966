// All clients.
#include "CLAP/Clap/Events.h"
#include "Host/Oversampling/RateConverter.h"
#include "Session/JackBackend.h"
#include "Session/RtAudioBackend.h"
#include "Tests/Apps/varno/Session/FakeJack.h"
#include "Tests/Apps/varno/Session/FakeRtAudio.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/RealTime/LibraryClient.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace varno::test {
namespace {

// The effect in the host library behind a JACK server's calls.
class JackClient : public LibraryClient {
public:
    JackClient() {
        mBackend.start(effect().process());
        for (const auto& port : mJack.ports) {
            port->samples.reserve(kLongestBlock); // the server's memory
        }
    }
    void prepare(int frames, std::mt19937& ioRandom) override {
        LibraryClient::prepare(frames, ioRandom);
        give();
        for (std::size_t channel = 0; channel < 2; ++channel) {
            mJack.ports[channel]->samples.assign(mInputs[channel], mInputs[channel] + frames);
        }
    }
    void process(int frames) override { mJack.process(static_cast<jack_nframes_t>(frames), mJack.self); }
    std::span<const float> output(std::size_t channel, int) const override {
        return mJack.ports[2 + channel]->samples;
    }

private:
    FakeJack mJack;
    JackBackend mBackend{FakeJack::functions(), {}};
};

// The same behind the calls of RtAudio's thread.
class RtAudioClient : public LibraryClient {
public:
    RtAudioClient() { mBackend.start(effect().process()); }
    void prepare(int frames, std::mt19937& ioRandom) override {
        LibraryClient::prepare(frames, ioRandom);
        give();
        for (std::size_t channel = 0; channel < 2; ++channel) {
            std::copy_n(mInputs[channel], frames, mInput.data() + channel * static_cast<std::size_t>(frames));
        }
    }
    void process(int frames) override {
        mAudio.process(mOutput.data(), mInput.data(), static_cast<unsigned>(frames), 0.0, 0, mAudio.self);
    }
    std::span<const float> output(std::size_t channel, int frames) const override {
        const auto count = static_cast<std::size_t>(frames);
        return {mOutput.data() + channel * count, count};
    }

private:
    // One channel behind the other.
    std::vector<float> mInput = std::vector<float>(2 * kLongestBlock);
    std::vector<float> mOutput = std::vector<float>(2 * kLongestBlock);
    FakeRtAudio mAudio;
    RtAudioBackend mBackend{FakeRtAudio::functions(), {}};
};

// The LV2 plug-in. All its values are its ports'; other plug-ins of the binary come and go beside it.
class Lv2Client : public AudioClient {
public:
    void prepare(int frames, std::mt19937& ioRandom) override {
        nextInput(frames);
        for (float* port : mPorts) {
            *port = static_cast<float>(normalizedFrom(ioRandom));
        }
        if (ioRandom() % kBlocksPerQuality == 0) {
            *mQuality = static_cast<float>(factorFrom(ioRandom));
        }
        *mEnabled = ioRandom() % kBlocksPerQuality == 0 ? 0.0F : 1.0F;
    }
    void process(int frames) override { mPlugin.process(mInputs, mOutputs, frames); }
    void disturb(std::mt19937& ioRandom) override {
        HostedPlugin other(1 + ioRandom() % 2);
        other.port("gain") = static_cast<float>(normalizedFrom(ioRandom));
        std::vector<float> sound(64, 0.25F);
        const float* inputs[] = {sound.data(), sound.data()};
        float* outputs[] = {sound.data(), sound.data()};
        other.process(inputs, outputs, 64);
    }

private:
    std::vector<float*> portsOf(std::initializer_list<const char*> symbols) {
        std::vector<float*> ports;
        for (const char* symbol : symbols) {
            ports.push_back(&mPlugin.port(symbol));
        }
        return ports;
    }

    HostedPlugin mPlugin{2, kRateHz};
    std::vector<float*> mPorts = portsOf(
        {"gain", "hp", "band", "atk", "rls", "asw", "uk", "volume", "hot", "ratio", "mix", "hsw", "linksw"});
    float* mQuality = &mPlugin.port("quality");
    float* mEnabled = &mPlugin.port("enabled");
};

// The CLAP plug-in, with an event of each parameter and of the quality in each block.
class ClapClient : public AudioClient {
public:
    ClapClient() {
        if (!mPlugin.activate(kRateHz)) {
            throw std::runtime_error("the CLAP plug-in is not activated");
        }
        mStates[0] = mPlugin.save();
        mPlugin.add({{0, 0, 0.75}, {0, 9, 0.25}});
        mPlugin.flush();
        mStates[1] = mPlugin.save();
    }
    ~ClapClient() override = default;

    void prepare(int frames, std::mt19937& ioRandom) override {
        nextInput(frames);
        const auto length = static_cast<std::uint32_t>(frames);
        mEventCount = 0;
        for (clap_id id = 0; id < std::size(kDemoGain_Parameters); ++id) {
            const auto frame = length * id / static_cast<std::uint32_t>(std::size(kDemoGain_Parameters));
            move(frame, id, normalizedFrom(ioRandom));
        }
        if (ioRandom() % kBlocksPerQuality == 0) {
            move(length - 1, kQuality, static_cast<double>(ioRandom() % kOversamplingFactors.size()));
        }
    }
    void process(int frames) override {
        clap_audio_buffer_t in{const_cast<float**>(mInputs), nullptr, 2, 0, 0};
        clap_audio_buffer_t out{mOutputs, nullptr, 2, 0, 0};
        const clap_process_t call{-1,   static_cast<std::uint32_t>(frames), nullptr, &in, &out, 1, 1, &mIn,
                                  &mOut};
        mPlugin.plugin()->process(mPlugin.plugin(), &call);
    }
    void disturb(std::mt19937& ioRandom) override {
        switch (ioRandom() % 3) {
        case 0:
            mPlugin.load(mStates[ioRandom() % 2]);
            break;
        case 1:
            mPlugin.save();
            break;
        default:
            mPlugin.value(static_cast<clap_id>(ioRandom() % std::size(kDemoGain_Parameters)));
        }
    }
    std::string complaints() override { return mHost.log; }

private:
    static constexpr clap_id kQuality = 1000;

    void move(std::uint32_t frame, clap_id id, double value) {
        mEvents[mEventCount++] = clapValueEvent(id, value, frame);
    }

    ClapHost mHost;
    HostedClap mPlugin{clap_entry, mHost, 2};
    std::string mStates[2];
    std::array<clap_event_param_value_t, std::size(kDemoGain_Parameters) + 1> mEvents{};
    std::uint32_t mEventCount = 0;
    clap_input_events_t mIn{
        this, [](const auto* list) { return static_cast<const ClapClient*>(list->ctx)->mEventCount; },
        [](const auto* list, std::uint32_t index) {
            return &static_cast<const ClapClient*>(list->ctx)->mEvents[index].header;
        }};
    clap_output_events_t mOut{nullptr, [](const auto*, const auto*) { return true; }};
};

template<class Client>
std::unique_ptr<AudioClient> makeClient() {
    return std::make_unique<Client>();
}

constexpr AudioClientEntry kClients[] = {{"HostLibrary", makeClient<LibraryClient>},
                                         {"LV2", makeClient<Lv2Client>},
                                         {"CLAP", makeClient<ClapClient>},
                                         {"JACK", makeClient<JackClient>},
                                         {"RtAudio", makeClient<RtAudioClient>}};

} // namespace

std::span<const AudioClientEntry> audioClients() {
    return kClients;
}

} // namespace varno::test
