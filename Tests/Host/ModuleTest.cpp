#include "Host/Module.h"
#include "Host/PageTable.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using fixture::Fault;
using fixture::FaultScope;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

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
    const FaultScope fault(Fault::kStartupFails);
    EXPECT_EQ("the linked-in module: ACFStartup answered -2147418113, expected 0",
              hostErrorOf([&] { module(); }));
}

TEST_F(ModuleTest, FailsWhenRegistrationFailsAndShutsDown) {
    {
        const FaultScope fault(Fault::kRegistrationFails);
        EXPECT_EQ("the linked-in module: ACFRegisterPlugin answered -20004, expected 0",
                  hostErrorOf([&] { module(); }));
    }
    EXPECT_EQ(nullptr, fixture::services());
}

TEST_F(ModuleTest, FailsWithoutADefinition) {
    const FaultScope fault(Fault::kNoDefinition);
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

TEST_F(ModuleTest, FailsWithTheDescription) {
    const FaultScope fault(Fault::kDescribesEffectTwice);
    EXPECT_EQ("the linked-in module: ACFRegisterPlugin answered -20035, expected 0",
              hostErrorOf([&] { module(); }));
}

namespace fs = std::filesystem;

const fs::path kFixtureBundle = fs::path(VARNO_FIXTURE_BUNDLES) / "Fixture.aaxplugin";
const fs::path kIncompleteBundle = fs::path(VARNO_FIXTURE_BUNDLES) / "Incomplete.aaxplugin";

// The path of a bundle's binary below the bundle, as found in an intact one.
fs::path binaryBelow(const std::string& name) {
    for (const auto& entry : fs::recursive_directory_iterator(kFixtureBundle)) {
        if (entry.path().filename() == "Fixture.so") {
            return fs::relative(entry.path().parent_path(), kFixtureBundle) / (name + ".so");
        }
    }
    return {};
}

std::string openError(const fs::path& bundle) {
    return hostErrorOf([&] { ModuleBinary binary(bundle); });
}

TEST(ModuleBinaryTest, OpensABundle) {
    const ModuleBinary binary(kFixtureBundle);
    std::uint64_t version = 0;
    EXPECT_EQ(0, binary.entryPoints().getSDKVersion(&version));
    EXPECT_EQ(fixture::kSDKVersion, version);
    EXPECT_EQ(kFixtureBundle / "Contents" / "Resources", binary.resources());
}

TEST(ModuleBinaryTest, OpensABundleWhosePathEndsWithASlash) {
    const ModuleBinary binary(kFixtureBundle.string() + "/");
    EXPECT_EQ(kFixtureBundle, binary.bundle());
}

TEST(ModuleBinaryTest, AModuleRunsFromItsBundle) {
    HostOptions options;
    options.monitor = std::make_shared<ContractMonitor>();
    {
        const auto module = Module::open(kFixtureBundle, options);
        EXPECT_EQ("Example", module->description().manufacturerName);
        Instance instance(module, {});
        float in[4] = {1.0F, 1.0F, 1.0F, 1.0F};
        float out[2][4] = {};
        const float* inputs[] = {in, in};
        float* outputs[] = {out[0], out[1]};
        instance.process(inputs, outputs, 4);
        EXPECT_EQ(0.5F, out[1][3]);
        EXPECT_TRUE(instance.pageTable(AAX_FourCC("CtSf"), 8));
    }
    EXPECT_TRUE(options.monitor->violations().empty());
}

TEST(ModuleBinaryTest, OpensAndClosesAHundredTimes) {
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(1U, Module::open(kFixtureBundle)->description().effects.size());
    }
}

TEST(ModuleBinaryTest, RefusesAMissingBundle) {
    EXPECT_EQ("module \"nowhere/X.aaxplugin\": not found, expected a bundle folder (Name.aaxplugin)",
              openError("nowhere/X.aaxplugin"));
}

TEST(ModuleBinaryTest, RefusesAFile) {
    const TemporaryFolder folder;
    const fs::path file = folder.write("X.aaxplugin", "text");
    EXPECT_EQ("module \"" + file.string() + "\": found a file, expected a bundle folder (Name.aaxplugin)",
              openError(file));
}

TEST(ModuleBinaryTest, RefusesABundleWithoutBinary) {
    const TemporaryFolder folder;
    const fs::path bundle = folder.path() / "X.aaxplugin";
    fs::create_directories(bundle / "Contents" / "Resources");
    EXPECT_EQ("module \"" + bundle.string() + "\": no binary for this machine, expected \"" +
                  (bundle / binaryBelow("X")).string() + "\"",
              openError(bundle));
}

TEST(ModuleBinaryTest, RefusesWhatIsNoBinary) {
    const TemporaryFolder folder;
    const fs::path bundle = folder.path() / "X.aaxplugin";
    const fs::path binary = folder.write("X.aaxplugin" / binaryBelow("X"), "");
    const std::string prefix =
        "module \"" + bundle.string() + "\": cannot load \"" + binary.string() + "\": ";
    EXPECT_EQ(prefix + "found 0 bytes, expected at least 64", openError(bundle));
    folder.write("X.aaxplugin" / binaryBelow("X"), "not a library");
    EXPECT_EQ(prefix + "found 13 bytes, expected at least 64", openError(bundle));
    folder.write("X.aaxplugin" / binaryBelow("X"), std::string(100, 'x'));
    EXPECT_EQ(prefix + "found no shared library for this machine", openError(bundle));
}

// A copy of the fixture's bundle, to be damaged.
class DamagedBundle {
public:
    DamagedBundle() {
        mBinary = mFolder.write("X.aaxplugin" / binaryBelow("X"), "");
        fs::copy_file(kFixtureBundle / binaryBelow("Fixture"), mBinary, fs::copy_options::overwrite_existing);
    }

    fs::path bundle() const { return mFolder.path() / "X.aaxplugin"; }
    const fs::path& binary() const { return mBinary; }

private:
    TemporaryFolder mFolder;
    fs::path mBinary;
};

TEST(ModuleBinaryTest, RefusesATruncatedBinary) {
    const DamagedBundle damaged;
    for (const std::uintmax_t length : {8192U, 4096U, 1000U, 100U, 64U, 63U}) {
        fs::resize_file(damaged.binary(), length);
        EXPECT_THAT(openError(damaged.bundle()),
                    HasSubstr("found " + std::to_string(length) + " bytes, expected"));
    }
}

TEST(ModuleBinaryTest, LeavesOtherDamageToTheLoader) {
    const DamagedBundle damaged;
    std::fstream file(damaged.binary(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(16); // the type of the file: neither a library nor anything else
    file.put('\x77');
    file.close();
    EXPECT_THAT(openError(damaged.bundle()),
                StartsWith("module \"" + damaged.bundle().string() + "\": cannot load its binary: "));
}

TEST(ModuleBinaryTest, RefusesABinaryWithoutAnEntryPoint) {
    EXPECT_EQ("module \"" + kIncompleteBundle.string() + "\": \"" +
                  (kIncompleteBundle / binaryBelow("Incomplete")).string() +
                  "\" has no entry point ACFShutdown",
              openError(kIncompleteBundle));
}

} // namespace
} // namespace varno
