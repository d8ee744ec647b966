/// The host's automation of an instance's parameters.
#ifndef VARNO_HOST_HOSTAUTOMATION_H
#define VARNO_HOST_HOSTAUTOMATION_H

#include "AAX_IACFAutomationDelegate.h"
#include "Host/HostObject.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

struct InstanceState;

/// Called for every accepted call of the automation delegate, within that call: a front end forwards it to
/// its own host, or keeps what the user did. Must not throw. [main]
class AutomationListener {
public:
    virtual ~AutomationListener() = default;
    /// The module requests this value, 0 to 1, for a parameter. Called before the request is queued, so that
    /// HostAutomation::requestedValue() still is the one before. Not called for the host's own requests.
    virtual void valueRequested(const std::string& id, double normalized) = 0;
    /// A gesture on a parameter begins or ends; several may overlap.
    virtual void touched(const std::string& id) = 0;
    virtual void released(const std::string& id) = 0;
};

/// A requested value of a parameter.
struct ValueRequest {
    std::string id;
    double normalized = 0.0;
};

/// Automation delegate version 1: keeps requests until the instance answers them, counts gestures. Once a
/// parameter is registered, its gestures and values take no memory, if its identifier is one of up to 15
/// characters (which a string keeps within itself). [main]
class HostAutomation final : public Facet<AAX_IACFAutomationDelegate> {
public:
    HostAutomation(IACFUnknown& owner, InstanceState& state);

    AAX_Result RegisterParameter(AAX_CParamID paramID) override;
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override;
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override;
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override;

    /// Adds a listener (borrowed) for requests and gestures; it is called after those added before it. One
    /// that is added within a call of another receives the next call first. Each is added once.
    void addListener(AutomationListener& listener);
    /// Removes a listener, also within a call of any listener; it receives nothing afterwards. One that was
    /// not added is ignored.
    void removeListener(AutomationListener& listener);
    /// Queues a request of the host's own.
    void request(ValueRequest request) { mRequests.push_back(std::move(request)); }
    /// Returns all requests in their order and removes them.
    std::vector<ValueRequest> takeRequests();
    /// Takes back the memory of answered requests, for further ones.
    void recycle(std::vector<ValueRequest> answered);
    /// The registered parameters.
    std::set<std::string> registered() const;
    /// The value that was requested last for a parameter and is not answered yet; nothing for none.
    std::optional<double> requestedValue(std::string_view id) const;
    /// The value that a parameter has reported last; nothing if it never did.
    std::optional<double> currentValue(const std::string& id) const;
    /// Open gestures on a parameter.
    std::int32_t touches(const std::string& id) const;
    /// The number of touches since the start, so that a host can distinguish a gesture from automation.
    std::int64_t totalTouches() const { return mTotalTouches; }
    /// Reports every gesture that is still open.
    void reportOpenTouches() const;

private:
    /// What is known of one parameter.
    struct Parameter {
        bool isRegistered = false;
        std::optional<double> currentValue;
        std::int32_t touches = 0;
    };

    /// The registered parameter; a violation and null when there is none.
    Parameter* requireRegistered(AAX_CParamID paramID, const char* operation);
    bool requireNormalized(AAX_CParamID paramID, double value, const char* operation) const;
    void report(Contract contract, const std::string& text) const;
    template<class Call>
    void notify(Call call);

    InstanceState& mState;
    std::vector<AutomationListener*> mListeners; ///< Null in the place of one removed within a call.
    int mNotifications = 0;                      ///< Calls of listeners under way, one within another.
    std::map<std::string, Parameter, std::less<>> mParameters; ///< All parameters that were ever registered.
    std::vector<ValueRequest> mRequests;
    std::int64_t mTotalTouches = 0;
};

} // namespace varno

#endif
