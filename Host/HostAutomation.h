/// The host's automation of an instance's parameters.
#ifndef HOSTAUTOMATION_H
#define HOSTAUTOMATION_H

#include "AAX_IACFAutomationDelegate.h"
#include "HostObject.h"
#include "InstanceState.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace varno {

/// A value that somebody wants a parameter to have.
struct ValueRequest {
    std::string id;
    double normalized = 0.0;
};

/// Automation delegate version 1: keeps requests until the instance answers them, counts gestures. [main]
class HostAutomation final : public Facet<AAX_IACFAutomationDelegate> {
public:
    HostAutomation(IACFUnknown& owner, InstanceState& state);

    AAX_Result RegisterParameter(AAX_CParamID paramID) override;
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override;
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override;
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override;

    /// Queues a request of the host's own.
    void request(ValueRequest request) { mRequests.push_back(std::move(request)); }
    /// Hands over all requests in their order and forgets them.
    std::vector<ValueRequest> takeRequests();
    /// The registered parameters.
    const std::set<std::string>& registered() const { return mRegistered; }
    /// The value that a parameter has told last; nothing if it never did.
    std::optional<double> currentValue(const std::string& id) const;
    /// Open gestures on a parameter.
    int32_t touches(const std::string& id) const;
    /// All touches since the start, so that a host can tell a gesture from automation.
    int64_t totalTouches() const { return mTotalTouches; }
    /// Reports every gesture that is still open.
    void reportOpenTouches() const;

private:
    bool requireRegistered(AAX_CParamID paramID, const char* operation) const;
    bool requireNormalized(AAX_CParamID paramID, double value, const char* operation) const;
    void report(Contract contract, const std::string& text) const;

    InstanceState& mState;
    std::set<std::string> mRegistered;
    std::map<std::string, double> mCurrentValues;
    std::map<std::string, int32_t> mTouches;
    std::vector<ValueRequest> mRequests;
    int64_t mTotalTouches = 0;
};

} // namespace varno

#endif
