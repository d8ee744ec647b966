#include "Describe/PropertyText.h"

#include <algorithm>
#include <cstdio>

namespace varno {
namespace {

enum class Shown { kNumber, kCode, kStem, kMeterKind };

struct NamedProperty {
    AAX_EProperty property;
    const char* name;
    Shown shown;
};

constexpr NamedProperty kNamedProperties[] = {
    {AAX_eProperty_ManufacturerID, "manufacturer", Shown::kCode},
    {AAX_eProperty_ProductID, "product", Shown::kCode},
    {AAX_eProperty_PlugInID_Native, "native identifier", Shown::kCode},
    {AAX_eProperty_PlugInID_Offline, "offline identifier", Shown::kCode},
    {AAX_eProperty_PlugInID_TI, "TI identifier", Shown::kCode},
    {AAX_eProperty_InputStemFormat, "input stem", Shown::kStem},
    {AAX_eProperty_OutputStemFormat, "output stem", Shown::kStem},
    {AAX_eProperty_Meter_Kind, "kind", Shown::kMeterKind},
};

const NamedProperty* named(AAX_EProperty property) {
    const auto found = std::ranges::find(kNamedProperties, property, &NamedProperty::property);
    return found == std::end(kNamedProperties) ? nullptr : found;
}

std::string stemText(std::int32_t stem) {
    switch (stem) {
    case AAX_eStemFormat_Mono:
        return "mono";
    case AAX_eStemFormat_Stereo:
        return "stereo";
    default:
        return std::to_string(stem);
    }
}

std::string meterKindText(std::int32_t kind) {
    switch (kind) {
    case AAX_eMeterKind_Input:
        return "input";
    case AAX_eMeterKind_Output:
        return "output";
    case AAX_eMeterKind_GainReduction:
        return "gain reduction";
    default:
        return std::to_string(kind);
    }
}

std::string integerText(AAX_EProperty property, std::int32_t value) {
    const auto* entry = named(property);
    switch (entry == nullptr ? Shown::kNumber : entry->shown) {
    case Shown::kCode:
        return codeText(static_cast<AAX_CTypeID>(value));
    case Shown::kStem:
        return stemText(value);
    case Shown::kMeterKind:
        return meterKindText(value);
    case Shown::kNumber:
        break;
    }
    return std::to_string(value);
}

std::string listText(const std::vector<AAX_CTypeID>& codes) {
    std::string text;
    for (const auto code : codes) {
        text.append(text.empty() ? "" : " ").append(codeText(code));
    }
    return text;
}

} // namespace

std::string propertyName(AAX_EProperty property) {
    const auto* entry = named(property);
    return entry == nullptr ? "property " + std::to_string(property) : entry->name;
}

bool isNamedProperty(AAX_EProperty property) {
    return named(property) != nullptr;
}

std::string propertyText(AAX_EProperty property, const PropertyValue& value) {
    if (const auto* integer = std::get_if<std::int32_t>(&value)) {
        return integerText(property, *integer);
    }
    if (const auto* codes = std::get_if<std::vector<AAX_CTypeID>>(&value)) {
        return listText(*codes);
    }
    return std::get<const void*>(value) == nullptr ? "null pointer" : "pointer";
}

std::string categoryName(std::uint32_t category) {
    return category == AAX_ePlugInCategory_Dynamics ? "dynamics" : std::to_string(category);
}

std::string procedureName(AAX_CProcPtrID procedure) {
    switch (procedure) {
    case kAAX_ProcPtrID_Create_EffectParameters:
        return "data model";
    case kAAX_ProcPtrID_Create_EffectGUI:
        return "editor";
    }
    return std::to_string(procedure);
}

std::string resourceName(AAX_EResourceType type) {
    return type == AAX_eResourceType_PageTable ? "page table" : std::to_string(type);
}

} // namespace varno
