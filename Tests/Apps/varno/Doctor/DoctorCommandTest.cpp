#include "Doctor/InstalledParts.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <filesystem>

// varno doctor on machines and installations that lack something.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class DoctorCommand : public ProgramTest {
protected:
    // Without a display, a sound system, LV2 folders and a home, unless `environment` names them.
    Outcome doctor(const std::vector<std::string>& words, const std::vector<std::string>& environment = {},
                   const std::string& program = VARNO_PROGRAM) const {
        // Of two values of a variable the first counts.
        Surroundings around{.folder = mFolder.path(), .environment = environment};
        for (const char* unset : {"VARNO_MODULE=", "DISPLAY=", "LV2_PATH=", "CLAP_PATH=", "XDG_RUNTIME_DIR=",
                                  "PIPEWIRE_RUNTIME_DIR=", "PULSE_RUNTIME_PATH=", "PULSE_SERVER=",
                                  "JACK_DEFAULT_SERVER=varno-no-server"}) {
            around.environment.emplace_back(unset);
        }
        around.environment.push_back("HOME=" + path("home"));
        std::vector<std::string> all = {program, "doctor"};
        all.insert(all.end(), words.begin(), words.end());
        return run(all, around);
    }

    // The findings by their parts; expects that exit status.
    std::map<std::string, json> parts(int status, std::vector<std::string> words = {},
                                      const std::vector<std::string>& environment = {},
                                      const std::string& program = VARNO_PROGRAM) const {
        words.emplace_back("--json");
        const auto outcome = doctor(words, environment, program);
        EXPECT_EQ(outcome.status, status);
        EXPECT_EQ(outcome.err, "");
        const json report = json::parse(outcome.out);
        EXPECT_EQ(report["version"], VARNO_VERSION);
        std::map<std::string, json> parts;
        for (const auto& part : report["parts"]) {
            parts[part["part"]] = part;
        }
        return parts;
    }

    // varno alone in a folder.
    std::string lone() const {
        fs::copy(VARNO_PROGRAM, path("varno"));
        return path("varno");
    }

    // A copy of the module's bundle in the test's folder.
    fs::path copyOfBundle() const {
        const auto copy = mFolder.path() / "copy" / "Varno-S.aaxplugin";
        fs::create_directory(copy.parent_path());
        fs::copy(VARNO_MODULE_BUNDLE, copy, fs::copy_options::recursive);
        return copy;
    }
};

TEST_F(DoctorCommand, LooksForGnuplot) {
    EXPECT_THAT(parts(0).at("gnuplot")["detail"].get<std::string>(), testing::EndsWith("/gnuplot"));
    mFolder.write("gnuplot", "not to be run");
    const json missing = parts(0, {}, {"PATH=" + mFolder.path().string()}).at("gnuplot");
    EXPECT_EQ(missing["state"], "missing");
    EXPECT_EQ(missing["package"], "gnuplot-nox");
}

TEST_F(DoctorCommand, FindsWhatIsThere) {
    const auto found = parts(0);
    EXPECT_EQ(found.at("effect")["state"], "ok");
    EXPECT_EQ(found.at("effect")["detail"], "processes (channels: 1, 2)");
    EXPECT_EQ(found.at("module")["state"], "ok");
    EXPECT_EQ(found.at("module")["detail"], VARNO_MODULE_BUNDLE);
    EXPECT_TRUE(found.at("module")["package"].is_null());
    EXPECT_EQ(found.at("presets")["detail"], "12 in " VARNO_MODULE_BUNDLE "/Contents/Resources/presets");
    EXPECT_EQ(found.at("window program")["detail"], VARNO_WINDOW_PROGRAM);
    EXPECT_EQ(found.at("display")["state"], "missing");
    EXPECT_THAT(found.at("display")["detail"].get<std::string>(), HasSubstr("DISPLAY is not set"));
    for (const auto* part : {"JACK", "PipeWire", "PulseAudio", "ALSA"}) {
        EXPECT_TRUE(found.contains(part)) << part;
    }
    EXPECT_EQ(found.at("PipeWire")["state"], "missing");
    EXPECT_THAT(found.at("PulseAudio")["detail"].get<std::string>(),
                StartsWith("XDG_RUNTIME_DIR is not set"));
}

TEST_F(DoctorCommand, PrintsTheSameAsText) {
    const auto outcome = doctor({});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.out, StartsWith("varno " VARNO_VERSION "\n\nPART"));
    EXPECT_THAT(outcome.out, HasSubstr("\nmodule           ok       " VARNO_MODULE_BUNDLE "\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\nDebian's packages that bring what is missing:\n\nPART"));
    EXPECT_THAT(outcome.out, HasSubstr("\nLV2 plug-ins   varno-s-lv2\nCLAP plug-ins  varno-s-clap\n"));
}

TEST_F(DoctorCommand, NamesTheInstructionSetInUse) {
    EXPECT_EQ(parts(0, {}, {"VARNO_SIMD=emulated"}).at("instruction set")["detail"], "emulated");
    const std::string usual = parts(0).at("instruction set")["detail"];
    EXPECT_NE(usual, "emulated");
    EXPECT_EQ(parts(0, {}, {"VARNO_SIMD=none such"}).at("instruction set")["detail"], usual);
}

TEST_F(DoctorCommand, TheProgramAloneWorks) {
    const auto found = parts(0, {}, {}, lone());
    EXPECT_EQ(found.at("effect")["state"], "ok");
    const std::string place = mFolder.path().string();
    for (const auto& [part, package] :
         {std::pair("module", "varno-editor"), {"presets", "varno"}, {"window program", "varno-editor"}}) {
        EXPECT_EQ(found.at(part)["state"], "missing") << part;
        EXPECT_EQ(found.at(part)["package"], package) << part;
        EXPECT_THAT(found.at(part)["detail"].get<std::string>(), HasSubstr(place)) << part;
    }
    EXPECT_FALSE(found.contains("display"));
}

