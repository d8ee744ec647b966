/// The parameters: one row defines everything about one of them. The data model, the text of
/// settings, the editor and its artwork are made from this table; the README and the manual are compared with
/// it by tests. Plain data: every layer but Interfaces, Libs, Host and Window may include it.
///
/// CONTRIBUTING.md lists what a new parameter needs besides a row here.
#ifndef VARNO_SOURCE_DEMOGAIN_PARAMETERTABLE_H
#define VARNO_SOURCE_DEMOGAIN_PARAMETERTABLE_H

#include "AAX_Enums.h"
#include "DemoGain_AlgFields.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string_view>

// Identifiers of the parameters that code treats singly.
inline constexpr char cDemoGain_MasterBypassID[] = "MasterBypassID";
inline constexpr char cDemoGain_GainID[] = "Gain";
inline constexpr char cDemoGain_VolumeID[] = "Volume";
inline constexpr char cDemoGain_AttackID[] = "Atk";
inline constexpr char cDemoGain_ReleaseID[] = "Rls";
inline constexpr char cDemoGain_UKID[] = "UK";
inline constexpr char cDemoGain_RatioID[] = "Ratio";
inline constexpr char cDemoGain_AutoGainID[] = "ASw";

/// How real and normalized values are related.
enum class EDemoGain_Taper {
    kBinary, ///< The parameter is a bool.
    kLinear, ///< The parameter is a float from 0 to 1, so that both are the same.
};

/// What a host shows as the value.
enum class EDemoGain_Display {
    kBypassOn,    ///< What the effect does at either value of a bool: "bypass" for false, "on" for true.
    kTwoDecimals, ///< The number.
};

/// What computes the packet of a field.
enum class EDemoGain_Packet {
    kSingleValue, ///< The parameter's value, unchanged.
    kGain,
    kDecay,
    kTimeConsts,
};

/// How a normalized value becomes a value in a unit.
enum class EDemoGain_Conversion {
    kLinear,      ///< From mLow at 0 to mHigh at 1.
    kAttackTime,  ///< The time constant of the attack, which the choice of the curve changes as well.
    kReleaseTime, ///< The time constant of the release, which the curve and "UK" change as well.
    kChoice,      ///< One of mTexts, at equal distances.
};

/// How people write a value.
struct SDemoGain_Unit {
    EDemoGain_Conversion mConversion;
    const char* mSymbol = "";
    double mLow = 0.0;
    double mHigh = 1.0;
    std::span<const char* const> mTexts = {}; ///< One per step.
};

/// The number that the editor's status line shows: value * mFactor + mOffset.
struct SDemoGain_StatusScale {
    double mFactor;
    double mOffset;
};

/// Place in a list, from 0; kDemoGain_Nowhere for what is not in it.
using DemoGain_Place = int;
inline constexpr DemoGain_Place kDemoGain_Nowhere = -1;

/// One parameter. The order of the rows is that of the parameters' indices.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what has no default must stand in each row
struct SDemoGain_Parameter {
    const char* mIdentifier; ///< What hosts, chunks and presets call it.
    const char* mName;       ///< What a host shows as its name.

    AAX_EParameterType mType;
    uint32_t mSteps;
    float mDefault; ///< Normalized.
    EDemoGain_Taper mTaper;
    EDemoGain_Display mDisplay;

    EAlgFieldID mField; ///< The field whose packet is computed anew when the parameter changes.
    EDemoGain_Packet mPacket;

    DemoGain_Place mPacketPlace;                      ///< Among the registrations of packets.
    DemoGain_Place mControlPlace = kDemoGain_Nowhere; ///< Among the controls, as the view adds them.
    DemoGain_Place mUpdatePlace = kDemoGain_Nowhere;  ///< Among the updates that the editor compares.
    DemoGain_Place mPresetPlace = kDemoGain_Nowhere;  ///< Among the values of the text of settings.

    SDemoGain_Unit mUnit;

    const char* mPresetLabel = nullptr; ///< In the text of settings.
    bool mEndsPresetLine = false;       ///< The last value of its line.

    /// What the status line shows after a gesture; with a scale, the value follows with two decimals.
    const char* mStatus = nullptr;
    std::optional<SDemoGain_StatusScale> mStatusScale = {};
    bool mRestartsMatching = false; ///< With automatic gain on, a gesture has the volume matched anew.

