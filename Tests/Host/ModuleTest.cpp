#include "Host/Module.h"

#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using fixture::Fault;
using fixture::FaultScope;
using testing::ElementsAre;

class ModuleTest : public FixtureTest {};

TEST_F(ModuleTest, CollectsTheDescription) {
    const ModuleDescription& description = module()->description();
    EXPECT_EQ(fixture::kSDKVersion, description.sdkVersion);
    EXPECT_EQ("Example", description.manufacturerName);
    EXPECT_THAT(description.packageNames, ElementsAre("Fixture"));
    EXPECT_EQ(7U, description.packageVersion);
    ASSERT_EQ(1U, description.effects.size());

    const EffectDescription& effect = description.effects[0];
    EXPECT_EQ(fixture::kEffectID, effect.id);
    EXPECT_THAT(effect.names, ElementsAre("Fixture Gain"));
    EXPECT_THAT(effect.categories, ElementsAre(AAX_ePlugInCategory_Dynamics));
    EXPECT_EQ("Fixture.xml", effect.resource(AAX_eResourceType_PageTable)->fileName);
    ASSERT_EQ(1U, effect.meters.size());
    EXPECT_EQ("In", effect.meters[0].name);
    EXPECT_EQ(AAX_eMeterKind_Input, integerProperty(effect.meters[0].properties, AAX_eProperty_Meter_Kind));
    ASSERT_EQ(2U, effect.variants.size());
    EXPECT_EQ(1, effect.variants[0].inputChannels());
    EXPECT_EQ(2, effect.variants[1].outputChannels());
}

TEST_F(ModuleTest, EachRegistrationSeesThePropertiesSetBeforeIt) {
    const VariantDescription& stereo = module()->description().effects[0].variants[1];
    EXPECT_EQ(std::nullopt, integerProperty(stereo.natives[0].properties, AAX_eProperty_PlugInID_TI));
    EXPECT_EQ(static_cast<std::int32_t>(fixture::kStereoTiID),
              integerProperty(stereo.tis[0].properties, AAX_eProperty_PlugInID_TI));
    EXPECT_EQ("Fixture_TI.dll", stereo.tis[0].dllName);
    EXPECT_EQ("Entry", stereo.tis[0].entryName);
    EXPECT_NE(stereo.natives[0].procID, stereo.tis[0].procID);
}

TEST_F(ModuleTest, FailsWhenStartupFails) {
    const FaultScope fault(Fault::StartupFails);
    EXPECT_EQ("the linked-in module: ACFStartup answered -2147418113, expected 0",
              hostErrorOf([&] { module(); }));
}

TEST_F(ModuleTest, FailsWhenRegistrationFailsAndShutsDown) {
    {
        const FaultScope fault(Fault::RegistrationFails);
        EXPECT_EQ("the linked-in module: ACFRegisterPlugin answered -20004, expected 0",
                  hostErrorOf([&] { module(); }));
    }
    EXPECT_EQ(nullptr, fixture::services());
}

TEST_F(ModuleTest, FailsWithoutADefinition) {
    const FaultScope fault(Fault::NoDefinition);
    EXPECT_EQ("the linked-in module: ACFRegisterPlugin handed out no definition",
              hostErrorOf([&] { module(); }));
}

TEST_F(ModuleTest, FailsWhenAnEntryPointIsMissing) {
    ModuleEntryPoints table = fixture::entryPoints();
    table.canUnloadNow = nullptr;
    EXPECT_EQ("the linked-in module: an entry point is missing, expected seven",
              hostErrorOf([&] { Module::linked(table); }));
}

TEST_F(ModuleTest, ShutsTheModuleDownAtItsEnd) {
    module();
    EXPECT_NE(nullptr, fixture::services());
    endModule();
    EXPECT_EQ(nullptr, fixture::services());
}

TEST_F(ModuleTest, CanBeOpenedAgain) {
    module();
    endModule();
    EXPECT_EQ(1U, module()->description().effects.size());
}

TEST_F(ModuleTest, CountsTheModulesObjectsApartFromItsOwn) {
    EXPECT_EQ(0, module()->liveObjects());
    EXPECT_EQ("1 host services, 1 module host", module()->context()->ledger.text());
    const auto first = makeInstance();
    const auto second = makeInstance();
    EXPECT_EQ(2, module()->liveObjects());
    EXPECT_EQ("1 host services, 2 instance host, 1 module host", module()->context()->ledger.text());
}

TEST_F(ModuleTest, LivesAsLongAsItsInstances) {
    auto instance = makeInstance();
    const std::weak_ptr<Module> watch = module();
    endModule();
    EXPECT_FALSE(watch.expired());
    instance.reset();
    EXPECT_TRUE(watch.expired());
}

TEST_F(ModuleTest, FindsItsResources) {
    options.resources = "somewhere";
    EXPECT_EQ(std::filesystem::path("somewhere") / "Fixture.xml", module()->resourcePath("Fixture.xml"));
    endModule();
    EXPECT_TRUE(Module::linked(fixture::entryPoints())->resourcePath("Fixture.xml").empty());
}

TEST_F(ModuleTest, HandsTraceLinesToTheSink) {
    std::vector<std::string> lines;
    options.traceSink = [&](std::int32_t priority, const char* message) {
        lines.push_back(std::to_string(priority) + " " + message);
    };
    monitor().expectTrace("hello");
    module();
    fixture::services()->Trace(5, "hello");
    EXPECT_THAT(lines, ElementsAre("5 hello"));
}

TEST_F(ModuleTest, OrderedFaultsFailTheDescription) {
    options.faults.addEffect = AAX_ERROR_DUPLICATE_EFFECT_ID;
    EXPECT_EQ("the linked-in module: ACFRegisterPlugin answered -20035, expected 0",
              hostErrorOf([&] { module(); }));
}

} // namespace
} // namespace varno
