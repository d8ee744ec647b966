#include "Settings/FactoryPresets.h"
#include "CommandLine/CommandError.h"
#include "Host/Module.h"
#include "Settings/SettingsFiles.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <filesystem>

// Which presets a bundle contains, and which file a name from the user stands for.

namespace varno::test {
namespace {

namespace fs = std::filesystem;

class FactoryPresetsTest : public ProgramTest {
protected:
    FactoryPresetsTest() {
        fs::create_directories(factoryPresetFolder(mFolder.path()));
        for (const std::string name : {"drum-bus.txt", "mix-glue.txt", "bass-firm.txt", "readme.md"}) {
            writeFile(factoryPresetFolder(mFolder.path()) / name, "");
        }
    }
    std::vector<FactoryPreset> presets() const { return factoryPresets(mFolder.path()); }
    std::string inBundle(const std::string& name) const {
        return (factoryPresetFolder(mFolder.path()) / name).string();
    }
};

TEST_F(FactoryPresetsTest, AreTheTextsOfTheFolderByName) {
    std::string found;
    for (const auto& preset : presets()) {
        found += preset.name + '=' + preset.path + '\n';
    }
    EXPECT_EQ(found, "bass-firm=" + inBundle("bass-firm.txt") + "\ndrum-bus=" + inBundle("drum-bus.txt") +
                         "\nmix-glue=" + inBundle("mix-glue.txt") + '\n');
}

TEST_F(FactoryPresetsTest, ABundleMayBringNone) {
    EXPECT_TRUE(factoryPresets(mFolder.path() / "nowhere").empty());
}

TEST_F(FactoryPresetsTest, LieWhereTheModuleHasItsResources) {
    EXPECT_EQ(factoryPresetFolder(VARNO_MODULE_BUNDLE),
              Module::open(VARNO_MODULE_BUNDLE)->resourcePath("presets"));
}

TEST_F(FactoryPresetsTest, ANameGoesBeforeAFileWhateverItsCase) {
    EXPECT_EQ(presetPath("drum-bus", presets()), inBundle("drum-bus.txt"));
    EXPECT_EQ(presetPath("Drum-Bus", presets()), inBundle("drum-bus.txt"));
}

TEST_F(FactoryPresetsTest, WhatHasADotOrASlashIsAFile) {
    for (const std::string file : {"./drum-bus", "drum-bus.txt", "presets/drum-bus", "..", "none.txt"}) {
        EXPECT_EQ(presetPath(file, presets()), file);
    }
}

TEST_F(FactoryPresetsTest, AFileMayHaveAnyOtherName) {
    writeFile(path("mine"), "");
    const auto before = fs::current_path();
    fs::current_path(mFolder.path());
    const std::string found = presetPath("mine", presets());
    fs::current_path(before);
    EXPECT_EQ(found, "mine");
}

TEST_F(FactoryPresetsTest, WhatIsNeitherIsRefusedWithTheNearest) {
    EXPECT_EQ(errorText(2, [&] { presetPath("drumbus", presets()); }),
              R"(preset "drumbus": there is neither a factory preset nor a file of this name; )"
              R"(did you mean "drum-bus"?)");
    EXPECT_EQ(errorText(2, [&] { presetPath("zither", presets()); }),
              R"(preset "zither": there is neither a factory preset nor a file of this name; )"
              "expected one that varno presets lists, or a file");
}

TEST_F(FactoryPresetsTest, PurposeIsTheLineBehindTheSettings) {
    const std::string settings = "Varno-S 030001\n"
                                 "Gain 0.5 Volume 0.5 Hipass 0 Band 0\n"
                                 "Attack 0.5 Release 0.5 UK 0 Hottitude 0.25\n"
                                 "Ratio 0.5 Mix 0 Auto 0 HarmSw 0\n"
                                 "LinkSw 1";
    writeFile(path("with.txt"), settings + "\nFor this.\nAnd that.\n");
    EXPECT_EQ(readPresetFile(path("with.txt")).purpose, "For this.");
    EXPECT_EQ(readPresetFile(path("with.txt")).values[7], 0.25F);
    writeFile(path("without.txt"), settings);
    EXPECT_EQ(readPresetFile(path("without.txt")).purpose, "");
    EXPECT_EQ(readPresetFile(path("without.txt")).text, settings);
}

} // namespace
} // namespace varno::test