    std::array<const char*, 2> mLegend = {}; ///< Name of the control on the panel, in one line or two.
    const char* mScaleLow = nullptr;         ///< What the ends of a knob's scale mean, where the
    const char* mScaleHigh = nullptr;        ///< numbers and the name do not say it.

    const char* mHelp; ///< What it does, in one sentence.
};

/// Steps of a switch, of the choice among eight curves, and of a knob.
inline constexpr uint32_t kDemoGain_SwitchSteps = 2;
inline constexpr uint32_t kDemoGain_CurveSteps = 8;
inline constexpr uint32_t kDemoGain_KnobSteps = 131;

/// Texts of a switch, and the names of the gain reduction curves.
inline constexpr const char* kDemoGain_SwitchTexts[] = {"off", "on"};
inline constexpr const char* kDemoGain_CurveTexts[] = {"1", "2", "3", "4", "5", "6", "7", "8"};

/// The units. A level is 0 dB in the middle of its range.
inline constexpr SDemoGain_Unit kDemoGain_Level = {
    .mConversion = EDemoGain_Conversion::kLinear, .mSymbol = "dB", .mLow = -20.0, .mHigh = 20.0};
inline constexpr SDemoGain_Unit kDemoGain_Percent = {
    .mConversion = EDemoGain_Conversion::kLinear, .mSymbol = "%", .mLow = 0.0, .mHigh = 100.0};
inline constexpr SDemoGain_Unit kDemoGain_AttackTime = {.mConversion = EDemoGain_Conversion::kAttackTime,
                                                        .mSymbol = "ms"};
inline constexpr SDemoGain_Unit kDemoGain_ReleaseTime = {.mConversion = EDemoGain_Conversion::kReleaseTime,
                                                         .mSymbol = "ms"};
inline constexpr SDemoGain_Unit kDemoGain_OnOff = {.mConversion = EDemoGain_Conversion::kChoice,
                                                   .mTexts = kDemoGain_SwitchTexts};
inline constexpr SDemoGain_Unit kDemoGain_Curve = {.mConversion = EDemoGain_Conversion::kChoice,
                                                   .mTexts = kDemoGain_CurveTexts};

/// What the status line shows of a level, and of the other knobs.
inline constexpr SDemoGain_StatusScale kDemoGain_Bipolar = {200.0, -100.0};
inline constexpr SDemoGain_StatusScale kDemoGain_Hundred = {100.0, 0.0};

