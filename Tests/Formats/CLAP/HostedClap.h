/// A plug-in that is called as by a host: through the C functions of its binary alone.
#ifndef VARNO_TESTS_FORMATS_CLAP_HOSTEDCLAP_H
#define VARNO_TESTS_FORMATS_CLAP_HOSTEDCLAP_H

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"
#include "Tests/Formats/CLAP/ClapHost.h"
#include "Tests/Support/RenderChecker.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// Of the binary that a test is linked with.
extern "C" const clap_plugin_entry_t clap_entry;

namespace varno::test {

/// A value for a parameter, or another event, at a frame.
struct ClapEvent {
    std::uint32_t frame = 0;
    clap_id id = 0;
    double value = 0.0;
    std::uint16_t type = CLAP_EVENT_PARAM_VALUE;
};

/// An event that a plug-in has sent, as text: "begin 5", "5=0.25", "end 5".
using SentEvents = std::vector<std::string>;

/// The factory of plug-ins of an entry, which is initialised.
const clap_plugin_factory_t& factoryOf(const clap_plugin_entry_t& entry);

/// The functions of a plug-in's extension. @throws std::runtime_error where it has none
const void* requireExtension(const clap_plugin_t* plugin, const char* id);

/// Made and initialised; ends with the object.
class HostedClap {
public:
    /// The mono or the stereo plug-in. @param host outlives this object
    /// @throws std::runtime_error where the plug-in refuses
    HostedClap(const clap_plugin_entry_t& entry, ClapHost& host, std::size_t channels);
    HostedClap(const HostedClap&) = delete;
    HostedClap& operator=(const HostedClap&) = delete;
    ~HostedClap();

    const clap_plugin_t* plugin() const { return mPlugin; }
    std::size_t channels() const { return mChannels; }

    bool activate(double sampleRateHz = 48000.0);
    void deactivate();
    void reset() { mPlugin->reset(mPlugin); }

    /// Values for the next buffer or flush. @param events by frame
    void add(const std::vector<ClapEvent>& events);
    /// Processes a buffer with the events that were added. @return what process() returns
    clap_process_status process(const float* const* inputs, float* const* outputs, std::int32_t frames);
    /// The same for a signal in divided buffers: events that were added have frames of the whole.
    BufferProcessor processor();
    /// Exchanges the events that were added without a buffer.
    void flush();
    /// What has been sent since the last call.
    SentEvents takeSent();
    /// How many further events the plug-in may send.
    void setRoom(std::size_t events) { mRoom = events; }

    /// The number of the parameter of this name. @throws std::out_of_range
    clap_id idOf(const std::string& name) const;
    double value(clap_id id) const;
    double value(const std::string& name) const { return value(idOf(name)); }
    /// Empty where the plug-in refuses.
    std::string text(clap_id id, double value) const;
    std::optional<double> fromText(clap_id id, const std::string& text) const;
    std::uint32_t latency() const;

    /// The state, empty where it is refused. @param context 0: of no context @param most bytes that the
    /// stream takes or gives at once
    std::string save(std::uint32_t context = 0, std::size_t most = 1000000) const;
    bool load(const std::string& bytes, std::uint32_t context = 0, std::size_t most = 1000000) const;

private:
    template<class Extension>
    const Extension& extension(const char* id) const {
        return *static_cast<const Extension*>(requireExtension(mPlugin, id));
    }
    clap_input_events_t inputEvents();
    clap_output_events_t outputEvents();

    std::size_t mChannels;
    const clap_plugin_t* mPlugin;
    const clap_plugin_params_t* mParams = nullptr;
    bool mIsActive = false;
    std::vector<clap_event_param_value_t> mEvents;  ///< Of frames from the present position on.
    std::vector<clap_event_param_value_t> mPresent; ///< Of the present buffer.
    SentEvents mSent;
    std::size_t mRoom = 1000000;
    std::map<std::string, clap_id> mIds;
};

} // namespace varno::test

#endif
