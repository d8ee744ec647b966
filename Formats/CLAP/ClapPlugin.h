/// One plug-in of a CLAP host.
#ifndef VARNO_FORMATS_CLAP_CLAPPLUGIN_H
#define VARNO_FORMATS_CLAP_CLAPPLUGIN_H

#include "CLAP/AudioSide.h"
#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"
#include "CLAP/HostCalls.h"
#include "CLAP/ParameterList.h"
#include "CLAP/PluginWindowBase.h"
#include "CLAP/StateRecord.h"
#include "CLAP/ValueExchange.h"
#include "DemoGain_ValueText.h"
#include "Host/Instance.h"
#include "Surround/Settings/HostIndication.h"
#include "Surround/Settings/QualityText.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Two instances of the effect: one on the main thread, without audio, that has the settings as they are
/// saved; and, while the plug-in is active, one that processes. Values go from one to the other through a
/// ValueExchange, so neither thread waits for the other. Functions of [main] may throw; the table of C
/// functions turns that into false and one line in the host's log.
class ClapPlugin {
public:
    /// @param host outlives this object; not called yet @param channels 1 or 2 [any]
    ClapPlugin(const clap_host_t& host, std::int32_t channels)
        : mHost(host),
          mChannels(channels) {}
    ClapPlugin(const ClapPlugin&) = delete;
    ClapPlugin& operator=(const ClapPlugin&) = delete;
    ~ClapPlugin();

    /// Once, before all others. @throws HostError where there is no effect [main]
    void init();
    /// @throws HostError where the effect is not offered at the rate [main]
    void activate(double sampleRateHz);
    /// [main]
    void deactivate();
    /// [any]
    bool isActive() const { return mAudio != nullptr; }
    /// What processes, while it is active. [audio]
    AudioSide& audio() { return *mAudio; }

    const HostCalls& host() const { return mHost; }
    std::int32_t channels() const { return mChannels; }
    const ParameterList& parameters() const { return *mParameters; }

    /// The present value of a parameter, as hosts have it. [main]
    double value(std::size_t parameter) const;
    /// A value as text, and a text as value; see ParameterList.h. [main]
    std::string text(std::size_t parameter, double value) const;
    std::optional<double> valueFromText(std::size_t parameter, std::string_view text) const;
    /// Receives and sends events, on the thread that has it to do: [audio] while it is active, else [main].
    void flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept;

    /// What a state has besides the settings.
    enum class Extent { kAll, kSettingsOnly };

    /// The state. @param extent kSettingsOnly: as a preset, a bare chunk [main]
    std::vector<std::byte> save(Extent extent);
    /// Restores a state, or leaves everything as it was. @param extent kSettingsOnly: bypass and quality stay
    /// @throws HostError where it is refused [main]
    void load(std::span<const std::byte> bytes, Extent extent);

    /// Takes the settings of a preset's file; bypass and quality stay. @throws HostError where it is refused
    /// [main]
    void loadPreset(const std::filesystem::path& file);

    // What a window works with.

    /// The instance on the main thread. [main]
    Instance& settings() { return *mSettings; }
    ValueExchange& values() { return *mValues; }
    /// The quality that was chosen, and what of it the rate of the last activation allows. [main]
    Quality quality() const;
    /// Gives the settings what the host has changed. What the user holds waits until it is let go. [main]
    void takeHostValues();
    /// Has the meters of the settings show those of the audio thread. [main]
    void showMeters();
    /// What the host shows of a parameter; null where there is no parameter of this number. [main]
    HostIndication* indication(clap_id id);
    /// The window, null for none. [main]
    PluginWindowBase* window() { return mWindow.get(); }
    /// Takes a window, or ends the present one. [main]
    void setWindow(std::unique_ptr<PluginWindowBase> window);

    /// Frames of latency while it is active; before, of the last time. [main]
    std::int32_t latencyFrames() const { return isActive() ? mAudio->latencyFrames() : mLatencyFrames; }
    /// Whether the next activation is for a file instead of listeners. [main]
    void setOffline(bool isOffline) { mIsOffline = isOffline; }

private:
    DemoGain_ValueText::Settings unitSettings() const;
    void set(std::size_t parameter, float value);

    HostCalls mHost;
    std::int32_t mChannels;
    std::unique_ptr<Instance> mSettings;
    std::optional<ParameterList> mParameters;
    std::optional<ValueExchange> mValues;
    std::unique_ptr<AudioSide> mAudio;
    std::vector<HostIndication> mIndications; ///< By parameter; in no state.
    std::unique_ptr<PluginWindowBase> mWindow;
    double mSampleRateHz = kDefaultSampleRateHz; ///< Of the last activation.
    std::int32_t mLatencyFrames = 0;             ///< Likewise.
    bool mIsOffline = false;
};

} // namespace varno

#endif
