#include "DescriptionText.h"

#include "PropertyText.h"
#include "TextLayout.h"
#include "TextTable.h"

#include <cinttypes>
#include <cstdio>

namespace varno {
namespace {

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

} // namespace

std::string descriptionText(const ModuleDescription& description) {
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
    return text;
}

} // namespace varno
