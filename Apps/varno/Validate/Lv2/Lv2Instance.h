/// A running LV2 plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_LV2INSTANCE_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_LV2INSTANCE_H

#include "Validate/Lv2/HostSide.h"
#include "Validate/Lv2/Lv2Editor.h"
#include "Validate/Lv2/Ports.h"
#include "Validate/Lv2/StateRecord.h"
#include "Validate/Plugin.h"

#include <cstdint>
#include <lilv/lilv.h>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace varno::validate {

/// Made, connected and active. Audio ports are connected for each buffer, control ports once; ports of
/// modulation have silence, those of events an empty sequence or room to write to.
class Lv2Instance final : public PluginInstance, public EditorPorts {
public:
    /// What outlives an instance.
    struct Source {
        const LilvPlugin* plugin = nullptr;
        UriNumbers& numbers;
        const Lv2Window& window;
        Complaints& complaints;
        bool runsInPlace = true;
    };

    /// @throws PluginError where the plug-in refuses
    Lv2Instance(const Source& source, PortList ports, double rateHz, std::int32_t mostFrames);
    ~Lv2Instance() override;

    /// Once, before anything but the window: activates it.
    void prepare();

    Capabilities capabilities() const override;
    const std::vector<Parameter>& parameters() const override { return mPorts.parameters; }
    void set(std::size_t index, double value) override;
    double get(std::size_t index) override;
    std::optional<std::string> text(std::size_t index, double value) override;
    std::optional<double> value(std::size_t index, const std::string& text) override;
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) override;
    std::optional<std::vector<std::byte>> saveState() override;
    /// As hosts do: values for the control ports that there are, then what the plug-in stored.
    bool restoreState(std::span<const std::byte> state) override;
    void reset() override;
    /// As its port stated it in the last buffer.
    std::int32_t latencyFrames() override;
    std::vector<Attempt> attempts(AttemptKind kind) override;
    std::unique_ptr<PluginEditor> openEditor(const EditorSetup& setup) override;

private:
    const PortList& ports() const override { return mPorts; }
    std::vector<float> shownValues() override;
    void write(std::uint32_t port, float value) override;
    void forget() override { mEditor = nullptr; }

    void connectPorts(std::int32_t mostFrames);
    void clearEvents();
    void runSilence(std::span<const std::byte> sequence);
    void takeWritten();

    Source mSource;
    UriNumbers& mNumbers;
    PortList mPorts;
    const LilvPlugin* mPlugin;
    double mRateHz;
    std::int32_t mMostFrames;
    HostSide mHost;
    std::vector<float> mValues;                      ///< Of the control ports, by port.
    std::vector<std::vector<float>> mModulation;     ///< By port.
    std::vector<std::vector<std::uint64_t>> mEvents; ///< By port.
    std::vector<std::byte> mIncoming;                ///< For the next buffer.
    LilvInstance* mInstance;
    const LV2_Worker_Interface* mWorker = nullptr;
    const LV2_State_Interface* mState = nullptr;
    bool mIsActive = false;
    Lv2Editor* mEditor = nullptr;                          ///< The open one.
    std::mutex mMutex;                                     ///< For the two below.
    std::vector<float> mShown;                             ///< mValues as they were after the last buffer.
    std::vector<std::pair<std::uint32_t, float>> mWritten; ///< By the window, for the next buffer.
};

} // namespace varno::validate

#endif
