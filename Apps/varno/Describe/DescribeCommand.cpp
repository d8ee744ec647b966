#include "Commands.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "DemoGain_Oversampling.h"
#include "Describe/PageTableReport.h"
#include "Describe/PropertyText.h"
#include "Settings/ModuleLoading.h"
#include "Settings/Quality.h"
#include "Surround/Settings/NumberText.h"

#include <cinttypes>
#include <cstdio>

namespace varno {
namespace {

constexpr std::string_view kDescribeUsage[] = {"[OPTIONS]"};
constexpr std::string_view kDescribeDescription[] = {
    "Prints what the module reports to a host: names, identifiers, category, variants with every "
    "field of their processing context, properties, meters, procedures and resources. With --page-table it "
    "prints instead which parameters the module's page tables put on the controls of a control surface.",
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): a paragraph goes over several lines
    "The qualities are this program's own: at so many times the sample rate --quality computes, with this "
    "latency, at sample rates up to the one named."};
constexpr OptionEntry kDescribeOptions[] = {
    {.name = "--page-table",
     .group = "Reports",
     .help = "Print the page tables for control surfaces: page, slot, identifier and name of each parameter. "
             "Pages and slots count from 0."},
    kJsonOption,
    kModuleOption,
    kHelpOption,
};
constexpr ExampleEntry kDescribeExamples[] = {
    {"varno describe", "Everything, to be read."},
    {"varno describe --json | jq '.effects[].id'", "One thing, for a script."},
    {"varno describe --page-table", "The parameters on the pages of a control surface."},
};

constexpr int kTextColumn = 22;

std::string fact(std::string_view name, std::string_view text) {
    return termAndText(name, text, kTextColumn);
}

std::string joined(const std::vector<std::string>& texts) {
    std::string result;
    for (const auto& text : texts) {
        result.append(result.empty() ? "" : ", ").append(text);
    }
    return result;
}

std::string hexadecimal(std::uint64_t value) {
    char text[32];
    std::snprintf(text, sizeof text, "0x%" PRIx64, value);
    return text;
}

std::string propertyList(const Properties& properties) {
    std::vector<std::string> texts;
    for (const auto& [property, value] : properties) {
        const char* joint = isNamedProperty(property) ? " " : " = ";
        texts.push_back(propertyName(property) + joint + propertyText(property, value));
    }
    return joined(texts);
}

std::string codes(const std::vector<AAX_CTypeID>& ids) {
    std::vector<std::string> texts;
    for (const auto id : ids) {
        texts.push_back(codeText(id));
    }
    return joined(texts);
}

std::string fieldTable(const VariantDescription& variant) {
    TextTable table({{"  FIELD", Align::kRight},
                     {"KIND", Align::kLeft},
                     {"BYTES", Align::kRight},
                     {"OPTIONS", Align::kRight},
                     {"METERS", Align::kLeft}});
    for (const auto& field : variant.fields) {
        table.addRow({std::to_string(field.index), fieldKindName(field.kind), std::to_string(field.size),
                      std::to_string(field.options), codes(field.meterIDs)});
    }
    return table.text();
}

std::string variantText(const VariantDescription& variant) {
    std::string text = "\nVariant, " + std::to_string(variant.inputChannels()) + " in, " +
                       std::to_string(variant.outputChannels()) + " out\n";
    for (const auto& native : variant.natives) {
        text += fact("native routine", propertyList(native.properties));
    }
    for (const auto& ti : variant.tis) {
        text +=
            fact("TI routine", ti.dllName + ", entry " + ti.entryName + ", " + propertyList(ti.properties));
    }
    return text + fieldTable(variant);
}

std::string effectText(const EffectDescription& effect) {
    std::vector<std::string> categories;
    for (const auto category : effect.categories) {
        categories.push_back(categoryName(category));
    }
    std::string text = "\nEffect " + effect.id + '\n' + fact("names", joined(effect.names)) +
                       fact("categories", joined(categories));
    if (!effect.bypassParameters.empty()) {
        text += fact("category bypass", joined(effect.bypassParameters));
    }
    if (!effect.properties.empty()) {
        text += fact("properties", propertyList(effect.properties));
    }
    for (const auto& procedure : effect.procedures) {
        text += fact("procedure", procedureName(procedure.id));
    }
    for (const auto& resource : effect.resources) {
        text += fact("resource", resource.fileName + " (" + resourceName(resource.type) + ')');
    }
    for (const auto& meter : effect.meters) {
        text += fact("meter " + codeText(meter.id), meter.name + ", " + propertyList(meter.properties));
    }
    for (const auto& variant : effect.variants) {
        text += variantText(variant);
    }
    return text;
}

// Properties by number, since names are for people: {"13": "VDRm", "54": "2"}.
Json::Object propertiesJson(const Properties& properties) {
    Json::Object json;
    for (const auto& [property, value] : properties) {
        json.emplace_back(std::to_string(property), propertyText(property, value));
    }
    return json;
}

Json::Object fieldJson(const FieldDescription& field) {
    return {{"index", field.index},
            {"kind", fieldKindName(field.kind)},
            {"size", field.size},
            {"options", field.options},
            {"meters", jsonArray(field.meterIDs, codeText)}};
}

Json::Object nativeJson(const NativeRoutine& native) {
    return {{"init", native.init != nullptr},
            {"background", native.background != nullptr},
            {"properties", propertiesJson(native.properties)}};
}

Json::Object tiJson(const TiRoutine& ti) {
    return {{"file", ti.dllName}, {"entry", ti.entryName}, {"properties", propertiesJson(ti.properties)}};
}

Json::Object variantJson(const VariantDescription& variant) {
    return {{"inputs", variant.inputChannels()},
            {"outputs", variant.outputChannels()},
            {"native", jsonArray(variant.natives, nativeJson)},
            {"ti", jsonArray(variant.tis, tiJson)},
            {"fields", jsonArray(variant.fields, fieldJson)}};
}

Json::Object meterJson(const MeterDescription& meter) {
    return {
        {"id", codeText(meter.id)}, {"name", meter.name}, {"properties", propertiesJson(meter.properties)}};
}

Json::Object effectJson(const EffectDescription& effect) {
    return {
        {"id", effect.id},
        {"names", jsonArray(effect.names)},
        {"categories", jsonArray(effect.categories, categoryName)},
        {"category_bypass", jsonArray(effect.bypassParameters)},
        {"properties", propertiesJson(effect.properties)},
        {"procedures", jsonArray(effect.procedures, [](const auto& item) { return procedureName(item.id); })},
        {"resources",
         jsonArray(effect.resources,
                   [](const auto& item) {
                       return Json::Object{{"type", resourceName(item.type)}, {"file", item.fileName}};
                   })},
        {"meters", jsonArray(effect.meters, meterJson)},
        {"variants", jsonArray(effect.variants, variantJson)}};
}

// What the program makes of an effect's latency, and the highest sample rate of a sound.
struct QualityRow {
    std::int32_t factor;
    std::int32_t latencyFrames;
    double highestHz;
};

std::vector<QualityRow> qualityRows(const SampleRateRange& rates) {
    std::vector<QualityRow> rows;
    for (const std::int32_t factor : kOversamplingFactors) {
        rows.push_back(
            {factor, oversampledLatency(factor, kDemoGain_LatencyFrames), rates.highestHz / factor});
    }
    return rows;
}

std::string qualitiesText(const SampleRateRange& rates) {
    std::string text = "\nQualities of this program\n";
    for (const auto& [factor, latencyFrames, highestHz] : qualityRows(rates)) {
        text += fact(qualityName(factor), "latency " + std::to_string(latencyFrames) +
                                              (latencyFrames == 1 ? " frame" : " frames") + ", up to " +
                                              textFromNumber(highestHz) + " Hz");
    }
    return text;
}

Json::Object qualityJson(const QualityRow& row) {
    return {{"name", qualityName(row.factor)},
            {"latency_frames", row.latencyFrames},
            {"highest_rate_hz", row.highestHz}};
}

std::string descriptionText(const ModuleDescription& description, const SampleRateRange& rates) {
    std::string text = "Module\n" + fact("manufacturer", description.manufacturerName) +
                       fact("package names", joined(description.packageNames)) +
                       fact("package version", std::to_string(description.packageVersion)) +
                       fact("interface version", hexadecimal(description.sdkVersion));
    if (!description.properties.empty()) {
        text += fact("properties", propertyList(description.properties));
    }
    for (const auto& effect : description.effects) {
        text += effectText(effect);
    }
    return text + qualitiesText(rates);
}

std::string descriptionJson(const ModuleDescription& description, const SampleRateRange& rates) {
    const Json::Object json = {{"manufacturer", description.manufacturerName},
                               {"package_names", jsonArray(description.packageNames)},
                               {"package_version", description.packageVersion},
                               {"interface_version", description.sdkVersion},
                               {"properties", propertiesJson(description.properties)},
                               {"effects", jsonArray(description.effects, effectJson)},
                               {"qualities", jsonArray(qualityRows(rates), qualityJson)}};
    return jsonText(json);
}

std::string pageTables(const std::shared_ptr<Module>& module, bool asJson) {
    const Instance instance(module, InstanceSetup{});
    const auto tables = readPageTables(instance);
    return asJson ? pageTablesJson(tables) : pageTablesText(tables);
}

int runDescribe(const CommandLine& line) {
    auto module = loadModule(line);
    const bool asJson = line.has("--json");
    if (line.has("--page-table")) {
        printOut(pageTables(module, asJson));
    } else {
        const auto& description = module->description();
        const SampleRateRange& rates = module->options().sampleRates;
        printOut(asJson ? descriptionJson(description, rates) : descriptionText(description, rates));
    }
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace

CommandEntry describeCommand() {
    return {.name = "describe",
            .summary = "Print what the module reports to a host",
            .usage = kDescribeUsage,
            .description = kDescribeDescription,
            .options = kDescribeOptions,
            .examples = kDescribeExamples,
            .run = runDescribe};
}

} // namespace varno