// As Debian's package of the program alone installs it.
TEST_F(DoctorCommand, ABundleWithPresetsAloneLacksTheModule) {
    const auto bundle = mFolder.path() / "Varno-S.aaxplugin";
    fs::create_directories(bundle / "Contents/Resources");
    fs::copy(VARNO_MODULE_BUNDLE "/Contents/Resources/presets", bundle / "Contents/Resources/presets");
    const auto found = parts(0, {}, {}, lone());
    EXPECT_EQ(found.at("module")["state"], "missing");
    EXPECT_EQ(found.at("module")["detail"], "no binary in " + bundle.string());
    EXPECT_EQ(found.at("module")["package"], "varno-editor");
    EXPECT_EQ(found.at("presets")["state"], "ok");
}

TEST_F(DoctorCommand, FailsWhereTheNamedModuleDoesNotWork) {
    EXPECT_EQ(parts(1, {"--module", "None.aaxplugin"}).at("effect")["state"], "fails");
    const auto bundle = copyOfBundle();
    const auto whole = parts(0, {"--module", bundle.string()});
    EXPECT_EQ(whole.at("effect")["state"], "ok");
    EXPECT_EQ(whole.at("module")["detail"], bundle.string());
    const auto binary = bundle / fs::relative(VARNO_MODULE_BINARY, VARNO_MODULE_BUNDLE);
    fs::resize_file(binary, 1000);
    const auto cut = parts(1, {}, {"VARNO_MODULE=" + bundle.string()});
    EXPECT_EQ(cut.at("effect")["state"], "fails");
    EXPECT_EQ(cut.at("module")["state"], "fails");
    EXPECT_THAT(cut.at("module")["detail"].get<std::string>(), HasSubstr(binary.string()));
    EXPECT_EQ(doctor({"--module", "None.aaxplugin"}).status, 1);
}

TEST_F(DoctorCommand, ReportsAModuleOfAnotherVersion) {
    const auto bundle = copyOfBundle();
    const auto plist = bundle / "Contents/Info.plist";
    std::string text = readFile(plist.string());
    const std::string own = "<string>" VARNO_VERSION "</string>";
    text.replace(text.find(own), own.size(), "<string>0.9.1</string>");
    writeFile(plist.string(), text);
    const auto found = parts(0, {"--module", bundle.string()});
    EXPECT_EQ(found.at("module")["state"], "fails");
    EXPECT_EQ(found.at("module")["detail"],
              bundle.string() + ": is of version 0.9.1, expected " VARNO_VERSION);
    fs::remove(plist);
    EXPECT_EQ(parts(0, {"--module", bundle.string()}).at("module")["detail"],
              bundle.string() + ": is of version unknown, expected " VARNO_VERSION);
}

TEST_F(DoctorCommand, FindsTheLv2BundleWhereHostsDo) {
    fs::create_directories(path("home/.lv2/varno-s.lv2"));
    const auto found = [&](const std::vector<std::string>& environment) {
        return parts(0, {}, environment).at("LV2 plug-ins")["detail"].get<std::string>();
    };
    EXPECT_THAT(found({}), StartsWith("varno-s.lv2 is not in " + path("home/.lv2") + ", "));
    writeFile(path("home/.lv2/varno-s.lv2/manifest.ttl"), "");
    EXPECT_EQ(found({}), path("home/.lv2/varno-s.lv2"));
    EXPECT_EQ(found({"LV2_PATH=" + path("one") + "::" + path("home/.lv2")}), path("home/.lv2/varno-s.lv2"));
    EXPECT_EQ(found({"LV2_PATH=" + path("one")}), "varno-s.lv2 is not in " + path("one"));
}

TEST(Lv2Folders, AreThoseOfDebiansHosts) {
    EXPECT_THAT(lv2Folders("", "/me"), testing::Contains(fs::path("/me/.lv2")));
    EXPECT_THAT(lv2Folders("", ""),
                testing::IsSupersetOf({fs::path("/usr/lib/lv2"), fs::path("/usr/local/lib/lv2")}));
    EXPECT_THAT(lv2Folders("/a:/b", "/me"), ElementsAre(fs::path("/a"), fs::path("/b")));
}

TEST_F(DoctorCommand, FindsTheClapPluginsWhereHostsDo) {
    fs::create_directories(path("home/.clap/varno-s"));
    const auto found = [&](const std::vector<std::string>& environment) {
        return parts(0, {}, environment).at("CLAP plug-ins")["detail"].get<std::string>();
    };
    EXPECT_EQ(found({"CLAP_PATH=" + path("one")}),
              "varno-s is not in " + path("one") + ", " + path("home/.clap") + ", /usr/lib/clap");
    writeFile(path("home/.clap/varno-s/varno-s.clap"), "");
    EXPECT_EQ(found({}), path("home/.clap/varno-s"));
    EXPECT_EQ(found({"CLAP_PATH=" + path("one")}), path("home/.clap/varno-s"));
}

TEST(ClapFolders, AreThoseOfTheUserAndOfAll) {
    EXPECT_THAT(clapFolders("/a::/b", "/me"), ElementsAre(fs::path("/a"), fs::path("/b"),
                                                          fs::path("/me/.clap"), fs::path("/usr/lib/clap")));
    EXPECT_THAT(clapFolders("", ""), ElementsAre(fs::path("/usr/lib/clap")));
}

TEST_F(DoctorCommand, TakesNoArguments) {
    EXPECT_EQ(doctor({"me"}).status, 2);
}

} // namespace
} // namespace varno::test
