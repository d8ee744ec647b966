#include "DemoGain_Describe.h"

#include "AAX_CHostServices.h"
#include "AAX_Exports.h"
#include "AAX_VCollection.h"
#include "AAX_VComponentDescriptor.h"
#include "DemoGain_Alg.h"
#include "DemoGain_Parameters.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"
#include "Tests/Source/DescriptionRecorder.h"
#include "Tests/Support/FakeHostServices.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace varno;
using namespace varno::test;
using Lines = std::vector<std::string>;

// The code of four characters as the log writes a property's value.
std::string code(const char (&text)[5]) {
    return std::to_string(static_cast<std::int32_t>(AAX_FourCC(text)));
}

// Every call that declares the fields and the properties that variants share.
Lines fieldLines(const std::string& map) {
    Lines lines = {"AudioIn 25", "AudioOut 26", "AudioBufferLength 27", "SampleRate 28",
                   "Meters 24 mtGLmtGRmtIRmtOR"};
    for (int field = 0; field < 24; ++field) {
        lines.push_back("DataInPort " + std::to_string(field) + " 4 1");
    }
    lines.push_back("PrivateData 29 " + std::to_string(sizeof(SDemoGain_Alg_State)) + " 0");
    lines.push_back("component.NewPropertyMap " + map);
    for (const std::string& property :
         {"11 " + code("Mrvk"), "12 " + code("Vdsp"), std::string("60 1"), std::string("56 1")}) {
        lines.push_back(std::string(map).append(" ").append(property));
    }
    return lines;
}

