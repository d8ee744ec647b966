// The texts that hosts read, made from the module and some presets.
#include "LV2/Description/BundleFiles.h"

#include "Host/Module.h"
#include "Tests/Support/HostFixture.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

using testing::HasSubstr;
using testing::Not;

namespace varno {
namespace {

namespace fs = std::filesystem;

class BundleFiles : public HostFixture {
protected:
    BundleFiles()
        : HostFixture(linkedEntryPoints()) {}

    FactoryPreset preset(const std::string& name, const std::string& text) {
        return readFactoryPreset(mFolder.write(name, text));
    }

    BundleContent content(std::span<const FactoryPreset> presets = {}, bool hasWindow = false) {
        return {module(), presets, hasWindow};
    }

    test::TemporaryFolder mFolder;
};

const std::string kPreset =
    "Varno-S 030001\n"
    "Gain 0.6200000048 Volume 0.5500000119 Hipass 0.0000000000 Band 1.0000000000\n"
    "Attack 0.5000000000 Release 0.4000000060 UK 0.0000000000 Hottitude 0.1000000015\n"
    "Ratio 0.4285714328 Mix 0.0000000000 Auto 0.0000000000 HarmSw 0.0000000000\n"
    "LinkSw 1.0000000000\n";

TEST_F(BundleFiles, nameTheWindowOnlyWhereThereIsOne) {
    for (const bool hasWindow : {true, false}) {
        for (const std::string& text :
             {manifestText(content({}, hasWindow)), pluginsText(content({}, hasWindow))}) {
            EXPECT_EQ(text.find("<urn:morvak:varno-s#ui>") != std::string::npos, hasWindow);
        }
    }
}

TEST_F(BundleFiles, haveHostsNotifyTheWindowOfEveryMeter) {
    const std::string text = windowText(content({}, true));
    for (const char* plugin : {"mono", "stereo"}) {
        for (const char* symbol : {"grl", "grr", "inrms", "outrms"}) {
            EXPECT_THAT(text,
                        HasSubstr("ui:plugin <urn:morvak:varno-s#" + std::string(plugin) +
                                  "> ;\n\tlv2:symbol \"" + symbol + "\" ;\n\tui:protocol ui:floatProtocol"));
        }
    }
    EXPECT_THAT(text, Not(HasSubstr("\"gain\""))) << "input ports are told anyway";
    EXPECT_THAT(text, Not(HasSubstr("ui:resize"))) << "is no feature to list any more";
    EXPECT_THAT(text, Not(HasSubstr("lv2:requiredFeature")));
}

TEST_F(BundleFiles, holdEveryPresetForBothPlugins) {
    const FactoryPreset presets[] = {preset("drum-bus.txt", kPreset), preset("x.txt", kPreset)};
    for (const char* uri : {"<urn:morvak:varno-s#mono-drum-bus>", "<urn:morvak:varno-s#stereo-drum-bus>",
                            "<urn:morvak:varno-s#mono-x>", "<urn:morvak:varno-s#stereo-x>"}) {
        EXPECT_THAT(manifestText(content(presets)), HasSubstr(uri));
        EXPECT_THAT(presetsText(content(presets)), HasSubstr(uri));
    }
    EXPECT_THAT(manifestText(content()), Not(HasSubstr("pset:Preset")));
}

TEST_F(BundleFiles, writePresetsAsDecimals) {
    const FactoryPreset presets[] = {preset("drum-bus.txt", kPreset + "Keeps the kick up.\n")};
    const std::string text = presetsText(content(presets));
    EXPECT_THAT(text, HasSubstr("lv2:symbol \"gain\" ;\n\tpset:value 0.62"));
    EXPECT_THAT(text, HasSubstr("lv2:symbol \"band\" ;\n\tpset:value 1.0"));
    EXPECT_THAT(text, HasSubstr("lv2:symbol \"linksw\" ;\n\tpset:value 1.0"));
    EXPECT_THAT(text, HasSubstr("rdfs:label \"Drum bus\""));
    EXPECT_THAT(text, HasSubstr("rdfs:comment \"Keeps the kick up.\""));
}

TEST_F(BundleFiles, refuseWhatIsNoPreset) {
    EXPECT_THROW(preset("empty.txt", ""), std::runtime_error);
    EXPECT_THROW(preset("broken.txt", kPreset.substr(0, 100)), std::runtime_error);
    std::string outside = kPreset;
    outside.replace(outside.find("0.62"), 1, "1");
    EXPECT_THROW(preset("outside.txt", outside), std::runtime_error);
    EXPECT_THROW(readFactoryPreset(mFolder / "missing.txt"), std::runtime_error);
}

TEST_F(BundleFiles, stateWhatTheModuleStates) {
    const std::string text = pluginsText(content());
    EXPECT_THAT(text, HasSubstr("lv2:symbol \"hot\" ;\n\tlv2:name \"Hot\" ;\n\tlv2:default 0.07"));
    EXPECT_THAT(text, HasSubstr("doap:name \"Varno-S Stereo\""));
    EXPECT_THAT(text, HasSubstr("foaf:name \"Morvak\""));
    EXPECT_THAT(text, HasSubstr("[ rdfs:label \"-20 dB\" ; rdf:value 0.0 ]"));
    EXPECT_THAT(text, HasSubstr("[ rdfs:label \"0 dB\" ; rdf:value 0.5 ]"));
    EXPECT_THAT(text, HasSubstr("[ rdfs:label \"+20 dB\" ; rdf:value 1.0 ]"));
    EXPECT_THAT(text, HasSubstr("[ rdfs:label \"Curve 8\" ; rdf:value 1.0 ]"));
}

} // namespace
} // namespace varno
