/// Enumerations of the plug-in architecture.
#ifndef VARNO_INTERFACES_AAX_ENUMS_H
#define VARNO_INTERFACES_AAX_ENUMS_H

#include "AAX_UIDs.h"

#include <cstdint>

/// Channels of a stem.
enum AAX_EStemFormat : int32_t {
    AAX_eStemFormat_Mono = 1,
    AAX_eStemFormat_Stereo = 0x10002,
};

/// What a registered procedure makes.
enum AAX_CProcPtrID : int32_t {
    kAAX_ProcPtrID_Create_EffectParameters = 0,
    kAAX_ProcPtrID_Create_EffectGUI = 1,
};

/// Kinds of resource file in the module's bundle.
enum AAX_EResourceType : int32_t {
    AAX_eResourceType_PageTable = 1,
};

/// How packets of a data-in port reach the context.
enum AAX_EDataInPortType : int32_t {
    AAX_eDataInPortType_Buffered = 1, ///< Written between buffers, so that a buffer sees one value.
};

/// Properties of effects, algorithms and meters. Properties with a numbered name have a meaning that
/// only the host knows; their values are passed on unchanged.
enum AAX_EProperty : int32_t {
    AAX_eProperty_ManufacturerID = 11,
    AAX_eProperty_ProductID = 12,
    AAX_eProperty_PlugInID_Native = 13,
    AAX_eProperty_PlugInID_Offline = 14,
    AAX_eProperty_PlugInID_TI = 15,
    AAX_eProperty_InputStemFormat = 51,
    AAX_eProperty_OutputStemFormat = 52,
    AAX_eProperty_Host54 = 54,
    AAX_eProperty_Host56 = 56,
    AAX_eProperty_Host60 = 60,
    AAX_eProperty_Host62 = 62,
    AAX_eProperty_Host63 = 63,
    AAX_eProperty_Meter_Kind = 200, ///< An AAX_EMeterKind.
    AAX_eProperty_Host201 = 201,
    AAX_eProperty_Host202 = 202,
};

/// Values of AAX_eProperty_Meter_Kind.
enum AAX_EMeterKind : int32_t {
    AAX_eMeterKind_Input = 0,
    AAX_eMeterKind_Output = 1,
    AAX_eMeterKind_GainReduction = 2,
};

/// Categories of effects, as far as this system uses them.
enum AAX_EPlugInCategory : uint32_t {
    AAX_ePlugInCategory_Dynamics = 2,
};

/// Whether a parameter's values are steps.
enum AAX_EParameterType : int32_t {
    AAX_eParameterType_Discrete = 0,
    AAX_eParameterType_Continuous = 1,
};

/// What moved a parameter.
enum AAX_EUpdateSource : int32_t {
    AAX_eUpdateSource_Unspecified = AAX_VALUE_UpdateSource_Unspecified,
};

/// Colours in which a host marks a control.
enum AAX_EHighlightColor : int32_t {
    AAX_eHighlightColor_Red = 0,
    AAX_eHighlightColor_Blue = 1,
    AAX_eHighlightColor_Green = 2,
    AAX_eHighlightColor_Yellow = 3,
};

/// Labels that a host may ask an editor for.
enum AAX_EPlugInStrings : int32_t {};

/// Whether a host supports a feature.
enum AAX_ESupportLevel : int32_t {
    AAX_eSupportLevel_Unsupported = AAX_VALUE_SupportLevel_Unsupported,
    AAX_eSupportLevel_Supported = AAX_VALUE_SupportLevel_Supported,
};

/// Encoding of a text handed over as bytes.
enum AAX_ETextEncoding : int32_t {
    AAX_eTextEncoding_UTF8 = AAX_VALUE_TextEncoding_UTF8,
};

/// Time code frame rates.
enum AAX_EFrameRate : int32_t {
    AAX_eFrameRate_Undeclared = AAX_VALUE_FrameRate_Undeclared,
};

/// Film frame rates.
enum AAX_EFeetFramesRate : int32_t {
    AAX_eFeetFramesRate_24 = AAX_VALUE_FeetFramesRate_24,
};

/// Where an algorithm runs.
enum AAX_ETargetPlatform : int32_t {
    AAX_eTargetPlatform_Native = AAX_VALUE_TargetPlatform_Native,
};

/// Kinds of native view that a host may hand to an editor.
enum AAX_EViewContainerType : int32_t {
    AAX_eViewContainerType_None = 0,
    AAX_eViewContainerType_Cocoa = 1, ///< An NSView.
    /// The identifier of an X11 window, as a number in place of the pointer. This project's own.
    AAX_eViewContainerType_X11 = AAX_VALUE_ViewContainerType_X11,
};

/// Modifier keys and buttons of a mouse event, as bits.
enum AAX_EModifiers : uint32_t {
    AAX_eModifiers_Shift = 0x01,
    AAX_eModifiers_Control = 0x02,
    AAX_eModifiers_Option = 0x04,
    AAX_eModifiers_Command = 0x08,
    AAX_eModifiers_SecondaryButton = 0x10,
};

/// Priority of a trace line, a bit value; the higher the more urgent. Other values pass through unchanged.
enum AAX_ETracePriorityHost : int32_t {
    AAX_eTracePriorityHost_Normal = 0x4000000, ///< Notices of a checked result that throws.
    AAX_eTracePriorityHost_High = 0x8000000,   ///< Caught exceptions and configuration errors.
};

/// Assertion flags.
enum AAX_EAssertFlags : int32_t {
    AAX_eAssertFlags_Default = 1,
};

#endif
