#include "Host/ModuleDescription.h"

#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ModuleDescriptionTest : public FixtureTest {
protected:
    // The fixture's description, to be damaged.
    ModuleDescription description() { return module()->description(); }

    static std::vector<std::string> problemsAfter(ModuleDescription description,
                                                  const std::function<void(VariantDescription&)>& damage) {
        damage(description.effects[0].variants[1]);
        return descriptionProblems(description);
    }
};

TEST_F(ModuleDescriptionTest, FindsNothingWrongWithASoundOne) {
    EXPECT_THAT(descriptionProblems(description()), IsEmpty());
}

TEST_F(ModuleDescriptionTest, FindsWhatAModuleLacks) {
    EXPECT_THAT(descriptionProblems({}),
                ElementsAre("the module names no manufacturer", "the module has no package name",
                            "the module has no effect"));
}

TEST_F(ModuleDescriptionTest, FindsWhatAnEffectLacks) {
    ModuleDescription damaged = description();
    EffectDescription& effect = damaged.effects[0];
    effect.id = "x";
    effect.names.clear();
    effect.variants.clear();
    effect.procedures.clear();
    EXPECT_THAT(descriptionProblems(damaged),
                ElementsAre("effect x: no name", "effect x: no variant",
                            "effect x: no creation procedure for the data model"));
    effect.id.clear();
    EXPECT_EQ("an effect has no identifier", descriptionProblems(damaged)[0]);
}

TEST_F(ModuleDescriptionTest, FindsFieldsDeclaredTwice) {
    EXPECT_THAT(
        problemsAfter(description(), [](VariantDescription& variant) { variant.fields[1].index = 0; }),
        ElementsAre("effect org.example.fixture.gain, variant 1: field 0 is declared twice",
                    "effect org.example.fixture.gain, variant 1: field 1 is not declared"));
}

TEST_F(ModuleDescriptionTest, FindsFieldsThatAreMissing) {
    EXPECT_THAT(problemsAfter(description(),
                              [](VariantDescription& variant) {
                                  for (FieldDescription& field : variant.fields) {
                                      field.kind = FieldKind::kReserved;
                                  }
                              }),
                ElementsAre("effect org.example.fixture.gain, variant 1: no field for audio in",
                            "effect org.example.fixture.gain, variant 1: no field for audio out",
                            "effect org.example.fixture.gain, variant 1: no field for buffer length"));
}

TEST_F(ModuleDescriptionTest, FindsRoutinesThatCannotRun) {
    EXPECT_THAT(problemsAfter(description(), [](VariantDescription& variant) { variant.natives.clear(); }),
                ElementsAre("effect org.example.fixture.gain, variant 1: no native routine"));
    EXPECT_THAT(
        problemsAfter(description(),
                      [](VariantDescription& variant) {
                          variant.natives[0].properties.erase(AAX_eProperty_InputStemFormat);
                      }),
        ElementsAre("effect org.example.fixture.gain, variant 1: the native routine has no stem formats"));
}

TEST_F(ModuleDescriptionTest, FindsPlugInIdentifiersThatAreMissingOrUsedTwice) {
    EXPECT_THAT(problemsAfter(description(),
                              [](VariantDescription& variant) {
                                  variant.natives[0].properties[AAX_eProperty_PlugInID_Native] =
                                      static_cast<std::int32_t>(fixture::kMonoID);
                              }),
                ElementsAre("effect org.example.fixture.gain: plug-in identifier FxGm is used twice"));
    EXPECT_THAT(problemsAfter(description(),
                              [](VariantDescription& variant) {
                                  variant.natives[0].properties.erase(AAX_eProperty_PlugInID_Native);
                              }),
                ElementsAre("effect org.example.fixture.gain: a native routine has no plug-in identifier"));
}

TEST_F(ModuleDescriptionTest, LooksThingsUp) {
    const ModuleDescription whole = description();
    EXPECT_EQ(&whole.effects[0], whole.effect(""));
    EXPECT_EQ(&whole.effects[0], whole.effect(fixture::kEffectID));
    EXPECT_EQ(nullptr, whole.effect("nobody"));
    const EffectDescription& effect = whole.effects[0];
    EXPECT_EQ(&effect.variants[0], effect.variantFor(1));
    EXPECT_EQ(nullptr, effect.variantFor(3));
    EXPECT_EQ(nullptr, effect.procedure(static_cast<AAX_CProcPtrID>(9)));
    EXPECT_EQ(nullptr, effect.resource(static_cast<AAX_EResourceType>(9)));
    EXPECT_TRUE(effect.variants[1].hasPlugInID(fixture::kStereoTiID));
    EXPECT_FALSE(effect.variants[0].hasPlugInID(fixture::kStereoTiID));
    EXPECT_EQ(nullptr, VariantDescription().firstField(FieldKind::kMeters));
    EXPECT_EQ(0U, VariantDescription().contextLength());
    EXPECT_EQ(0, VariantDescription().inputChannels());
}

TEST(CodeTextTest, ShowsCharactersOrDigits) {
    EXPECT_EQ("mtGL", codeText(AAX_FourCC("mtGL")));
    EXPECT_EQ("0x00000001", codeText(1));
    EXPECT_EQ("0x6D74477F", codeText(0x6D74477FU));
}

TEST(StemChannelsTest, AreTheLowHalfOfTheFormat) {
    EXPECT_EQ(1, stemChannels(AAX_eStemFormat_Mono));
    EXPECT_EQ(2, stemChannels(AAX_eStemFormat_Stereo));
}

TEST(FieldKindNameTest, NamesEveryKind) {
    EXPECT_STREQ("audio in", fieldKindName(FieldKind::kAudioIn));
    EXPECT_STREQ("audio out", fieldKindName(FieldKind::kAudioOut));
    EXPECT_STREQ("buffer length", fieldKindName(FieldKind::kBufferLength));
    EXPECT_STREQ("sample rate", fieldKindName(FieldKind::kSampleRate));
    EXPECT_STREQ("clock", fieldKindName(FieldKind::kClock));
    EXPECT_STREQ("side-chain in", fieldKindName(FieldKind::kSideChainIn));
    EXPECT_STREQ("data-in port", fieldKindName(FieldKind::kDataInPort));
    EXPECT_STREQ("private data", fieldKindName(FieldKind::kPrivateData));
    EXPECT_STREQ("temporary data", fieldKindName(FieldKind::kTemporaryData));
    EXPECT_STREQ("meters", fieldKindName(FieldKind::kMeters));
    EXPECT_STREQ("reserved", fieldKindName(FieldKind::kReserved));
}

} // namespace
} // namespace varno
