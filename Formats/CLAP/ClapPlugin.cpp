#include "CLAP/ClapPlugin.h"

#include "Host/HostError.h"
#include "Shared/SharedModule.h"
#include "Surround/Settings/PathText.h"
#include "Surround/Settings/PresetFile.h"
#include "Surround/Settings/SettingValues.h"

#include <utility>

namespace varno {

namespace {

InstanceSetup settingsSetup(std::int32_t channels) {
    InstanceSetup setup;
    setup.channels = channels;
    return setup;
}

} // namespace

ClapPlugin::~ClapPlugin() {
    const SharedModule shared;
    mWindow.reset();
    mAudio.reset();
    mSettings.reset();
}

void ClapPlugin::init() {
    const SharedModule shared;
    mHost.connect();
    mSettings = std::make_unique<Instance>(shared.get(), settingsSetup(mChannels));
    mParameters.emplace(*mSettings);
    mValues.emplace(mParameters->size());
    mIndications.resize(mParameters->size());
    for (std::size_t index = 0; index < mParameters->size(); ++index) {
        mValues->set(index, (*mParameters)[index].normalizedDefault, 0);
    }
}

Quality ClapPlugin::quality() const {
    const std::int32_t wish = qualityFactor(mValues->value(mParameters->quality()));
    const SampleRateRange& rates = mSettings->module().options().sampleRates;
    return {wish, fittingFactor(wish, rates, mSampleRateHz), mSampleRateHz};
}

HostIndication* ClapPlugin::indication(clap_id id) {
    const auto index = mParameters->indexOf(id);
    return index ? &mIndications[*index] : nullptr;
}

void ClapPlugin::activate(double sampleRateHz) {
    const SharedModule shared;
    const RunSetup setup{.channels = mChannels,
                         .sampleRateHz = sampleRateHz,
                         .quality = quality().wish,
                         .isOffline = mIsOffline};
    mAudio = std::make_unique<AudioSide>(mSettings->sharedModule(), setup,
                                         AudioSide::Surroundings{*mParameters, *mValues, mHost});
    mSampleRateHz = sampleRateHz;
    if (mAudio->latencyFrames() != mLatencyFrames) {
        mLatencyFrames = mAudio->latencyFrames();
        mHost.latencyChanged();
    }
}

void ClapPlugin::deactivate() {
    const SharedModule shared;
    mAudio.reset();
}

double ClapPlugin::value(std::size_t parameter) const {
    return hostValueOf((*mParameters)[parameter], mValues->value(parameter));
}

DemoGain_ValueText::Settings ClapPlugin::unitSettings() const {
    const auto valueOf = [this](const char* identifier) {
        const auto index = mParameters->indexOf(std::string_view(identifier));
        return index ? mValues->value(*index) : 0.0F;
    };
    return {valueOf(cDemoGain_RatioID), valueOf(cDemoGain_UKID), mSampleRateHz};
}

std::string ClapPlugin::text(std::size_t parameter, double value) const {
    return hostText((*mParameters)[parameter], value, unitSettings());
}

std::optional<double> ClapPlugin::valueFromText(std::size_t parameter, std::string_view text) const {
    return hostValueFromText((*mParameters)[parameter], text, unitSettings());
}

void ClapPlugin::flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept {
    if (mAudio != nullptr) {
        mAudio->flush(in, out);
        return;
    }
    const std::uint32_t size = in == nullptr ? 0 : in->size(in);
    for (std::uint32_t index = 0; index < size; ++index) {
        if (const clap_event_header_t* const event = in->get(in, index)) {
            receiveEvent(*event, *mParameters, *mValues);
        }
    }
}

void ClapPlugin::takeHostValues() {
    if (!mValues->takeAny(ValueExchange::kForWindow)) {
        return;
    }
    for (std::size_t index = 0; index < mParameters->effectParameters(); ++index) {
        if (mValues->take(index, ValueExchange::kForWindow) == 0) {
            continue;
        }
        if (mValues->isHeld(index)) {
            mValues->mark(index, ValueExchange::kForWindow);
        } else {
            mSettings->setNormalized((*mParameters)[index].row->mIdentifier, double{mValues->value(index)});
        }
    }
}

void ClapPlugin::loadPreset(const std::filesystem::path& file) {
    const PresetEntry preset = readPreset(file, false);
    if (!preset.isSound()) {
        throw HostError(textOfPath(file) + " " + preset.damage);
    }
    takeHostValues();
    for (std::size_t setting = 0; setting < kSettingCount; ++setting) {
        const char* const identifier = settingID(setting);
        if (const auto index = mParameters->indexOf(std::string_view(identifier))) {
            mSettings->setNormalized(identifier, double{preset.values.at(setting)});
            set(*index, preset.values.at(setting));
        }
    }
    mHost.valuesChanged();
}

// Nothing processes the settings, so that the meters' taps belong to this thread.
void ClapPlugin::showMeters() {
    MeterBank& meters = mSettings->meters();
    for (std::size_t tap = 0; tap < meters.ids().size(); ++tap) {
        meters.taps()[tap] = isActive() ? mAudio->meter(tap) : 0.0F;
    }
    meters.afterBuffer(0);
}

void ClapPlugin::setWindow(std::unique_ptr<PluginWindowBase> window) {
    mWindow = std::move(window);
}

void ClapPlugin::set(std::size_t parameter, float value) {
    mValues->take(parameter, ValueExchange::kForWindow);
    mValues->set(parameter, value, ValueExchange::kForAudio);
}

std::vector<std::byte> ClapPlugin::save(Extent extent) {
    takeHostValues();
    StateRecord record{mSettings->save(), {}};
    if (extent == Extent::kAll) {
        record.plugin = {isOn(mValues->value(mParameters->bypass())), quality().wish};
    }
    return bytesOf(record);
}

void ClapPlugin::load(std::span<const std::byte> bytes, Extent extent) {
    const StateRecord record = recordFrom(bytes);
    const SharedModule shared;
    Instance restored(mSettings->sharedModule(), settingsSetup(mChannels));
    restored.restore(record.chunk);
    takeHostValues();
    for (std::size_t index = 0; index < mParameters->effectParameters(); ++index) {
        const char* const identifier = (*mParameters)[index].row->mIdentifier;
        const double value = restored.normalized(identifier);
        mSettings->setNormalized(identifier, value);
        set(index, static_cast<float>(value));
    }
    if (record.plugin && extent == Extent::kAll) {
        set(mParameters->bypass(), record.plugin->isBypassed ? 1.0F : 0.0F);
        set(mParameters->quality(), normalizedQuality(record.plugin->quality));
        if (isActive() && mAudio->quality() != record.plugin->quality) {
            mHost.requestRestart();
        }
    }
    mHost.valuesChanged();
}

} // namespace varno
