#ifndef VARNO_APPS_VARNO_COMMANDLINE_JSON_H
#define VARNO_APPS_VARNO_COMMANDLINE_JSON_H

#include <concepts>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace varno {

/// A value that a command prints for scripts. Plain data, so that one file alone compiles the JSON library.
class Json {
public:
    using Array = std::vector<Json>;
    /// The keys are printed in this order.
    using Object = std::vector<std::pair<std::string, Json>>;
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string, Array, Object>;

    // Implicit, so that objects and arrays can be written as lists of plain values.
    Json() = default; ///< Null.
    Json(bool value)
        : mValue(value) {}
    template<std::integral Integer>
    Json(Integer value)
        : mValue(static_cast<std::int64_t>(value)) {}
    Json(double value)
        : mValue(value) {}
    Json(const char* text)
        : mValue(std::string(text)) {}
    Json(std::string text)
        : mValue(std::move(text)) {}
    Json(Array array)
        : mValue(std::move(array)) {}
    Json(Object object)
        : mValue(std::move(object)) {}

    const Value& value() const { return mValue; }

private:
    Value mValue;
};

/// An array with one element for each item of a range. @param convert makes the element of an item
template<class Range, class Convert = std::identity>
Json::Array jsonArray(const Range& range, Convert convert = {}) {
    Json::Array array;
    for (const auto& item : range) {
        array.emplace_back(convert(item));
    }
    return array;
}

/// The value over several lines, indented, ended by a line feed. What is not UTF-8 in its texts, as in names
/// of files, is replaced.
std::string jsonText(const Json& json);

/// The same on one line.
std::string jsonLine(const Json& json);

/// The object that a text is, as scripts gave it back to us; nothing where it is none.
std::optional<Json::Object> jsonObject(const std::string& text);

} // namespace varno

#endif
