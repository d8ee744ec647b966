/// The state of an LV2 plug-in as bytes.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_STATERECORD_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_STATERECORD_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varno::validate {

/// A value that a plug-in has stored, by its key.
struct StoredProperty {
    std::string type; ///< A URI.
    std::uint32_t flags = 0;
    std::vector<std::byte> value;
    bool operator==(const StoredProperty&) const = default;
};

/// What a host keeps: the values of control ports by symbol, and what the plug-in has stored by URI.
struct Lv2State {
    std::map<std::string, float> values;
    std::map<std::string, StoredProperty> properties;
    bool operator==(const Lv2State&) const = default;
};

/// Equal states give equal bytes. The last property's value is what remains of them, so that bytes that are
/// cut off or follow reach the plug-in.
std::vector<std::byte> bytesOf(const Lv2State& state);
/// Nothing for bytes that no state gives.
std::optional<Lv2State> stateOf(std::span<const std::byte> bytes);

} // namespace varno::validate

#endif
