/// Values of parameters as events from a host and to it.
#ifndef VARNO_FORMATS_CLAP_VALUEEVENTS_H
#define VARNO_FORMATS_CLAP_VALUEEVENTS_H

#include "CLAP/Clap/Plugin.h"
#include "CLAP/ParameterList.h"
#include "CLAP/ValueExchange.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace varno {

/// Sets the value of an event, for the window to hear of. Of all events only values count: modulation is not
/// offered, and so not applied. A value beyond its range is limited; one that is no finite number, or of no
/// parameter, is left out. @return the parameter's place; nothing where nothing was set [audio]
std::optional<std::size_t> receiveEvent(const clap_event_header_t& event, const ParameterList& parameters,
                                        ValueExchange& values) noexcept;

/// Hands the host what the window has changed: for each parameter the begin of a gesture, the value, the end
/// of the gesture. What finds no room is handed over with the next call. [audio]
class EventSender {
public:
    explicit EventSender(std::size_t parameters)
        : mIsTouched(parameters) {}

    /// @param out may be null
    void send(const ParameterList& parameters, ValueExchange& values,
              const clap_output_events_t* out) noexcept;

private:
    struct Present {
        clap_id id;
        double value;
    };

    std::uint32_t sendOne(const clap_output_events_t& out, std::size_t index, const Present& present,
                          std::uint32_t changes) noexcept;

    std::vector<char> mIsTouched; ///< As the host was told.
};

} // namespace varno

#endif
