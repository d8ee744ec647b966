// The bundle as hosts find it on disk, and its linter, checked with bundles that have one fault each.
#include "Tests/Formats/LV2/BundleLint.h"

#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace varno::test {
namespace {

namespace fs = std::filesystem;

// A copy of the bundle, to be damaged.
class Bundle : public testing::Test {
protected:
    Bundle() {
        for (const auto& entry : fs::directory_iterator(VARNO_LV2_BUNDLE)) {
            if (entry.is_regular_file()) {
                fs::copy(entry.path(), mFolder.path());
            }
        }
    }

    // Replaces the first `part` of the description, which must be there.
    void spoil(const std::string& part, const std::string& by) {
        std::string text = readFile(mFolder / "varno-s.ttl");
        const std::size_t at = text.find(part);
        ASSERT_NE(at, std::string::npos) << part;
        std::ofstream(mFolder / "varno-s.ttl") << text.replace(at, part.size(), by);
    }

    std::vector<std::string> faults() const { return faultsOfBundle(mFolder.path()); }

    TemporaryFolder mFolder;
};

TEST_F(Bundle, hasNoFault) {
    EXPECT_THAT(faultsOfBundle(VARNO_LV2_BUNDLE), IsEmpty());
    EXPECT_THAT(faults(), IsEmpty());
}

TEST_F(Bundle, hasABinaryWithoutFault) {
    EXPECT_THAT(faultsOfBinary(fs::path(VARNO_LV2_BUNDLE) / "varno-s.so", "lv2_descriptor"), IsEmpty());
}

TEST_F(Bundle, hasAWindowsBinaryWithoutFault) {
    EXPECT_THAT(faultsOfBinary(fs::path(VARNO_LV2_BUNDLE) / "varno-s-ui.so", "lv2ui_descriptor"), IsEmpty());
}

TEST_F(Bundle, hasPicturesBesideTheBinary) {
    EXPECT_TRUE(fs::is_directory(fs::path(VARNO_LV2_BUNDLE) / "resources"));
    EXPECT_FALSE(fs::is_empty(fs::path(VARNO_LV2_BUNDLE) / "resources"));
}

struct Spoiling {
    const char* part;
    const char* by;
    const char* fault;
};

TEST_F(Bundle, withAFaultIsSeen) {
    const std::string original = readFile(mFolder / "varno-s.ttl");
    for (const Spoiling& spoiling : {
             Spoiling{"doap:license <http://opensource.org/licenses/mit> ;\n\tdoap:shortdesc",
                      "doap:shortdesc", "no licence"},
             {"lv2:symbol \"hot\"", "lv2:symbol \"gain\"", "another port has this symbol"},
             {"lv2:name \"Hot\"", "lv2:name \"Gain\"", "another port has this name"},
             {"lv2:default 0.07", "lv2:default 1.07", "its default lies outside its range"},
             {"lv2:minimum 0.0", "lv2:minimum 2.0", "its default lies outside its range"},
             {"rdfs:label \"+3 dB\"", "rdfs:label \"+6 dB\"", "two scale points have one label"},
             {"rdf:value 0.5", "rdf:value 0.575", "two scale points have one value"},
             {"rdf:value 0.5 ", "rdf:value 1.5 ", "a scale point lies outside its range"},
             {"lv2:minorVersion 2", "lv2:minorVersion 0", "its minor version tells that it is unstable"},
             {"lv2:microVersion 0", "lv2:microVersion 1", "its micro version tells that it is unstable"},
             {"lv2:optionalFeature", "lv2:requiredFeature", "it requires a feature"},
             {"lv2:optionalFeature lv2:hardRTCapable", "lv2:optionalFeature lv2:inPlaceBroken",
              "it is broken in place"},
             {"lv2:optionalFeature lv2:hardRTCapable",
              "lv2:extensionData <http://lv2plug.in/ns/ext/state#interface>",
              "it has no http://lv2plug.in/ns/ext/state#interface"},
             {"a lv2:Plugin , lv2:DistortionPlugin , lv2:CompressorPlugin", "a lv2:Plugin",
              "its class is none in particular"},
             {"lv2:reportsLatency , lv2:integer , pprops:notOnGUI ;\n\tlv2:designation lv2:latency",
              "lv2:integer", "no latency port"},
             {"rdfs:comment \"Input gain", "rdfs:label \"Input gain", "no comment"},
             {"pg:group <urn:morvak:varno-s#mono-input>", "pg:group <urn:morvak:varno-s#mono-nothing>",
              "its group is none"},
             {"pg:group <urn:morvak:varno-s#mono-input> ;", "", "no group"},
             {"units:unit units:coef ;", "pg:group <urn:morvak:varno-s#mono-input> ;",
              "a group that some hosts take for a sound's"},
             {"lv2:project <urn:morvak:varno-s> ;", "", "no project"},
         }) {
        std::ofstream(mFolder / "varno-s.ttl") << original;
        spoil(spoiling.part, spoiling.by);
        EXPECT_THAT(faults(), Contains(HasSubstr(spoiling.fault))) << spoiling.part;
    }
}

TEST_F(Bundle, withoutPluginsIsSeen) {
    std::ofstream(mFolder / "manifest.ttl") << "";
    EXPECT_THAT(faults(), Contains("there is no plug-in"));
}

TEST_F(Bundle, withoutItsBinaryIsSeen) {
    fs::remove(mFolder / "varno-s.so");
    EXPECT_THAT(faults(), Contains(HasSubstr("its binary makes no plug-in")));
}

TEST(BundleBinary, withFaultsIsSeen) {
    EXPECT_THAT(faultsOfBinary(VARNO_UNFIT_BINARY, "lv2_descriptor"),
                IsSupersetOf({"lv2_descriptor is not exported", "leakedFunction is exported",
                              "vfork makes a process"}));
    EXPECT_THAT(faultsOfBinary(VARNO_UNFIT_BINARY, "leakedFunction"), Contains(HasSubstr("is needed")));
}

} // namespace
} // namespace varno::test
