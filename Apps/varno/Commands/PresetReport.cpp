#include "PresetReport.h"

#include "TextTable.h"

#include <nlohmann/json.hpp>

namespace varno {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonIndent = 2;

Json toJson(const NamedPreset& preset) {
    return {{"name", preset.name}, {"purpose", preset.file.purpose}};
}

} // namespace

std::string presetsText(const std::vector<NamedPreset>& presets) {
    TextTable table({{"NAME", Align::kLeft}, {"FOR", Align::kLeft}});
    for (const auto& preset : presets) {
        table.addRow({preset.name, preset.file.purpose});
    }
    return table.text();
}

std::string presetsJson(const std::vector<NamedPreset>& presets) {
    Json array = Json::array();
    for (const auto& preset : presets) {
        array.push_back(toJson(preset));
    }
    return array.dump(kJsonIndent) + '\n';
}

std::string presetReportText(const NamedPreset& preset, const Instance& instance) {
    TextTable table({{"ID", Align::kLeft}, {"NAME", Align::kLeft}, {"VALUE", Align::kLeft}});
    for (const auto& item : DemoGain_PresetText::kItems) {
        table.addRow({item.mParameterID, item.mLabel, instance.text(item.mParameterID)});
    }
    const std::string& text = preset.file.text;
    return text + (text.ends_with('\n') ? "\n" : "\n\n") + table.text();
}

std::string presetReportJson(const NamedPreset& preset, const Instance& instance) {
    Json json = toJson(preset);
    json["text"] = preset.file.text;
    json["parameters"] = Json::array();
    for (const auto& item : DemoGain_PresetText::kItems) {
        json["parameters"].push_back({{"id", item.mParameterID},
                                      {"label", item.mLabel},
                                      {"value", instance.normalized(item.mParameterID)},
                                      {"text", instance.text(item.mParameterID)}});
    }
    return json.dump(kJsonIndent) + '\n';
}

} // namespace varno
