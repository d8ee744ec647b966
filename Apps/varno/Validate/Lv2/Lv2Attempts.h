/// What hosts may try with an LV2 plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_LV2ATTEMPTS_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_LV2ATTEMPTS_H

#include "Validate/Lv2/HostSide.h"
#include "Validate/Plugin.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <lilv/lilv.h>
#include <span>
#include <vector>

namespace varno::validate {

/// A running plug-in, for as long as it lives. An extension that it lacks is null.
struct Lv2Use {
    const LilvPlugin* plugin = nullptr;
    LilvInstance* instance = nullptr;
    UriNumbers* numbers = nullptr;
    HostSide* host = nullptr;
    const LV2_Worker_Interface* worker = nullptr;
    const LV2_State_Interface* state = nullptr;
    double rateHz = 0.0;
    std::int32_t mostFrames = 0;
    bool takesEvents = false;
    /// A buffer of silence with a sequence of events at each of the inputs for them.
    std::function<void(std::span<const std::byte> sequence)> run;
    std::function<void(bool isMost)> setAll; ///< Each control to its most, or to its default.
};

/// Extensions, options, features and events that there are not.
std::vector<Attempt> unknownIdentifiers(const Lv2Use& use);
/// Properties of others, and the own ones of types of others.
std::vector<Attempt> foreignStates(const Lv2Use& use);
/// With a host that calls the plug-in while it stores, retrieves or asks for work.
std::vector<Attempt> callsFromWithin(const Lv2Use& use);

} // namespace varno::validate

#endif