Lines operator+(Lines left, const Lines& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Lines monoLines(const std::string& map) {
    return fieldLines(map) + Lines{map + " 51 1",
                                   map + " 52 1",
                                   map + " 13 " + code("VDRm"),
                                   map + " 14 " + code("VDAm"),
                                   "Native 1 0 0",
                                   map + " 63 2184",
                                   map + " 62 359",
                                   map + " 15 " + code("VDTm"),
                                   map + " 54 2",
                                   "TI VarnoDSP_MM_TI.dll AlgEntry 1 0 0"};
}

Lines stereoLines(const std::string& map) {
    return fieldLines(map) + Lines{map + " 51 65538",
                                   map + " 52 65538",
                                   map + " 13 " + code("VDRs"),
                                   map + " 14 " + code("VDAs"),
                                   "Native 1 0 0",
                                   map + " 63 3622",
                                   map + " 62 524",
                                   map + " 15 " + code("VDTs"),
                                   map + " 54 2",
                                   "TI VarnoDSP_SS_TI.dll AlgEntry 1 0 0"};
}

Lines meterLines() {
    Lines lines;
    const char* const meters[][3] = {
        {"ABC1", "GRL", "2"}, {"ABC2", "GRR", "2"}, {"ABC3", "InRMS", "0"}, {"ABC4", "OutRMS", "1"}};
    int number = 0;
    for (const auto& [id, name, kind] : meters) {
        const std::string map = "effect.map" + std::to_string(++number);
        lines = std::move(lines) + Lines{"effect.NewPropertyMap " + map, map + " 200 " + kind, map + " 201 1",
                                         map + " 202 1",
                                         "effect.AddMeterDescription " + std::string(id) + " " + name + " 1"};
    }
    return lines;
}

const Lines kModuleLines = {"collection.SetManufacturerName Morvak",
                            "collection.AddPackageName Varno-S AAX Plug-In",
                            "collection.AddPackageName Varno-S Plug-In",
                            "collection.AddPackageName Varno-S",
                            "collection.AddPackageName VarS",
                            "collection.SetPackageVersion 1"};

// A description passed to a recording host, whose diagnostics channel is open.
class Describe : public testing::Test {
protected:
    AAX_Result describe() {
        AAX_VCollection collection(&host);
        return GetEffectDescriptions(&collection);
    }
    Lines& calls() { return host.log.calls; }
    // Texts of the failed assertions, all of which must name the right source.
    Lines assertions() const {
        Lines notes;
        for (const auto& assertion : listener.assertions()) {
            EXPECT_EQ(assertion.file, "DemoGain_Describe");
            EXPECT_GT(assertion.line, 0);
            EXPECT_EQ(assertion.flags, 1);
            notes.push_back(assertion.note);
        }
        return notes;
    }

    ListeningHost listener;
    CollectionRecorder host;
};

TEST_F(Describe, tellsTheHostEverythingInOrder) {
    EXPECT_EQ(describe(), AAX_SUCCESS);
    const Lines expected =
        Lines{"collection.NewDescriptor", "effect.NewComponentDescriptor", "effect.AddName Varno-S",
              "effect.AddName Varno-S",   "effect.AddName VarS",           "effect.AddName VarS",
              "effect.AddName Va",        "effect.AddCategory 2",          "component.Clear"} +
        monoLines("component.map1") + Lines{"effect.AddComponent 1", "component.Clear"} +
        stereoLines("component.map2") +
        Lines{"effect.AddComponent 1", "effect.AddProcPtr 0", "effect.AddResourceInfo 1 Varno-S.xml",
              "effect.AddProcPtr 1"} +
        meterLines() + Lines{"collection.AddEffect com.morvak.varno-s.aax 1"} + kModuleLines;
    EXPECT_EQ(calls(), expected);
    EXPECT_EQ(assertions(), Lines{});
}

TEST_F(Describe, registersTheRoutinesAndProceduresOfTheModule) {
    describe();
    ASSERT_EQ(host.effect.component.routines.size(), 2U);
    EXPECT_EQ(host.effect.component.routines[0],
              reinterpret_cast<AAX_CProcessProc>(&DemoGain_AlgorithmProcessFunction<1, 1>));
    EXPECT_EQ(host.effect.component.routines[1],
              reinterpret_cast<AAX_CProcessProc>(&DemoGain_AlgorithmProcessFunction<2, 2>));
    EXPECT_EQ(host.effect.procedures[kAAX_ProcPtrID_Create_EffectParameters],
              reinterpret_cast<void*>(&DemoGain_Parameters::Create));
    EXPECT_EQ(host.effect.procedures[kAAX_ProcPtrID_Create_EffectGUI],
              reinterpret_cast<void*>(&DemoGain_GUI::Create));
}

TEST_F(Describe, givesEveryReferenceBack) {
    describe();
    EXPECT_EQ(host.allReferences(), 0);
}

TEST_F(Describe, stopsWithoutAnEffectDescriptor) {
    host.log.answers["collection.NewDescriptor"] = -1;
    EXPECT_EQ(describe(), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(calls(), Lines{"collection.NewDescriptor"} + kModuleLines);
    EXPECT_EQ(assertions(), Lines{"result == AAX_SUCCESS"});
}

TEST_F(Describe, stopsWithoutAComponentDescriptor) {
    host.log.answers["effect.NewComponentDescriptor"] = -1;
    EXPECT_EQ(describe(), AAX_ERROR_NULL_OBJECT);
    EXPECT_EQ(calls(), (Lines{"collection.NewDescriptor", "effect.NewComponentDescriptor"} + kModuleLines));
    EXPECT_EQ(assertions(), Lines{"result == AAX_SUCCESS"});
}

TEST_F(Describe, describesFieldsButNoRoutineWithoutAPropertyMap) {
    host.log.answers["component.NewPropertyMap"] = -1;
    EXPECT_EQ(describe(), AAX_SUCCESS);
    EXPECT_EQ(assertions(), (Lines{"properties", "properties"}));
    EXPECT_TRUE(host.effect.component.routines.empty());
    EXPECT_THAT(calls(), testing::Contains("PrivateData 29 392 0").Times(2));
    EXPECT_THAT(calls(), testing::Contains("effect.AddComponent 1").Times(2));
}

TEST_F(Describe, addsNoEffectWithoutAMapForEachMeter) {
    host.log.answers["effect.NewPropertyMap effect.map3"] = -1;
    EXPECT_EQ(describe(), AAX_ERROR_NULL_OBJECT);
    EXPECT_THAT(calls(), testing::Contains(testing::StartsWith("effect.AddMeterDescription")).Times(2));
    EXPECT_THAT(calls(), testing::Not(testing::Contains(testing::StartsWith("collection.AddEffect"))));
    EXPECT_EQ(Lines(calls().end() - static_cast<std::ptrdiff_t>(kModuleLines.size()), calls().end()),
              kModuleLines);
    EXPECT_EQ(assertions(), Lines{"properties"});
}

TEST_F(Describe, answersWithTheFailureOfAddingTheEffect) {
    host.log.answers["collection.AddEffect"] = AAX_ERROR_DUPLICATE_EFFECT_ID;
    EXPECT_EQ(describe(), AAX_ERROR_DUPLICATE_EFFECT_ID);
    EXPECT_EQ(assertions(), Lines{"result == AAX_SUCCESS"});
    EXPECT_EQ(Lines(calls().end() - static_cast<std::ptrdiff_t>(kModuleLines.size()), calls().end()),
              kModuleLines);
}

TEST_F(Describe, reportsEveryOtherFailureAndCarriesOn) {
    ASSERT_EQ(describe(), AAX_SUCCESS);
    const Lines complete = calls();
    std::size_t reported = 0;
    for (const std::string& call : complete) {
        const bool decidesTheResult =
            call.find("New") != std::string::npos || call.starts_with("collection.AddEffect");
        if (decidesTheResult) {
            continue;
        }
        SCOPED_TRACE(call);
        CollectionRecorder other;
        other.log.answers[call] = AAX_ERROR_INVALID_ARGUMENT;
        AAX_VCollection collection(&other);
        EXPECT_EQ(GetEffectDescriptions(&collection), AAX_SUCCESS);
        EXPECT_EQ(other.log.calls, complete);
        const Lines notes = assertions();
        ASSERT_GT(notes.size(), reported);
        EXPECT_EQ(notes.back(), "err == AAX_SUCCESS");
        reported = notes.size();
    }
}

TEST_F(Describe, reportsAStemFormatOtherThanMonoAndStereo) {
    AAX_VComponentDescriptor component(&host.effect.component, false);
    DescribeAlgorithmComponent(static_cast<AAX_EStemFormat>(0x20003), &component);
    EXPECT_EQ(assertions(), Lines{"inStemFormat == AAX_eStemFormat_Mono || inStemFormat == "
                                  "AAX_eStemFormat_Stereo"});
    EXPECT_EQ(calls(), fieldLines("component.map1"));
}

TEST_F(Describe, isRegisteredThroughTheEntryPoint) {
    IACFPluginDefinition* definition = nullptr;
    EXPECT_EQ(ACFRegisterPlugin(&host, &definition), ACF_OK);
    ASSERT_NE(definition, nullptr);
    definition->Release();
    EXPECT_EQ(host.allReferences(), 0);
    EXPECT_TRUE(listener.lines().empty());
}

TEST_F(Describe, failsTheEntryPointWithItsCodeAndOneTraceLine) {
    host.log.answers["collection.AddEffect"] = AAX_ERROR_DUPLICATE_EFFECT_ID;
    IACFPluginDefinition* definition = nullptr;
    EXPECT_EQ(ACFRegisterPlugin(&host, &definition), AAX_ERROR_DUPLICATE_EFFECT_ID);
    EXPECT_EQ(definition, nullptr);
    EXPECT_EQ(host.allReferences(), 0);
    Lines caught;
    for (const auto& line : listener.lines()) {
        if (line.priority == AAX_eTracePriorityHost_High) {
            caught.push_back(line.text);
        }
    }
    EXPECT_EQ(caught, Lines{"AAXRegisterPlugin exception caught: AAX_ERROR_DUPLICATE_EFFECT_ID (-20035)"});
}

TEST(DescribeNames, endWithTheFirstTwoLettersOfTheFirst) {
    CollectionRecorder host;
    AAX_VCollection collection(&host);
    GetEffectDescriptions(&collection);
    EXPECT_THAT(host.log.calls, testing::Contains("effect.AddName Va").Times(1));
}

} // namespace
