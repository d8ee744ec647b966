/// A plug-in that is called as by a host: through the C functions of its descriptor alone.
#ifndef VARNO_TESTS_FORMATS_LV2_HOSTEDPLUGIN_H
#define VARNO_TESTS_FORMATS_LV2_HOSTEDPLUGIN_H

#include "Tests/Support/RenderChecker.h"
#include "Tests/Support/Signal.h"

#include <lv2/core/lv2.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace varno::test {

/// Values of control inputs by symbol.
using PortValues = std::map<std::string, float>;

/// Made, connected and active; ends with the object.
class HostedPlugin {
public:
    /// The mono or the stereo plug-in with every control port connected, all parameters at their defaults.
    /// Throws std::runtime_error where the plug-in refuses.
    explicit HostedPlugin(std::size_t channels, double sampleRateHz = 48000.0);
    HostedPlugin(const HostedPlugin&) = delete;
    HostedPlugin& operator=(const HostedPlugin&) = delete;
    ~HostedPlugin();

    std::size_t channels() const { return mChannels; }
    /// The memory of a control port. Throws std::out_of_range where there is none.
    float& port(const std::string& symbol);
    void set(const PortValues& values);
    void connect(const std::string& symbol, void* data);
    void activate() { mDescriptor->activate(mHandle); }
    /// A run alone, wherever the audio ports are connected.
    void run(std::uint32_t frames) { mDescriptor->run(mHandle, frames); }

    /// Connects the audio ports anew and runs.
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames);
    BufferProcessor processor();

private:
    std::uint32_t indexOf(const std::string& symbol) const;

    const LV2_Descriptor* mDescriptor;
    std::size_t mChannels;
    std::vector<std::string> mSymbols;
    std::vector<float> mValues; ///< Of the control ports, by index.
    LV2_Handle mHandle;
};

} // namespace varno::test

#endif