// clang-format off
/// The parameters in the order of their indices.
inline constexpr SDemoGain_Parameter kDemoGain_Parameters[] = {
    {.mIdentifier = cDemoGain_MasterBypassID, .mName = "Master Bypass",
     .mType = AAX_eParameterType_Discrete, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kBinary, .mDisplay = EDemoGain_Display::kBypassOn,
     .mField = eAlgFieldID_Bypass, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 0, .mUnit = kDemoGain_OnOff,
     .mHelp = "Passes the input through; reads \"bypass\" at 0 and \"on\" at 1."},

    {.mIdentifier = cDemoGain_GainID, .mName = "Gain",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.5F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_GainDB, .mPacket = EDemoGain_Packet::kGain,
     .mPacketPlace = 1, .mControlPlace = 0, .mUpdatePlace = 1, .mPresetPlace = 0,
     .mUnit = kDemoGain_Level, .mPresetLabel = "Gain",
     .mStatus = "Gain", .mStatusScale = kDemoGain_Bipolar, .mRestartsMatching = true,
     .mLegend = {"Gain"},
     .mHelp = "Input gain, -20 to +20 dB."},

    {.mIdentifier = "HP", .mName = "HP",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_HP, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 3, .mControlPlace = 6, .mUpdatePlace = 3, .mPresetPlace = 2,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "Hipass",
     .mStatus = "Hi Pass", .mRestartsMatching = true,
     .mLegend = {"High", "Pass"},
     .mHelp = "Keeps what lies below 120 Hz from driving the gain reduction."},

    {.mIdentifier = "Band", .mName = "Band",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_Band, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 4, .mControlPlace = 7, .mUpdatePlace = 4, .mPresetPlace = 3,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "Band", .mEndsPresetLine = true,
     .mStatus = "Band Pass", .mRestartsMatching = true,
     .mLegend = {"Band", "Pass"},
     .mHelp = "Lets high frequencies drive the gain reduction harder."},

    {.mIdentifier = cDemoGain_AttackID, .mName = "Atk",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.5F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_AttackCoef, .mPacket = EDemoGain_Packet::kTimeConsts,
     .mPacketPlace = 8, .mControlPlace = 2, .mUpdatePlace = 5, .mPresetPlace = 4,
     .mUnit = kDemoGain_AttackTime, .mPresetLabel = "Attack",
     .mStatus = "Attack", .mStatusScale = kDemoGain_Hundred, .mRestartsMatching = true,
     .mLegend = {"Attack"},
     .mHelp = "Attack of the gain reduction."},

    {.mIdentifier = cDemoGain_ReleaseID, .mName = "Rls",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.5F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_AttackCoef, .mPacket = EDemoGain_Packet::kTimeConsts,
     .mPacketPlace = 9, .mControlPlace = 3, .mUpdatePlace = 6, .mPresetPlace = 5,
     .mUnit = kDemoGain_ReleaseTime, .mPresetLabel = "Release",
     .mStatus = "Release", .mStatusScale = kDemoGain_Hundred, .mRestartsMatching = true,
     .mLegend = {"Release"},
     .mHelp = "Release of the gain reduction."},

    {.mIdentifier = cDemoGain_AutoGainID, .mName = "Auto",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_Auto, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 5, .mControlPlace = 9, .mUpdatePlace = 0, .mPresetPlace = 10,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "Auto",
     .mStatus = "Auto Gain",
     .mLegend = {"Auto Gain"},
     .mHelp = "Matches the output volume to the input level; works from the editor."},

    {.mIdentifier = cDemoGain_UKID, .mName = "UK",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_AttackCoef, .mPacket = EDemoGain_Packet::kTimeConsts,
     .mPacketPlace = 11, .mControlPlace = 8, .mUpdatePlace = 7, .mPresetPlace = 6,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "UK",
     .mStatus = "UK Mode", .mRestartsMatching = true,
     .mLegend = {"UK Mode"},
     .mHelp = "Changes the release of the gain reduction."},

    {.mIdentifier = cDemoGain_VolumeID, .mName = "Vol",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.5F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_VolumeDB, .mPacket = EDemoGain_Packet::kDecay,
     .mPacketPlace = 2, .mControlPlace = 1, .mUpdatePlace = 2, .mPresetPlace = 1,
     .mUnit = kDemoGain_Level, .mPresetLabel = "Volume",
     .mStatus = "Volume", .mStatusScale = kDemoGain_Bipolar,
     .mLegend = {"Volume"},
     .mHelp = "Output volume, -20 to +20 dB."},

    {.mIdentifier = "Hot", .mName = "Hot",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.07F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_Hot, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 6, .mControlPlace = 4, .mUpdatePlace = 10, .mPresetPlace = 7,
     .mUnit = kDemoGain_Percent, .mPresetLabel = "Hottitude", .mEndsPresetLine = true,
     .mStatus = "Hottitude", .mStatusScale = kDemoGain_Hundred, .mRestartsMatching = true,
     .mLegend = {"Hottitude"},
     .mHelp = "Drive into the clipper and shaper."},

    {.mIdentifier = cDemoGain_RatioID, .mName = "Ratio",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_CurveSteps, .mDefault = 0.5F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_AttackCoef, .mPacket = EDemoGain_Packet::kTimeConsts,
     .mPacketPlace = 10, .mControlPlace = 12, .mUpdatePlace = 11, .mPresetPlace = 8,
     .mUnit = kDemoGain_Curve, .mPresetLabel = "Ratio",
     .mStatus = "Ratio", .mRestartsMatching = true,
     .mLegend = {"Ratio"},
     .mHelp = "One of eight gain reduction curves."},

    {.mIdentifier = "Mix", .mName = "Mix",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_KnobSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_Mix, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 7, .mControlPlace = 5, .mUpdatePlace = 12, .mPresetPlace = 9,
     .mUnit = kDemoGain_Percent, .mPresetLabel = "Mix",
     .mStatus = "Mix", .mStatusScale = kDemoGain_Hundred, .mRestartsMatching = true,
     .mLegend = {"Mix"}, .mScaleLow = "wet", .mScaleHigh = "dry",
     .mHelp = "Share of the dry signal."},

    {.mIdentifier = "HSw", .mName = "HarmSw",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_HarmSw, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 12, .mControlPlace = 11, .mUpdatePlace = 9, .mPresetPlace = 11,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "HarmSw", .mEndsPresetLine = true,
     .mStatus = "Harmonic select",
     .mLegend = {"Harmonic", "Select"},
     .mHelp = "Biases the clipper, for more harmonics."},

    {.mIdentifier = "LinkSw", .mName = "LinkSw",
     .mType = AAX_eParameterType_Continuous, .mSteps = kDemoGain_SwitchSteps, .mDefault = 0.0F,
     .mTaper = EDemoGain_Taper::kLinear, .mDisplay = EDemoGain_Display::kTwoDecimals,
     .mField = eAlgFieldID_LinkSw, .mPacket = EDemoGain_Packet::kSingleValue,
     .mPacketPlace = 13, .mControlPlace = 10, .mUpdatePlace = 8, .mPresetPlace = 12,
     .mUnit = kDemoGain_OnOff, .mPresetLabel = "LinkSw", .mEndsPresetLine = true,
     .mStatus = "Stereo Link",
     .mLegend = {"Stereo", "Link"},
     .mHelp = "Both stereo channels share one gain reduction."},
};
// clang-format on

