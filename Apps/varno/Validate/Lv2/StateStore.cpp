#include "Validate/Lv2/StateStore.h"

#include <string>

namespace varno::validate {

LV2_State_Status StateStore::save(LV2_Handle plugin, const LV2_State_Interface& interface,
                                  const LV2_Feature* const* features) {
    return interface.save == nullptr
               ? LV2_STATE_SUCCESS
               : interface.save(plugin, store, this, LV2_STATE_IS_POD | LV2_STATE_IS_PORTABLE, features);
}

LV2_State_Status StateStore::restore(LV2_Handle plugin, const LV2_State_Interface& interface,
                                     const LV2_Feature* const* features) {
    return interface.restore == nullptr ? LV2_STATE_SUCCESS
                                        : interface.restore(plugin, retrieve, this, 0, features);
}

LV2_State_Status StateStore::store(LV2_State_Handle handle, std::uint32_t key, const void* value,
                                   std::size_t size, std::uint32_t type, std::uint32_t flags) {
    const StateStore& self = *static_cast<StateStore*>(handle);
    if (self.mHook) {
        self.mHook();
    }
    const char* const keyUri = self.mNumbers.uriOf(key);
    const char* const typeUri = self.mNumbers.uriOf(type);
    if (keyUri == nullptr || typeUri == nullptr || (value == nullptr && size > 0)) {
        return LV2_STATE_ERR_UNKNOWN;
    }
    const auto* const begin = static_cast<const std::byte*>(value);
    self.mState.properties[keyUri] = {typeUri, flags, {begin, begin + size}};
    return LV2_STATE_SUCCESS;
}

const void* StateStore::retrieve(LV2_State_Handle handle, std::uint32_t key, std::size_t* size,
                                 std::uint32_t* type, std::uint32_t* flags) {
    const StateStore& self = *static_cast<StateStore*>(handle);
    if (self.mHook) {
        self.mHook();
    }
    const char* const keyUri = self.mNumbers.uriOf(key);
    const auto found = self.mState.properties.find(keyUri == nullptr ? "" : keyUri);
    if (found == self.mState.properties.end()) {
        return nullptr;
    }
    const auto put = [](auto* to, auto value) {
        if (to != nullptr) {
            *to = value;
        }
    };
    put(size, found->second.value.size());
    put(type, self.mNumbers.numberOf(found->second.type));
    put(flags, found->second.flags);
    static constexpr std::byte kNothing{};
    return found->second.value.empty() ? &kNothing : found->second.value.data();
}

} // namespace varno::validate
