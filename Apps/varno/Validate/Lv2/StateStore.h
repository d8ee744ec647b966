/// What an LV2 plug-in stores and is given back.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_STATESTORE_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_STATESTORE_H

#include "Validate/Lv2/HostSide.h"
#include "Validate/Lv2/StateRecord.h"

#include <functional>
#include <utility>

#include <lv2/core/lv2.h>
#include <lv2/state/state.h>

namespace varno::validate {

/// The host's side of saving and restoring the properties of a state. [main]
class StateStore {
public:
    /// @param numbers,state outlive this object
    /// @param hook called within every call of the plug-in's; may be empty
    StateStore(UriNumbers& numbers, Lv2State& state, std::function<void()> hook = {})
        : mNumbers(numbers),
          mState(state),
          mHook(std::move(hook)) {}

    /// Takes what the plug-in stores.
    LV2_State_Status save(LV2_Handle plugin, const LV2_State_Interface& interface,
                          const LV2_Feature* const* features);
    /// Gives back what there is.
    LV2_State_Status restore(LV2_Handle plugin, const LV2_State_Interface& interface,
                             const LV2_Feature* const* features);

private:
    static LV2_State_Status store(LV2_State_Handle self, std::uint32_t key, const void* value,
                                  std::size_t size, std::uint32_t type, std::uint32_t flags);
    static const void* retrieve(LV2_State_Handle self, std::uint32_t key, std::size_t* size,
                                std::uint32_t* type, std::uint32_t* flags);

    UriNumbers& mNumbers;
    Lv2State& mState;
    std::function<void()> mHook;
};

} // namespace varno::validate

#endif