/// The parameter with this identifier, or null. [any]
constexpr const SDemoGain_Parameter* DemoGain_FindParameter(std::string_view identifier) {
    const auto* const end = std::end(kDemoGain_Parameters);
    const auto* const found =
        std::find_if(std::begin(kDemoGain_Parameters), end,
                     [&](const SDemoGain_Parameter& row) { return identifier == row.mIdentifier; });
    return found != end ? found : nullptr;
}

/// The parameters that have a place in a list, in the list's order. Does not compile where the places are not
/// those from 0 on, each taken once.
template<DemoGain_Place SDemoGain_Parameter::*kPlace>
consteval auto DemoGain_ParametersInOrder() {
    constexpr auto kIsListed = [](const SDemoGain_Parameter& row) {
        return row.*kPlace != kDemoGain_Nowhere;
    };
    constexpr auto kCount =
        std::count_if(std::begin(kDemoGain_Parameters), std::end(kDemoGain_Parameters), kIsListed);
    std::array<const SDemoGain_Parameter*, static_cast<std::size_t>(kCount)> list{};
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        if (kIsListed(row)) {
            const SDemoGain_Parameter*& place = list.at(static_cast<std::size_t>(row.*kPlace));
            if (place != nullptr) {
                throw "two parameters have one place";
            }
            place = &row;
        }
    }
    return list;
}

/// The lists.
inline constexpr auto kDemoGain_PacketOrder =
    DemoGain_ParametersInOrder<&SDemoGain_Parameter::mPacketPlace>();
inline constexpr auto kDemoGain_ControlOrder =
    DemoGain_ParametersInOrder<&SDemoGain_Parameter::mControlPlace>();
inline constexpr auto kDemoGain_UpdateOrder =
    DemoGain_ParametersInOrder<&SDemoGain_Parameter::mUpdatePlace>();
inline constexpr auto kDemoGain_PresetOrder =
    DemoGain_ParametersInOrder<&SDemoGain_Parameter::mPresetPlace>();

/// Whether the rows agree with themselves and each other; does not compile, and names the reason, where they
/// do not.
consteval bool DemoGain_IsTableSound() {
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        if (DemoGain_FindParameter(row.mIdentifier) != &row) {
            throw "two parameters have one identifier";
        }
        if ((row.mTaper == EDemoGain_Taper::kBinary) != (row.mDisplay == EDemoGain_Display::kBypassOn)) {
            throw "taper and display are of two value types";
        }
        if (row.mPacketPlace == kDemoGain_Nowhere || row.mField >= kAlgNumDataInPorts) {
            throw "a parameter has no packet, or one for a field that is no data-in port";
        }
        if (row.mUnit.mConversion == EDemoGain_Conversion::kChoice && row.mUnit.mTexts.size() != row.mSteps) {
            throw "a step has no text";
        }
        if ((row.mPresetPlace != kDemoGain_Nowhere) != (row.mPresetLabel != nullptr)) {
            throw "a value in the text of settings has no label";
        }
        const bool hasControl = row.mControlPlace != kDemoGain_Nowhere;
        if ((row.mUpdatePlace != kDemoGain_Nowhere) != hasControl || (row.mStatus != nullptr) != hasControl ||
            (row.mLegend[0] != nullptr) != hasControl) {
            throw "a control has no place among the updates, no status text or no name";
        }
    }
    return true;
}
static_assert(DemoGain_IsTableSound());

#endif
