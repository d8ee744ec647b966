// What the binaries that are handed on need of a system, and how they are protected.

#include "Validate/ElfFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gnu/libc-version.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <ostream>

namespace varno::test {
namespace {

using validate::ElfFile;

using Libraries = std::set<std::string>;

Libraries operator+(Libraries left, const Libraries& right) {
    left.insert(right.begin(), right.end());
    return left;
}

// With what takes exceptions through all binaries of a process.
const Libraries kC = {"ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1", "libc.so.6", "libm.so.6",
                      "libgcc_s.so.1"};
const Libraries kCxx = {"libstdc++.so.6"};
// A window, what is drawn in it, and its keyboard.
const Libraries kWindow = {
    "libcairo.so.2",         "libfontconfig.so.1", "libglib-2.0.so.0",       "libgobject-2.0.so.0",
    "libgio-2.0.so.0",       "libpango-1.0.so.0",  "libpangocairo-1.0.so.0", "libpangoft2-1.0.so.0",
    "libxcb-cursor.so.0",    "libxcb-icccm.so.4",  "libxcb-keysyms.so.1",    "libxcb-util.so.1",
    "libxcb-xkb.so.1",       "libxcb-shape.so.0",  "libxcb-randr.so.0",      "libxcb.so.1",
    "libxkbcommon-x11.so.0", "libxkbcommon.so.0",  "libxcb-composite.so.0",  "libX11.so.6",
    "libX11-xcb.so.1"};
// Of Debian 12 and 13.
const Libraries kSoundFiles = {"libFLAC.so.12", "libFLAC.so.14", "libsndfile.so.1", "libtag.so.1",
                               "libtag.so.2"};
const Libraries kSampleRates = {"libsamplerate.so.0"};

struct Binary {
    const char* path;
    Libraries mayNeed;
};

std::ostream& operator<<(std::ostream& out, const Binary& binary) {
    return out << binary.path;
}

class Binaries : public testing::TestWithParam<Binary> {
protected:
    const ElfFile mFile{GetParam().path};
};

TEST_P(Binaries, needNoOtherLibraries) {
    for (const std::string& library : mFile.neededLibraries()) {
        EXPECT_TRUE(GetParam().mayNeed.contains(library)) << library;
    }
}

// Built on Debian 12, whose C library is 2.36, they run with that of the year before. Newer systems build for
// themselves.
TEST_P(Binaries, needNoNewCLibrary) {
    constexpr int kDebian12 = 236;
    constexpr int kMostOnDebian12 = 235;
    int major = 0;
    int minor = 0;
    ASSERT_EQ(std::sscanf(gnu_get_libc_version(), "%d.%d", &major, &minor), 2);
    const int here = 100 * major + minor;
    EXPECT_LE(mFile.neededGlibc(), here <= kDebian12 ? kMostOnDebian12 : here);
    EXPECT_GE(mFile.neededGlibc(), 202) << "every 64-bit binary needs that of the first";
}

#ifdef VARNO_PROTECTED
// They are the same wherever they are built. (Those for debuggers name their sources.)
TEST_P(Binaries, holdNoFolderOfTheirBuild) {
    std::ifstream file(GetParam().path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(bytes.empty());
    for (const char* folder : {VARNO_SOURCE_FOLDER, VARNO_VSTGUI_FOLDER}) {
        EXPECT_EQ(bytes.find(folder), std::string::npos) << bytes.substr(bytes.find(folder), 100);
    }
}
#endif

TEST_P(Binaries, areProtected) {
    EXPECT_TRUE(mFile.hasFixedAddresses());
    EXPECT_FALSE(mFile.hasExecutableStack());
    EXPECT_FALSE(mFile.hasTextRelocations());
#ifdef VARNO_PROTECTED
    const std::set<std::string> imported = mFile.importedSymbols();
    EXPECT_TRUE(imported.contains("__stack_chk_fail")) << "no function checks its stack";
#ifndef __clang__ // whose own code has other checks, by other names
    EXPECT_TRUE(imported.contains("__snprintf_chk")) << "no function checks its buffers";
#endif
#endif
}

INSTANTIATE_TEST_SUITE_P(
    All, Binaries,
    testing::Values(Binary{VARNO_LV2_BINARY, kC}, Binary{VARNO_CLAP_BINARY, kC + kWindow},
                    Binary{VARNO_LV2_WINDOW_BINARY, kC + kWindow}, Binary{VARNO_MODULE_BINARY, kC + kWindow},
                    Binary{VARNO_PROGRAM, kC + kCxx + kSoundFiles},
                    Binary{VARNO_WINDOW_PROGRAM, kC + kCxx + kSoundFiles + kSampleRates + kWindow}));

#ifdef VARNO_PROTECTED
// Libraries that a binary contains may have such checks where its own code has none.
TEST(BinariesCheck, isCompiledIntoAllCodeThatIsHandedOn) {
    std::ifstream file(std::filesystem::path(VARNO_BUILD_FOLDER) / "compile_commands.json");
    int count = 0;
    for (const auto& entry : nlohmann::json::parse(file)) {
        const std::string command = entry.at("command");
        const bool isHandedOn = command.find(" -o Tests/") == std::string::npos &&
                                command.find(" -o Benchmarks/") == std::string::npos;
        if (isHandedOn) {
            ++count;
            EXPECT_NE(command.find(" -fstack-protector-strong "), std::string::npos) << command;
            EXPECT_NE(command.find(" -D_FORTIFY_SOURCE=2 "), std::string::npos) << command;
        }
    }
    EXPECT_GT(count, 0);
}
#endif

// The binary of this test has neither, and the checks see it.
TEST(BinariesCheck, seesWhatIsNotProtected) {
    const ElfFile loose(VARNO_LOOSE_BINARY);
    EXPECT_FALSE(loose.hasFixedAddresses());
    EXPECT_TRUE(loose.hasExecutableStack());
    EXPECT_FALSE(loose.importedSymbols().contains("__stack_chk_fail"));
}

} // namespace
} // namespace varno::test
