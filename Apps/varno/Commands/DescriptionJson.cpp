#include "DescriptionText.h"
#include "PropertyText.h"

#include <nlohmann/json.hpp>

namespace varno {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kJsonIndent = 2;

// Properties by number, since names are for people: {"13": "VDRm", "54": "2"}.
Json toJson(const Properties& properties) {
    Json json = Json::object();
    for (const auto& [property, value] : properties) {
        json[std::to_string(property)] = propertyText(property, value);
    }
    return json;
}

template<class Range, class Convert>
Json arrayOf(const Range& range, Convert convert) {
    Json array = Json::array();
    for (const auto& item : range) {
        array.push_back(convert(item));
    }
    return array;
}

Json fieldJson(const FieldDescription& field) {
    return {{"index", field.index},
            {"kind", fieldKindName(field.kind)},
            {"size", field.size},
            {"options", field.options},
            {"meters", arrayOf(field.meterIDs, codeText)}};
}

Json nativeJson(const NativeRoutine& native) {
    return {{"init", native.init != nullptr},
            {"background", native.background != nullptr},
            {"properties", toJson(native.properties)}};
}

Json tiJson(const TiRoutine& ti) {
    return {{"file", ti.dllName}, {"entry", ti.entryName}, {"properties", toJson(ti.properties)}};
}

Json variantJson(const VariantDescription& variant) {
    return {{"inputs", variant.inputChannels()},
            {"outputs", variant.outputChannels()},
            {"native", arrayOf(variant.natives, nativeJson)},
            {"ti", arrayOf(variant.tis, tiJson)},
            {"fields", arrayOf(variant.fields, fieldJson)}};
}

Json meterJson(const MeterDescription& meter) {
    return {{"id", codeText(meter.id)}, {"name", meter.name}, {"properties", toJson(meter.properties)}};
}

Json effectJson(const EffectDescription& effect) {
    return {
        {"id", effect.id},
        {"names", effect.names},
        {"categories", arrayOf(effect.categories, categoryName)},
        {"category_bypass", effect.bypassParameters},
        {"properties", toJson(effect.properties)},
        {"procedures", arrayOf(effect.procedures, [](const auto& item) { return procedureName(item.id); })},
        {"resources", arrayOf(effect.resources,
                              [](const auto& item) {
                                  return Json{{"type", resourceName(item.type)}, {"file", item.fileName}};
                              })},
        {"meters", arrayOf(effect.meters, meterJson)},
        {"variants", arrayOf(effect.variants, variantJson)}};
}

} // namespace

std::string descriptionJson(const ModuleDescription& description) {
    const Json json = {{"manufacturer", description.manufacturerName},
                       {"package_names", description.packageNames},
                       {"package_version", description.packageVersion},
                       {"interface_version", description.sdkVersion},
                       {"properties", toJson(description.properties)},
                       {"effects", arrayOf(description.effects, effectJson)}};
    return json.dump(kJsonIndent) + '\n';
}

} // namespace varno
