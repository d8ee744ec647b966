/// A running CLAP plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPINSTANCE_H
#define VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPINSTANCE_H

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"
#include "Validate/Clap/ClapEditor.h"
#include "Validate/Clap/ClapHost.h"
#include "Validate/Plugin.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varno::validate {

/// The audio ports of a plug-in in one direction: how many channels each has.
struct ClapPorts {
    std::vector<std::uint32_t> channels;
    bool runInPlace = true; ///< Each may have the memory of a port of the other direction.

    int allChannels() const;
};

/// Ends a plug-in.
struct DestroysClap {
    void operator()(const clap_plugin_t* plugin) const { plugin->destroy(plugin); }
};
using OwnedClap = std::unique_ptr<const clap_plugin_t, DestroysClap>;

/// Of a plug-in whose init() has succeeded.
ClapPorts readClapPorts(const clap_plugin_t* plugin, bool isInput);

/// Initialised, and active from prepare() on. Values wait for the next buffer; where one is asked for
/// before, they are handed over without a buffer.
class ClapInstance final : public PluginInstance {
public:
    /// @param plugin initialised, made with the table of the host
    /// @throws PluginError where a parameter cannot be read
    ClapInstance(std::unique_ptr<ClapHost> host, OwnedClap plugin, double rateHz, std::int32_t mostFrames);
    ~ClapInstance() override;

    /// Once, before anything but the window. @throws PluginError where the plug-in refuses the rate
    void prepare();

    Capabilities capabilities() const override;
    const std::vector<Parameter>& parameters() const override { return mParameters; }
    void set(std::size_t index, double value) override;
    double get(std::size_t index) override;
    std::optional<std::string> text(std::size_t index, double value) override;
    std::optional<double> value(std::size_t index, const std::string& text) override;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override;
    std::optional<std::vector<std::byte>> saveState() override;
    bool restoreState(std::span<const std::byte> state) override;
    void reset() override;
    std::int32_t latencyFrames() override;
    std::vector<Attempt> attempts(AttemptKind kind) override;
    std::unique_ptr<PluginEditor> openEditor(const EditorSetup& setup) override;

private:
    void readParameters();
    void startProcessing();
    void stopProcessing();
    void flush(bool isAsked = false);
    void answerCallbacks();
    void processWith(const clap_input_events_t& events, const float* const* inputs, float* const* outputs,
                     std::int32_t frames);
    void processSilence(const clap_input_events_t& events);
    bool restart();
    clap_output_events_t outputEvents();
    bool takeEvent(const clap_event_header_t& header);

    std::unique_ptr<ClapHost> mHost;
    OwnedClap mPlugin;
    double mRateHz;
    std::uint32_t mMostFrames;
    const clap_plugin_params_t* mParams;
    const clap_plugin_state_t* mState;
    const clap_plugin_latency_t* mLatency;
    ClapPorts mInputs;
    ClapPorts mOutputs;
    std::vector<Parameter> mParameters;
    std::vector<clap_param_info_t> mInfos; ///< By parameter.
    bool mIsActive = false;
    ClapEditor* mEditor = nullptr; ///< The open one.
    std::mutex mSound;             ///< Held in process() and flush(), before the next one.
    std::mutex mMutex;             ///< For the three below.
    std::vector<clap_event_param_value_t> mWaiting;
    std::vector<EditorEvent> mFromPlugin; ///< While a window is open.
    bool mIsProcessing = false;
};

} // namespace varno::validate

#endif
