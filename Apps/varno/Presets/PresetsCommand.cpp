#include "Commands.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "Settings/FactoryPresets.h"
#include "Settings/ModuleLoading.h"
#include "Settings/ParameterValue.h"
#include "Settings/SettingsFiles.h"

#include <filesystem>

namespace varno {
namespace {

constexpr std::string_view kPresetsUsage[] = {"[OPTIONS]", "[OPTIONS] NAME|FILE"};
constexpr std::string_view kPresetsDescription[] = {
    "Lists the presets that come with the effect, and what each is for. With a NAME or a FILE it prints that "
    "preset, which is a preset again when it goes to a file, and its values as the parameters show them."};
constexpr ArgumentEntry kPresetsArguments[] = {
    {.name = "NAME|FILE",
     .kind = ValueKind::kPreset,
     .help =
         "A factory preset by its name, in capitals or not, or a preset's file. What has a dot or a slash "
         "is a file."}};
constexpr OptionEntry kPresetsOptions[] = {
    kJsonOption,
    {.name = "--names", .group = "Reports", .help = "Print the names alone, one per line."},
    kModuleOption,
    kHelpOption,
};
constexpr ExampleEntry kPresetsExamples[] = {
    {"varno presets drum-bus", "What a preset holds."},
    {"varno render --preset drum-bus drums.wav drums-bus.wav", "Apply one."},
    {"varno presets drum-bus > my-drums.txt", "A copy to be changed, for --preset my-drums.txt."},
};

// A preset with what its file holds.
struct NamedPreset {
    std::string name;
    PresetFile file;
};

Json::Object presetSummary(const NamedPreset& preset) {
    return {{"name", preset.name}, {"purpose", preset.file.purpose}};
}

std::string presetsText(const std::vector<NamedPreset>& presets) {
    TextTable table({{"NAME", Align::kLeft}, {"FOR", Align::kLeft}});
    for (const auto& preset : presets) {
        table.addRow({preset.name, preset.file.purpose});
    }
    return table.text();
}

std::string presetsJson(const std::vector<NamedPreset>& presets) {
    return jsonText(jsonArray(presets, presetSummary));
}

// The text of a preset, which is a preset again, and its values as the parameters show them.
std::string presetReport(const NamedPreset& preset, const Instance& instance) {
    TextTable table(
        {{"ID", Align::kLeft}, {"NAME", Align::kLeft}, {"VALUE", Align::kLeft}, {"IN UNITS", Align::kLeft}});
    for (const auto& item : DemoGain_PresetText::kItems) {
        table.addRow({item.mParameterID, item.mLabel, instance.text(item.mParameterID),
                      trueText(instance, item.mParameterID)});
    }
    const std::string& text = preset.file.text;
    return text + (text.ends_with('\n') ? "\n" : "\n\n") + table.text();
}

std::string presetJson(const NamedPreset& preset, const Instance& instance) {
    const auto itemJson = [&](const auto& item) {
        return Json::Object{{"id", item.mParameterID},
                            {"label", item.mLabel},
                            {"value", instance.normalized(item.mParameterID)},
                            {"text", instance.text(item.mParameterID)},
                            {"true_text", trueText(instance, item.mParameterID)}};
    };
    Json::Object json = presetSummary(preset);
    json.emplace_back("text", preset.file.text);
    json.emplace_back("parameters", jsonArray(DemoGain_PresetText::kItems, itemJson));
    return jsonText(json);
}

std::string names(const std::vector<FactoryPreset>& presets) {
    std::string text;
    for (const auto& preset : presets) {
        text += preset.name + '\n';
    }
    return text;
}

std::string list(const CommandLine& line, const std::vector<FactoryPreset>& presets) {
    if (line.has("--names")) {
        return names(presets);
    }
    std::vector<NamedPreset> read;
    for (const auto& preset : presets) {
        read.push_back({preset.name, readPresetFile(preset.path)});
    }
    return line.has("--json") ? presetsJson(read) : presetsText(read);
}

void showOne(const CommandLine& line, const std::string& path) {
    const NamedPreset preset{std::filesystem::path(path).stem().string(), readPresetFile(path)};
    auto module = loadEffect(line);
    {
        Instance instance(module, InstanceSetup{});
        DemoGain_PresetText::Apply(preset.file.values, instance.dataModel());
        instance.idle();
        printOut(line.has("--json") ? presetJson(preset, instance) : presetReport(preset, instance));
    }
    unloadModule(std::move(module));
}

int runPresets(const CommandLine& line) {
    const auto presets = factoryPresets(moduleBundle(line));
    if (line.arguments().empty()) {
        printOut(list(line, presets));
    } else {
        showOne(line, presetPath(line.arguments().front(), presets));
    }
    return kExitSuccess;
}

} // namespace

CommandEntry presetsCommand() {
    return {.name = "presets",
            .summary = "List the factory presets, or show one",
            .usage = kPresetsUsage,
            .description = kPresetsDescription,
            .arguments = kPresetsArguments,
            .leastArguments = 0,
            .mostArguments = 1,
            .options = kPresetsOptions,
            .examples = kPresetsExamples,
            .run = runPresets};
}

} // namespace varno
