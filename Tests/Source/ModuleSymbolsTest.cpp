
#include "Validate/ElfFile.h"

#include <gtest/gtest.h>

namespace {

using varno::validate::ElfFile;

TEST(ModuleSymbols, areTheSevenEntryPointsAlone) {
    const std::set<std::string> expected = {
        "ACFCanUnloadNow",   "ACFGetClassFactory", "ACFGetSDKVersion", "ACFRegisterComponent",
        "ACFRegisterPlugin", "ACFShutdown",        "ACFStartup"};
    EXPECT_EQ(ElfFile(VARNO_MODULE_BINARY).exportedSymbols(), expected);
}

TEST(ModuleSymbols, needNoWritingToCode) {
    EXPECT_FALSE(ElfFile(VARNO_MODULE_BINARY).hasTextRelocations());
}

TEST(ModuleSymbols, wouldBeSeenIfThereWereMore) {
    const std::set<std::string> exported = ElfFile(VARNO_LEAKY_BINARY).exportedSymbols();
    EXPECT_TRUE(exported.contains("ACFCanUnloadNow"));
    EXPECT_TRUE(exported.contains("leakedFunction"));
    EXPECT_TRUE(exported.contains("leakedValue"));
    EXPECT_FALSE(exported.contains("hiddenFunction"));
}

TEST(ModuleSymbols, areReadFromElfFilesOnly) {
    EXPECT_THROW(ElfFile{VARNO_TEXT_FILE}, std::runtime_error);
    EXPECT_THROW(ElfFile{"no such file"}, std::runtime_error);
}

} // namespace
