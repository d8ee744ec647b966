// Renders every case with the module of a bundle, in the host library, and writes what it gave to a file:
// sound, meters, texts of the values and the saved settings. Usage: RenderModule BUNDLE OUTPUT
#include "DemoGain_Oversampling.h"
#include "Host/Instance.h"
#include "Host/Module.h"
#include "Host/Oversampling/Oversampling.h"
#include "Surround/Settings/EffectHost.h"
#include "Tests/Windows/BitsFile.h"

#include <cstdio>
#include <exception>

namespace varno::test {

namespace {

constexpr std::uint32_t kSettings = 6;

// Every parameter but the bypass, which passes the sound through.
void setValues(Instance& instance, SameNumbers& numbers) {
    for (const ParameterInfo& parameter : instance.parameters()) {
        const double value = double{numbers.unit()};
        if (!parameter.isMasterBypass) {
            instance.setNormalized(parameter.id, value);
        }
    }
}

std::string valueTexts(const Instance& instance) {
    std::string texts;
    for (const ParameterInfo& parameter : instance.parameters()) {
        texts += parameter.id + ' ' + instance.text(parameter.id) + '\n';
    }
    return texts;
}

void render(const std::shared_ptr<Module>& module, const BitsCase& bitsCase, BitsFile& output) {
    InstanceSetup setup;
    setup.channels = bitsCase.channels;
    setup.sampleRateHz = bitsCase.sampleRateHz;
    setup.maximumFrames = kBitsMostFrames;
    Instance instance(module, setup);
    Oversampling oversampling(instance,
                              {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = bitsCase.factor});
    SameNumbers numbers(bitsCase.seed);
    if (!bitsCase.hasDefaults) {
        setValues(instance, numbers);
    }
    std::vector<std::vector<float>> sound = bitsInput(bitsCase);
    std::vector<float> meters;
    std::size_t done = 0;
    for (const std::int32_t frames : bitsBuffers(bitsCase)) {
        std::vector<float*> channels;
        channels.reserve(sound.size());
        for (std::vector<float>& channel : sound) {
            channels.push_back(channel.data() + done);
        }
        oversampling.process(channels.data(), channels.data(), frames);
        const std::size_t before = done;
        done += static_cast<std::size_t>(frames);
        // In the middle all values change.
        if (!bitsCase.hasDefaults && before < kBitsFrames / 2 && done >= kBitsFrames / 2) {
            setValues(instance, numbers);
        }
        for (std::size_t tap = 0; tap < instance.meters().ids().size(); ++tap) {
            meters.push_back(instance.meters().taps()[tap]);
        }
    }
    output.add(bitsCase.name + "-sound", sound);
    output.add(bitsCase.name + "-meters", {meters});
    output.add(bitsCase.name + "-texts", valueTexts(instance));
    output.add(bitsCase.name + "-chunk", instance.save().toBytes());
}

} // namespace

} // namespace varno::test

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: RenderModule BUNDLE OUTPUT\n");
        return 2;
    }
    try {
        const auto module = varno::Module::open(argv[1], varno::effectHostOptions());
        varno::test::BitsFile output(argv[2]);
        for (const varno::test::BitsCase& bitsCase : varno::test::bitsCases(varno::test::kSettings)) {
            varno::test::render(module, bitsCase, output);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "RenderModule: %s\n", error.what());
        return 1;
    }
    return 0;
}
