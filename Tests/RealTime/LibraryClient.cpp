#include "Tests/RealTime/LibraryClient.h"

#include "DemoGain_PresetText.h"
#include "DemoGain_SampleRates.h"

#include <algorithm>

namespace varno::test {

WatchedModule::WatchedModule() {
    HostOptions options;
    options.sampleRates = {DemoGain_SampleRates::kLowestHz, DemoGain_SampleRates::kHighestHz};
    options.monitor = mMonitor;
    mModule = Module::linked(linkedEntryPoints(), options);
}

std::string WatchedModule::complaints() {
    std::string text;
    for (const Violation& violation : mMonitor->takeViolations()) {
        text += std::string(contractName(violation.contract)) + ": " + violation.text + '\n';
    }
    return text;
}

void LibraryClient::prepare(int frames, std::mt19937& ioRandom) {
    nextInput(frames);
    for (std::size_t i = 0; i < mValues.size(); ++i) {
        mValues[i] = {i, normalizedFrom(ioRandom)};
    }
    mFactor = ioRandom() % kBlocksPerQuality == 0 ? factorFrom(ioRandom) : 0;
    mEffect.setBypassed(ioRandom() % kBlocksPerQuality == 0);
}

// A host of buffers with values: both belong to its callback.
void LibraryClient::process(int frames) {
    give();
    mProcess(mInputs, mOutputs, frames);
}

void LibraryClient::disturb(std::mt19937& ioRandom) {
    Instance& instance = mEffect.instance();
    const auto& parameters = instance.parameters();
    const std::string& id = parameters[ioRandom() % parameters.size()].id;
    switch (ioRandom() % 7) {
    case 0:
        instance.setNormalized(id, normalizedFrom(ioRandom));
        break;
    case 1:
        instance.requestNormalized(id, normalizedFrom(ioRandom));
        instance.idle();
        break;
    case 2:
        applyPreset(ioRandom);
        break;
    case 3:
        mSaved = instance.save();
        break;
    case 4:
        instance.restore(mSaved);
        break;
    case 5:
        mEffect.oversampling().setFactor(factorFrom(ioRandom));
        break;
    default:
        readMeters();
    }
}

void LibraryClient::give() {
    if (mFactor != 0) {
        mEffect.oversampling().setFactorBeforeBuffer(mFactor);
    }
    mEffect.instance().setBeforeBuffer(mValues);
}

void LibraryClient::applyPreset(std::mt19937& ioRandom) {
    DemoGain_PresetText::Values values{};
    std::ranges::generate(values, [&] { return static_cast<float>(normalizedFrom(ioRandom)); });
    const auto read = DemoGain_PresetText::Parse(DemoGain_PresetText::Write(values));
    for (std::size_t i = 0; i < read.value().size(); ++i) {
        mEffect.instance().setNormalized(DemoGain_PresetText::kItems[i].mParameterID, (*read)[i]);
    }
}

void LibraryClient::readMeters() {
    Instance& instance = mEffect.instance();
    for (std::size_t tap = 0; tap < instance.meters().ids().size(); ++tap) {
        mMeters += instance.meters().value(tap);
        instance.meters().clearPeak(tap);
    }
    instance.timer();
}

} // namespace varno::test
