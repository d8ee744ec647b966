#include "CLAP/ValueEvents.h"

#include "CLAP/Clap/Events.h"

#include <cmath>

namespace varno {

namespace {

using Change = ValueExchange::Change;

constexpr std::uint32_t kOfHost = Change::kForHost | Change::kTouched;

bool sendGesture(const clap_output_events_t& out, clap_id id, bool isBegin) noexcept {
    const clap_event_param_gesture_t event = clapGestureEvent(id, isBegin);
    return out.try_push(&out, &event.header);
}

bool sendValue(const clap_output_events_t& out, clap_id id, double value) noexcept {
    const clap_event_param_value_t event = clapValueEvent(id, value);
    return out.try_push(&out, &event.header);
}

} // namespace

std::optional<std::size_t> receiveEvent(const clap_event_header_t& event, const ParameterList& parameters,
                                        ValueExchange& values) noexcept {
    if (event.space_id != CLAP_CORE_EVENT_SPACE_ID || event.type != CLAP_EVENT_PARAM_VALUE ||
        event.size < sizeof(clap_event_param_value_t)) {
        return std::nullopt;
    }
    const auto& change = reinterpret_cast<const clap_event_param_value_t&>(event);
    const std::optional<std::size_t> index = parameters.indexOf(change.param_id);
    if (!index || !std::isfinite(change.value)) {
        return std::nullopt;
    }
    values.set(*index, normalizedOf(parameters[*index], change.value, values.value(*index)),
               Change::kForWindow);
    return index;
}

void EventSender::send(const ParameterList& parameters, ValueExchange& values,
                       const clap_output_events_t* out) noexcept {
    if (out == nullptr || !values.takeAny(kOfHost)) {
        return;
    }
    for (std::size_t index = 0; index < parameters.size(); ++index) {
        const std::uint32_t changes = values.take(index, kOfHost | Change::kHeld);
        const double value = hostValueOf(parameters[index], values.value(index));
        if (const std::uint32_t left = sendOne(*out, index, {parameters[index].id, value}, changes)) {
            values.mark(index, left);
        }
    }
}

// Returns what found no room.
std::uint32_t EventSender::sendOne(const clap_output_events_t& out, std::size_t index, const Present& present,
                                   std::uint32_t changes) noexcept {
    char& isTouched = mIsTouched[index];
    if ((changes & Change::kTouched) != 0 && isTouched == 0) {
        if (!sendGesture(out, present.id, true)) {
            return changes & kOfHost;
        }
        isTouched = 1;
    }
    if ((changes & Change::kForHost) != 0 && !sendValue(out, present.id, present.value)) {
        return Change::kForHost;
    }
    if ((changes & Change::kHeld) == 0 && isTouched != 0) {
        if (!sendGesture(out, present.id, false)) {
            return Change::kTouched; // has it called again
        }
        isTouched = 0;
    }
    return 0;
}

} // namespace varno
