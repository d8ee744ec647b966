#include "CLAP/ParameterList.h"

#include "Host/Oversampling/RateConverter.h"
#include "Shared/GlidingValues.h"
#include "Surround/Settings/QualityText.h"
#include "Surround/Settings/SettingValues.h"

#include <algorithm>
#include <cmath>

namespace varno {

namespace {

ListedParameter listed(const ParameterInfo& info) {
    ListedParameter parameter;
    parameter.id = static_cast<clap_id>(info.index);
    parameter.row = DemoGain_FindParameter(info.id);
    const auto setting = settingOf(info.id);
    parameter.name = setting ? settingName(*setting) : info.name;
    parameter.isAutomatable = info.isAutomatable;
    parameter.steps = info.steps > kMostStepsOfAChoice ? 0 : info.steps;
    parameter.normalizedDefault = static_cast<float>(info.defaultNormalized);
    return parameter;
}

double placeOf(const ListedParameter& parameter, double value) noexcept {
    return std::clamp(std::round(value), 0.0, parameter.highest());
}

// As "on" and "off" are read elsewhere.
constexpr SDemoGain_Parameter kSwitch = {.mIdentifier = "",
                                         .mName = "",
                                         .mType = AAX_eParameterType_Discrete,
                                         .mSteps = kDemoGain_SwitchSteps,
                                         .mDefault = 0.0F,
                                         .mTaper = EDemoGain_Taper::kBinary,
                                         .mDisplay = EDemoGain_Display::kBypassOn,
                                         .mField = eAlgFieldID_Bypass,
                                         .mPacket = EDemoGain_Packet::kSingleValue,
                                         .mPacketPlace = 0,
                                         .mUnit = kDemoGain_OnOff,
                                         .mHelp = ""};

const SDemoGain_Parameter& rowOf(const ListedParameter& parameter) {
    return parameter.row != nullptr ? *parameter.row : kSwitch;
}

} // namespace

ParameterList::ParameterList(const Instance& instance) {
    for (const ParameterInfo& info : instance.parameters()) {
        if (!info.isMasterBypass) {
            mParameters.push_back(listed(info));
        }
    }
    mParameters.push_back({.kind = ListedParameter::Kind::kBypass,
                           .id = kBypassId,
                           .name = "Bypass",
                           .steps = static_cast<int>(kDemoGain_SwitchSteps)});
    mParameters.push_back({.kind = ListedParameter::Kind::kQuality,
                           .id = kQualityId,
                           .name = "Quality",
                           .isAutomatable = false,
                           .steps = static_cast<int>(kOversamplingFactors.size())});
}

std::optional<std::size_t> ParameterList::indexOf(clap_id id) const noexcept {
    const auto found = std::ranges::find(mParameters, id, &ListedParameter::id);
    return found == mParameters.end() ? std::nullopt
                                      : std::optional(static_cast<std::size_t>(found - mParameters.begin()));
}

std::optional<std::size_t> ParameterList::indexOf(std::string_view identifier) const noexcept {
    for (std::size_t index = 0; index < effectParameters(); ++index) {
        if (identifier == mParameters[index].row->mIdentifier) {
            return index;
        }
    }
    return std::nullopt;
}

float normalizedOf(const ListedParameter& parameter, double value, float present) noexcept {
    if (!parameter.isStepped()) {
        return static_cast<float>(std::clamp(value, 0.0, 1.0));
    }
    const double place = placeOf(parameter, value);
    return place == hostValueOf(parameter, present) ? present
                                                    : static_cast<float>(place / parameter.highest());
}

double hostValueOf(const ListedParameter& parameter, float normalized) noexcept {
    if (!parameter.isStepped()) {
        return double{normalized};
    }
    return parameter.row != nullptr ? DemoGain_ValueText::InUnit(*parameter.row, double{normalized})
                                    : placeOf(parameter, normalized * parameter.highest());
}

std::string hostText(const ListedParameter& parameter, double value,
                     const DemoGain_ValueText::Settings& settings) {
    const double normalized = parameter.isStepped() ? placeOf(parameter, value) / parameter.highest() : value;
    if (parameter.kind == ListedParameter::Kind::kQuality) {
        return qualityName(qualityFactor(static_cast<float>(normalized)));
    }
    return DemoGain_ValueText::Write(rowOf(parameter), normalized, settings);
}

std::optional<double> hostValueFromText(const ListedParameter& parameter, std::string_view text,
                                        const DemoGain_ValueText::Settings& settings) {
    if (parameter.kind == ListedParameter::Kind::kQuality) {
        const auto factor = qualityNamed(text);
        return factor ? std::optional(static_cast<double>(stagesOf(*factor))) : std::nullopt;
    }
    const std::optional<double> normalized = DemoGain_ValueText::Parse(rowOf(parameter), text, settings);
    if (!normalized) {
        return std::nullopt;
    }
    return parameter.isStepped() ? placeOf(parameter, *normalized * parameter.highest()) : *normalized;
}

std::int32_t qualityFactor(float normalized) noexcept {
    constexpr auto kLast = static_cast<double>(kOversamplingFactors.size() - 1);
    const auto stages = static_cast<std::size_t>(std::clamp(std::round(normalized * kLast), 0.0, kLast));
    return kOversamplingFactors[stages]; // NOLINT(cppcoreguidelines-pro-bounds-constant-array-index)
}

float normalizedQuality(std::int32_t factor) noexcept {
    constexpr auto kLast = static_cast<double>(kOversamplingFactors.size() - 1);
    return static_cast<float>(static_cast<double>(stagesOf(factor)) / kLast);
}

} // namespace varno
