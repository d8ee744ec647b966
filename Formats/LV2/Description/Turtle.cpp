#include "LV2/Description/Turtle.h"

#include <array>
#include <charconv>

namespace varno {

namespace {

struct Prefix {
    const char* name;
    const char* uri;
};

constexpr Prefix kPrefixes[] = {
    {"doap", "http://usefulinc.com/ns/doap#"},
    {"foaf", "http://xmlns.com/foaf/0.1/"},
    {"lv2", "http://lv2plug.in/ns/lv2core#"},
    {"pg", "http://lv2plug.in/ns/ext/port-groups#"},
    {"pprops", "http://lv2plug.in/ns/ext/port-props#"},
    {"pset", "http://lv2plug.in/ns/ext/presets#"},
    {"rdf", "http://www.w3.org/1999/02/22-rdf-syntax-ns#"},
    {"rdfs", "http://www.w3.org/2000/01/rdf-schema#"},
    {"ui", "http://lv2plug.in/ns/extensions/ui#"},
    {"units", "http://lv2plug.in/ns/extensions/units#"},
};

} // namespace

std::string turtlePrefixes() {
    std::string text;
    for (const Prefix& prefix : kPrefixes) {
        text.append("@prefix ").append(prefix.name).append(": ").append(turtleUri(prefix.uri)).append(" .\n");
    }
    return text + '\n';
}

std::string turtleText(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') {
            quoted += '\\';
        }
        quoted += character == '\n' ? ' ' : character;
    }
    return quoted + '"';
}

std::string turtleUri(std::string_view uri) {
    std::string text = "<";
    return text.append(uri).append(">");
}

std::string turtleDecimal(float value) {
    std::array<char, 64> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed).ptr;
    std::string text(digits.data(), end);
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

void TurtleSubject::add(std::string_view predicate, std::string_view objects) {
    mText.append(mIsEmpty ? "\n\t" : " ;\n\t").append(predicate).append(" ").append(objects);
    mIsEmpty = false;
}

void TurtleSubject::add(std::string_view predicate, const std::vector<std::string>& objects) {
    std::string joined;
    for (const std::string& object : objects) {
        joined += (joined.empty() ? "" : " , ") + object;
    }
    if (!joined.empty()) {
        add(predicate, joined);
    }
}

} // namespace varno
