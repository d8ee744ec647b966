#include "Surround/Settings/UserPreferences.h"

#include "Files/AtomicFile.h"
#include "Surround/Settings/TextFile.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSizeKey = "size";
constexpr std::string_view kCurveKey = "curve";
constexpr const char* kShown = "shown";
constexpr const char* kHidden = "hidden";
constexpr std::string_view kGaps = " \t\r";

std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// The first word of a line and what follows it, without blanks around.
struct KeyAndValue {
    std::string_view key;
    std::string_view value;
};

KeyAndValue split(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(kGaps), line.size()));
    line.remove_suffix(line.size() - std::min(line.find_last_not_of(kGaps) + 1, line.size()));
    const std::size_t end = std::min(line.find_first_of(kGaps), line.size());
    std::string_view value = line.substr(end);
    value.remove_prefix(std::min(value.find_first_not_of(kGaps), value.size()));
    return {line.substr(0, end), value};
}

} // namespace

UserPreferences::UserPreferences(fs::path file)
    : mFile(std::move(file)) {
    reread();
}

void UserPreferences::reread() {
    if (mFile.empty()) {
        return;
    }
    const TextFile content = readTextFile(mFile);
    if (content.refusal.empty()) {
        mLines = linesOf(content.text);
    }
}

std::optional<double> UserPreferences::size() const {
    const std::string text = valueOf(kSizeKey);
    double size = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && std::ranges::find(kWindowSizes, size) != kWindowSizes.end() ? std::optional(size)
                                                                                   : std::nullopt;
}

void UserPreferences::setSize(double size) {
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), size);
    set(kSizeKey, std::string_view(text.data(), static_cast<std::size_t>(written.ptr - text.data())));
}

bool UserPreferences::isCurveShown() const {
    return valueOf(kCurveKey) == kShown;
}

void UserPreferences::setCurveShown(bool isShown) {
    set(kCurveKey, isShown ? kShown : kHidden);
}

std::string UserPreferences::valueOf(std::string_view key) const {
    const auto found =
        std::ranges::find_if(mLines, [&](const std::string& line) { return split(line).key == key; });
    return found == mLines.end() ? std::string() : std::string(split(*found).value);
}

void UserPreferences::set(std::string_view key, std::string_view value) {
    reread();
    const auto isOfKey = [&](const std::string& line) { return split(line).key == key; };
    std::string line = std::string(key).append(" ").append(value);
    const auto found = std::ranges::find_if(mLines, isOfKey);
    if (found == mLines.end()) {
        mLines.push_back(std::move(line));
    } else {
        *found = std::move(line);
    }
    if (!mFile.empty()) {
        std::string text;
        for (const std::string& kept : mLines) {
            text += kept + '\n';
        }
        writeTextFile(mFile, text, Overwrite::kReplace);
    }
}

} // namespace varno
