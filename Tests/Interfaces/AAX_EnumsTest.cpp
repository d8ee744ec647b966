#include "AAX_Enums.h"

#include <gtest/gtest.h>

// Hosts are compiled with these numbers.

namespace {

TEST(AAX_EnumsTest, ChannelsHaveTheirNumbers) {
    EXPECT_EQ(AAX_eStemFormat_Mono, 1);
    EXPECT_EQ(AAX_eStemFormat_Stereo, 0x10002);
}

TEST(AAX_EnumsTest, WhatIsRegisteredHasItsNumber) {
    EXPECT_EQ(kAAX_ProcPtrID_Create_EffectParameters, 0);
    EXPECT_EQ(kAAX_ProcPtrID_Create_EffectGUI, 1);
    EXPECT_EQ(AAX_eResourceType_PageTable, 1);
    EXPECT_EQ(AAX_eDataInPortType_Buffered, 1);
    EXPECT_EQ(AAX_ePlugInCategory_Dynamics, 2U);
}

TEST(AAX_EnumsTest, PropertiesHaveTheirNumbers) {
    EXPECT_EQ(AAX_eProperty_ManufacturerID, 11);
    EXPECT_EQ(AAX_eProperty_ProductID, 12);
    EXPECT_EQ(AAX_eProperty_PlugInID_Native, 13);
    EXPECT_EQ(AAX_eProperty_PlugInID_Offline, 14);
    EXPECT_EQ(AAX_eProperty_PlugInID_TI, 15);
    EXPECT_EQ(AAX_eProperty_InputStemFormat, 51);
    EXPECT_EQ(AAX_eProperty_OutputStemFormat, 52);
    EXPECT_EQ(AAX_eProperty_Meter_Kind, 200);
    EXPECT_EQ(AAX_eMeterKind_Input, 0);
    EXPECT_EQ(AAX_eMeterKind_Output, 1);
    EXPECT_EQ(AAX_eMeterKind_GainReduction, 2);
}

TEST(AAX_EnumsTest, PropertiesOfTheHostsOwnAreNamedByTheirNumbers) {
    EXPECT_EQ(AAX_eProperty_Host54, 54);
    EXPECT_EQ(AAX_eProperty_Host56, 56);
    EXPECT_EQ(AAX_eProperty_Host60, 60);
    EXPECT_EQ(AAX_eProperty_Host62, 62);
    EXPECT_EQ(AAX_eProperty_Host63, 63);
    EXPECT_EQ(AAX_eProperty_Host201, 201);
    EXPECT_EQ(AAX_eProperty_Host202, 202);
}

TEST(AAX_EnumsTest, ParametersAndTheirEditorHaveTheirNumbers) {
    EXPECT_EQ(AAX_eParameterType_Discrete, 0);
    EXPECT_EQ(AAX_eParameterType_Continuous, 1);
    EXPECT_EQ(AAX_eHighlightColor_Red, 0);
    EXPECT_EQ(AAX_eHighlightColor_Blue, 1);
    EXPECT_EQ(AAX_eHighlightColor_Green, 2);
    EXPECT_EQ(AAX_eHighlightColor_Yellow, 3);
    EXPECT_EQ(AAX_eViewContainerType_None, 0);
    EXPECT_EQ(AAX_eViewContainerType_Cocoa, 1);
}

TEST(AAX_EnumsTest, ModifiersAreBits) {
    EXPECT_EQ(AAX_eModifiers_Shift, 0x01U);
    EXPECT_EQ(AAX_eModifiers_Control, 0x02U);
    EXPECT_EQ(AAX_eModifiers_Option, 0x04U);
    EXPECT_EQ(AAX_eModifiers_Command, 0x08U);
    EXPECT_EQ(AAX_eModifiers_SecondaryButton, 0x10U);
}

TEST(AAX_EnumsTest, TracesAndAssertionsHaveTheirNumbers) {
    EXPECT_EQ(AAX_eTracePriorityHost_Normal, 0x4000000);
    EXPECT_EQ(AAX_eTracePriorityHost_High, 0x8000000);
    EXPECT_EQ(AAX_eAssertFlags_Default, 1);
}

} // namespace
