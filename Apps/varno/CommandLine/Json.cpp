#include "CommandLine/Json.h"

#include <nlohmann/json.hpp>

#include <type_traits>

namespace varno {
namespace {

using LibraryJson = nlohmann::ordered_json;

constexpr int kJsonIndent = 2;
constexpr int kOneLine = -1; // all on one line

LibraryJson toLibrary(const Json& json) {
    return std::visit(
        [](const auto& value) -> LibraryJson {
            using Type = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Type, Json::Array>) {
                auto array = LibraryJson::array();
                for (const auto& element : value) {
                    array.push_back(toLibrary(element));
                }
                return array;
            } else if constexpr (std::is_same_v<Type, Json::Object>) {
                auto object = LibraryJson::object();
                for (const auto& [key, element] : value) {
                    object[key] = toLibrary(element);
                }
                return object;
            } else {
                return value;
            }
        },
        json.value());
}

Json fromLibrary(const LibraryJson& json) {
    if (json.is_object()) {
        Json::Object object;
        for (const auto& [key, element] : json.items()) {
            object.emplace_back(key, fromLibrary(element));
        }
        return object;
    }
    if (json.is_array()) {
        return jsonArray(json, fromLibrary);
    }
    if (json.is_string()) {
        return json.get<std::string>();
    }
    if (json.is_boolean()) {
        return json.get<bool>();
    }
    if (json.is_number_integer()) {
        return json.get<std::int64_t>();
    }
    return json.is_number() ? Json(json.get<double>()) : Json();
}

} // namespace

std::string jsonText(const Json& json) {
    return toLibrary(json).dump(kJsonIndent, ' ', false, LibraryJson::error_handler_t::replace) + '\n';
}

std::string jsonLine(const Json& json) {
    return toLibrary(json).dump(kOneLine, ' ', false, LibraryJson::error_handler_t::replace) + '\n';
}

std::optional<Json::Object> jsonObject(const std::string& text) {
    const auto json = LibraryJson::parse(text, nullptr, false);
    if (!json.is_object()) {
        return std::nullopt;
    }
    return std::get<Json::Object>(fromLibrary(json).value());
}

} // namespace varno
