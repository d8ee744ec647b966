#include "Settings/ModuleLoading.h"
#include "CommandLine/CommandError.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <filesystem>

// Which module the program uses, and what it reports about one that it cannot use.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

class ModuleChoice : public ProgramTest {
protected:
    ModuleChoice() { fs::create_directories(mFolder.path() / "bin" / kBundleName); }
    fs::path programFolder() const { return mFolder.path() / "bin"; }
};

TEST_F(ModuleChoice, OptionGoesBeforeEnvironmentBeforePlaces) {
    EXPECT_EQ(moduleLocation("asked", "environment", programFolder()), "asked");
    EXPECT_EQ(moduleLocation({}, "environment", programFolder()), "environment");
    EXPECT_EQ(moduleLocation({}, {}, programFolder()), programFolder() / kBundleName);
    EXPECT_EQ(moduleLocation({}, "", programFolder()), programFolder() / kBundleName);
}

TEST_F(ModuleChoice, WithoutAnyNothingIsGuessed) {
    const auto elsewhere = mFolder.path() / "a" / "b" / "c";
    EXPECT_EQ(errorText(1, [&] { moduleLocation({}, {}, elsewhere); }),
              "Varno-S.aaxplugin: not found beside the program in " + elsewhere.string() +
                  "; expected its path in --module or VARNO_MODULE");
}

class ModuleLoadingTest : public ProgramTest {
protected:
    // The binary of the bundle "Bad", seen from its folder.
    static std::string binaryInBundle() {
        const auto inBundle = fs::path(VARNO_MODULE_BINARY).lexically_relative(VARNO_MODULE_BUNDLE);
        return '/' + (inBundle.parent_path() / "Bad.so").string();
    }
    // How messages about its binary begin.
    std::string badModule() const {
        return "module \"" + path("Bad.aaxplugin") + "\": cannot load \"" + path("Bad.aaxplugin") +
               binaryInBundle() + "\": ";
    }
    // A bundle whose binary has this content.
    std::string bundleWith(const std::string& content) const {
        const std::string binary = path("Bad.aaxplugin") + binaryInBundle();
        fs::create_directories(fs::path(binary).parent_path());
        writeFile(binary, content);
        return path("Bad.aaxplugin");
    }
};

TEST_F(ModuleLoadingTest, UsesTheNamedBundle) {
    fs::copy(VARNO_MODULE_BUNDLE, mFolder.path() / "Varno-S.aaxplugin", fs::copy_options::recursive);
    EXPECT_THAT(varnoOut({"describe", "--module", "Varno-S.aaxplugin"}), StartsWith("Module\n"));
    const auto outcome =
        runVarno({"describe"}, {.folder = mFolder.path(), .environment = {"VARNO_MODULE=Varno-S.aaxplugin"}});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST_F(ModuleLoadingTest, RefusesAMissingBundle) {
    EXPECT_EQ(refusal(1, {"describe", "--module", "None.aaxplugin"}),
              R"(module "None.aaxplugin": not found, expected a bundle folder (Name.aaxplugin))");
    const auto outcome =
        runVarno({"describe"}, {.folder = mFolder.path(), .environment = {"VARNO_MODULE=None.aaxplugin"}});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: module \"None.aaxplugin\": not found, expected a bundle folder (Name.aaxplugin)\n");
}

TEST_F(ModuleLoadingTest, RefusesABinaryThatIsNone) {
    const std::string text = "This is a text and no binary at all. It is a little longer than a header is.";
    EXPECT_EQ(refusal(1, {"describe", "--module", bundleWith(text)}),
              badModule() + "found no shared library for this machine");
}

// The system would end a program that loads a binary whose end is missing.
TEST_F(ModuleLoadingTest, RefusesATruncatedBinary) {
    constexpr std::size_t kWithinTheCode = 100'000; // the symbols at the end of the file are not needed
    const std::string binary = readFile(VARNO_MODULE_BINARY);
    ASSERT_GT(binary.size(), 2 * kWithinTheCode);
    for (const std::size_t length : {std::size_t{17}, std::size_t{1000}, kWithinTheCode}) {
        EXPECT_THAT(
            refusal(1, {"describe", "--module", bundleWith(binary.substr(0, length))}),
            StartsWith(badModule() + "found " + std::to_string(length) + " bytes, expected at least "));
    }
}

TEST_F(ModuleLoadingTest, RefusesAnotherLibrary) {
    std::string library =
        shell("ldd '" VARNO_PROGRAM "' | sed -n 's/.*libsndfile.so.1 => \\([^ ]*\\) .*/\\1/p'");
    library.pop_back();
    EXPECT_EQ(refusal(1, {"describe", "--module", bundleWith(readFile(library))}),
              "module \"" + path("Bad.aaxplugin") + "\": \"" + path("Bad.aaxplugin") + binaryInBundle() +
                  "\" has no entry point ACFRegisterPlugin");
}

TEST_F(ModuleLoadingTest, EveryCommandThatNeedsItReportsIt) {
    const std::string expected =
        R"(module "None.aaxplugin": not found, expected a bundle folder (Name.aaxplugin))";
    EXPECT_EQ(refusal(1, {"params", "--module", "None.aaxplugin"}), expected);
    EXPECT_EQ(refusal(1, {"render", "--module", "None.aaxplugin"}), expected);
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(ModuleLoadingTest, InstalledProgramFindsItsModule) {
    // As after a build of the program alone.
    fs::remove(fs::path(VARNO_BUILD_FOLDER) / "Apps" / "varno" / "varno.1");
    const auto installed = run({VARNO_CMAKE, "--install", VARNO_BUILD_FOLDER, "--prefix", path("installed")});
    ASSERT_EQ(installed.status, 0) << installed.err;
    const auto elsewhere = mFolder.path() / "moved";
    fs::rename(mFolder.path() / "installed", elsewhere);
    const auto outcome =
        run({elsewhere / "bin" / "varno", "params", "--ids"}, {.environment = {"VARNO_MODULE="}});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("Hot\n"));
    const auto presets =
        run({elsewhere / "bin" / "varno", "presets", "--names"}, {.environment = {"VARNO_MODULE="}});
    EXPECT_THAT(presets.out, HasSubstr("drum-bus\n"));
    const auto description =
        run({elsewhere / "bin" / "varno", "describe"}, {.environment = {"VARNO_MODULE="}});
    EXPECT_THAT(description.out, StartsWith("Module\n"));
    const auto window = run({elsewhere / "bin" / "varno", "edit"}, {.environment = {"DISPLAY="}});
    EXPECT_THAT(window.err, StartsWith("varno: cannot open a display: "));
    EXPECT_THAT(readFile(elsewhere / "lib" / "lv2" / "varno-s.lv2" / "manifest.ttl"), HasSubstr("varno-s"));
    EXPECT_THAT(readFile(elsewhere / "share" / "doc" / "Varno-S" / "LICENSE"), StartsWith("MIT License"));
    EXPECT_THAT(readFile(elsewhere / "share" / "man" / "man1" / "varno.1"), StartsWith(".TH VARNO 1 "));
    EXPECT_THAT(readFile(elsewhere / "share" / "bash-completion" / "completions" / "varno"),
                HasSubstr("complete -F _varno varno"));
    EXPECT_THAT(readFile(elsewhere / "share" / "zsh" / "site-functions" / "_varno"),
                StartsWith("#compdef varno"));
    EXPECT_THAT(readFile(elsewhere / "share" / "fish" / "vendor_completions.d" / "varno.fish"),
                HasSubstr("complete --command varno"));
}

} // namespace
} // namespace varno::test
