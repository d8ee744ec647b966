#include "Host/ModuleBinary.h"

#include "Host/PageTable.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

const fs::path kFixtureBundle = fs::path(VARNO_FIXTURE_BUNDLES) / "Fixture.aaxplugin";
const fs::path kIncompleteBundle = fs::path(VARNO_FIXTURE_BUNDLES) / "Incomplete.aaxplugin";

// The path of a bundle's binary below the bundle, as found in a sound one.
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
