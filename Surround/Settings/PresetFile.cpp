#include "Surround/Settings/PresetFile.h"

#include "Surround/Settings/Characters.h"
#include "Surround/Settings/PathText.h"
#include "Surround/Settings/TextReading.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace varno {
namespace {

namespace fs = std::filesystem;

// "drum-bus" as people read it: "Drum Bus".
std::string inWords(std::string name) {
    bool startsWord = true;
    for (char& letter : name) {
        if (letter == '-') {
            letter = ' ';
        } else if (startsWord) {
            letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        }
        startsWord = letter == ' ';
    }
    return name;
}

// What a text has behind the header and the lines of the settings.
std::string noteOf(std::string_view text) {
    auto lines =
        1 + std::ranges::count_if(DemoGain_PresetText::kItems, &DemoGain_PresetText::Item::mEndsLine);
    while (lines-- > 0) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) {
            return {};
        }
        text.remove_prefix(end + 1);
    }
    return std::string(text);
}

void readInto(PresetEntry& entry) {
    const TextFile file = readTextFile(entry.path);
    entry.damage = file.refusal;
    if (!entry.damage.empty()) {
        return;
    }
    const auto values = DemoGain_PresetText::Parse(file.text);
    if (!values) {
        entry.damage = file.text.empty() ? "is empty" : "is no preset";
        return;
    }
    entry.values = limitedSettings(*values);
    entry.note = noteOf(file.text);
}

} // namespace

PresetEntry namedEntry(const fs::path& path, bool isFactory) {
    PresetEntry entry;
    entry.name = safeText(textOfPath(path.extension() == kPresetSuffix ? path.stem() : path.filename()));
    entry.name = isFactory ? inWords(entry.name) : entry.name;
    entry.path = path;
    entry.isFactory = isFactory;
    return entry;
}

PresetEntry readPreset(const fs::path& file, bool isFactory) {
    PresetEntry entry = namedEntry(file, isFactory);
    readInto(entry);
    return entry;
}

} // namespace varno
