#include "PresetFile.h"

#include "CommandError.h"
#include "SmallFile.h"

#include <algorithm>
#include <sstream>

namespace varno {
namespace {

// Far more than any preset has; a file of another kind is not read further.
constexpr std::size_t kMostPresetBytes = 64 * 1024;

// The line behind those that the settings take: the header's and one for each item that ends one.
std::string lineBehindSettings(const std::string& text) {
    const auto settingsLines =
        1 + std::ranges::count_if(DemoGain_PresetText::kItems, &DemoGain_PresetText::Item::mEndsLine);
    std::istringstream lines(text);
    std::string line;
    for (std::ptrdiff_t i = 0; i < settingsLines; ++i) {
        std::getline(lines, line);
    }
    return std::getline(lines, line) ? line : std::string();
}

} // namespace

PresetFile readPresetFile(const std::string& path) {
    PresetFile preset;
    preset.text = readSmallFile(path, kMostPresetBytes, "a preset");
    const auto values = DemoGain_PresetText::Parse(preset.text);
    if (!values) {
        throw WorkError(path + ": is no preset; expected a word, a version from 030001 on and " +
                        std::to_string(std::size(DemoGain_PresetText::kItems)) +
                        " values, each behind a label");
    }
    preset.values = *values;
    preset.purpose = lineBehindSettings(preset.text);
    return preset;
}

} // namespace varno
