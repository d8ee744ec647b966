#include "Host/HostAutomation.h"

#include "Host/InstanceHost.h"

#include <algorithm>
#include <utility>

namespace varno {

namespace {

std::string named(AAX_CParamID paramID) {
    std::string text = "parameter ";
    text += paramID == nullptr ? "null" : paramID;
    return text;
}

} // namespace

HostAutomation::HostAutomation(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

void HostAutomation::report(Contract contract, const std::string& text) const {
    mState.context->monitor->report(contract, text);
}

void HostAutomation::addListener(AutomationListener& listener) {
    mListeners.push_back(&listener);
}

void HostAutomation::removeListener(AutomationListener& listener) {
    std::ranges::replace(mListeners, &listener, nullptr);
    if (mNotifications == 0) {
        std::erase(mListeners, nullptr);
    }
}

// By place: a listener may add and remove some within its call. Places are freed after the last one.
template<class Call>
void HostAutomation::notify(Call call) {
    ++mNotifications;
    const std::size_t count = mListeners.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (mListeners[i] != nullptr) {
            call(*mListeners[i]);
        }
    }
    if (--mNotifications == 0) {
        std::erase(mListeners, nullptr);
    }
}

HostAutomation::Parameter* HostAutomation::requireRegistered(AAX_CParamID paramID, const char* operation) {
    mState.gate.check(operation);
    if (paramID != nullptr) {
        const auto found = mParameters.find(std::string_view(paramID));
        if (found != mParameters.end() && found->second.isRegistered) {
            return &found->second;
        }
    }
    report(Contract::kParameters,
           std::string(operation) + " of " + named(paramID) + ", which is not registered");
    return nullptr;
}

bool HostAutomation::requireNormalized(AAX_CParamID paramID, double value, const char* operation) const {
    if (value >= 0.0 && value <= 1.0) {
        return true;
    }
    report(Contract::kParameters, std::string(operation) + " of " + named(paramID) + " with " +
                                      std::to_string(value) + ", expected 0 to 1");
    return false;
}

AAX_Result HostAutomation::RegisterParameter(AAX_CParamID paramID) {
    mState.gate.check("RegisterParameter");
    if (paramID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mParameters[paramID].isRegistered = true;
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::UnregisterParameter(AAX_CParamID paramID) {
    Parameter* const parameter = requireRegistered(paramID, "UnregisterParameter");
    if (parameter == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    parameter->isRegistered = false;
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) {
    if (requireRegistered(paramID, "PostSetValueRequest") == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (!requireNormalized(paramID, normalizedValue, "PostSetValueRequest")) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    notify([&](AutomationListener& listener) { listener.valueRequested(paramID, normalizedValue); });
    request({paramID, normalizedValue});
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostCurrentValue(AAX_CParamID paramID, double normalizedValue) {
    Parameter* const parameter = requireRegistered(paramID, "PostCurrentValue");
    if (parameter == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (!requireNormalized(paramID, normalizedValue, "PostCurrentValue")) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    parameter->currentValue = normalizedValue;
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostTouchRequest(AAX_CParamID paramID) {
    Parameter* const parameter = requireRegistered(paramID, "PostTouchRequest");
    if (parameter == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    ++parameter->touches;
    ++mTotalTouches;
    notify([&](AutomationListener& listener) { listener.touched(paramID); });
    return AAX_SUCCESS;
}

AAX_Result HostAutomation::PostReleaseRequest(AAX_CParamID paramID) {
    Parameter* const parameter = requireRegistered(paramID, "PostReleaseRequest");
    if (parameter == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (parameter->touches == 0) {
        report(Contract::kTouch, named(paramID) + " released without a touch");
        return AAX_SUCCESS;
    }
    --parameter->touches;
    notify([&](AutomationListener& listener) { listener.released(paramID); });
    return AAX_SUCCESS;
}

std::vector<ValueRequest> HostAutomation::takeRequests() {
    return std::exchange(mRequests, {});
}

void HostAutomation::recycle(std::vector<ValueRequest> answered) {
    if (mRequests.empty()) {
        answered.clear();
        mRequests = std::move(answered);
    }
}

std::set<std::string> HostAutomation::registered() const {
    std::set<std::string> ids;
    for (const auto& [id, parameter] : mParameters) {
        if (parameter.isRegistered) {
            ids.insert(id);
        }
    }
    return ids;
}

std::optional<double> HostAutomation::requestedValue(std::string_view id) const {
    const auto found = std::find_if(mRequests.rbegin(), mRequests.rend(),
                                    [&](const ValueRequest& queued) { return queued.id == id; });
    return found == mRequests.rend() ? std::nullopt : std::optional(found->normalized);
}

std::optional<double> HostAutomation::currentValue(const std::string& id) const {
    const auto found = mParameters.find(id);
    return found == mParameters.end() ? std::nullopt : found->second.currentValue;
}

std::int32_t HostAutomation::touches(const std::string& id) const {
    const auto found = mParameters.find(id);
    return found == mParameters.end() ? 0 : found->second.touches;
}

void HostAutomation::reportOpenTouches() const {
    for (const auto& [id, parameter] : mParameters) {
        if (parameter.touches > 0) {
            report(Contract::kTouch, named(id.c_str()) + " touched " + std::to_string(parameter.touches) +
                                         " times more than released at the end of the instance");
        }
    }
}

} // namespace varno
