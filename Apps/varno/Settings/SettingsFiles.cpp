#include "Settings/SettingsFiles.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Files/Transfer.h"
#include "Host/HostError.h"

#include <algorithm>
#include <optional>
#include <span>
#include <sstream>
#include <utility>

namespace varno {
namespace {

// Far more than any preset has.
constexpr std::size_t kMostPresetBytes = 64 * 1024;

// Far more than any state has.
constexpr std::size_t kMostStateBytes = 1024 * 1024;

// The content of a file that is known to be small. More than `mostBytes` is refused, so that a file of
// another kind is not read whole. Throws FileError where it cannot be read, WorkError with what was
// expected ("a preset") where it is empty or too large.
std::string readSmallFile(const std::string& path, std::size_t mostBytes, const std::string& expected) {
    std::optional<std::string> content = readWhole(path, mostBytes, throwIfInterrupted);
    if (!content) {
        throw WorkError(path + ": has more than " + std::to_string(mostBytes) + " bytes; expected " +
                        expected);
    }
    if (content->empty()) {
        throw WorkError(path + ": is empty; expected " + expected);
    }
    return std::move(*content);
}

// The line after those of the settings: the header's and one for each item that ends a line.
std::string lineAfterSettings(const std::string& text) {
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
    preset.purpose = lineAfterSettings(preset.text);
    return preset;
}

StoredChunk readState(const std::string& path) {
    const std::string content = readSmallFile(path, kMostStateBytes, "a saved state");
    try {
        return StoredChunk::fromBytes(std::as_bytes(std::span(content)));
    } catch (const HostError& error) {
        throw WorkError(path + ": " + error.what());
    }
}

std::string presetText(Instance& instance) {
    return DemoGain_PresetText::Write(instance.dataModel());
}

std::string stateBytes(Instance& instance) {
    const auto bytes = instance.save().toBytes();
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace varno
