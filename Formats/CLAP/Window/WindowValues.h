/// What a window changes and shows, between its instance and the plug-in.
#ifndef VARNO_FORMATS_CLAP_WINDOW_WINDOWVALUES_H
#define VARNO_FORMATS_CLAP_WINDOW_WINDOWVALUES_H

#include "CLAP/HostCalls.h"
#include "CLAP/ParameterList.h"
#include "CLAP/ValueExchange.h"
#include "Host/HostAutomation.h"
#include "Host/Instance.h"

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// Hands what the editor requests to the exchange, for the audio thread and the host, and has the host ask
/// for it. A value that the exchange has already is no change. [main]
class WindowValues : private AutomationListener {
public:
    /// All outlive this object. @param instance of the editor
    WindowValues(Instance& instance, const ParameterList& parameters, ValueExchange& values,
                 const HostCalls& host);
    WindowValues(const WindowValues&) = delete;
    WindowValues& operator=(const WindowValues&) = delete;
    ~WindowValues() override;

    bool isBypassed() const;
    void setBypassed(bool isBypassed);
    /// @param factor of kOversamplingFactors
    void setQuality(std::int32_t factor);

private:
    void valueRequested(const std::string& id, double normalized) override;
    void touched(const std::string& id) override;
    void released(const std::string& id) override;
    void change(std::size_t parameter, float value);

    Instance& mInstance;
    const ParameterList& mParameters;
    ValueExchange& mValues;
    const HostCalls& mHost;
    std::vector<int> mTouches; ///< Open gestures by parameter.
};

} // namespace varno

#endif
