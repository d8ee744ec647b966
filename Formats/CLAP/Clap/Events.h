/// Records of events as hosts and plug-ins send them.
#ifndef VARNO_FORMATS_CLAP_CLAP_EVENTS_H
#define VARNO_FORMATS_CLAP_CLAP_EVENTS_H

#include "CLAP/Clap/Plugin.h"

#include <cstdint>

namespace varno {

/// The head of an event of CLAP's own space. @param frame in the buffer
template<class Event>
constexpr clap_event_header_t clapEventHeader(std::uint16_t type, std::uint32_t frame = 0) noexcept {
    return {sizeof(Event), frame, CLAP_CORE_EVENT_SPACE_ID, type, 0};
}

/// A value of a parameter, for all notes. @param frame in the buffer @param cookie the parameter's own
constexpr clap_event_param_value_t clapValueEvent(clap_id parameter, double value, std::uint32_t frame = 0,
                                                  void* cookie = nullptr) noexcept {
    return {.header = clapEventHeader<clap_event_param_value_t>(CLAP_EVENT_PARAM_VALUE, frame),
            .param_id = parameter,
            .cookie = cookie,
            .note_id = -1,
            .port_index = -1,
            .channel = -1,
            .key = -1,
            .value = value};
}

/// The begin or the end of a gesture.
constexpr clap_event_param_gesture_t clapGestureEvent(clap_id parameter, bool isBegin) noexcept {
    const std::uint16_t type = isBegin ? CLAP_EVENT_PARAM_GESTURE_BEGIN : CLAP_EVENT_PARAM_GESTURE_END;
    return {clapEventHeader<clap_event_param_gesture_t>(type), parameter};
}

} // namespace varno

#endif
