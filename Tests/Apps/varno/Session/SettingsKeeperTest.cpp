#include "Session/SettingsKeeper.h"
#include "Program.h"
#include "Settings/Settings.h"
#include "Settings/SettingsFiles.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <sstream>

namespace varno::test {
namespace {

class SettingsKeeperTest : public ProgramTest {
protected:
    std::shared_ptr<Module> mModule = Module::open(VARNO_MODULE_BUNDLE);
    Instance mInstance{mModule, InstanceSetup{}};
};

TEST_F(SettingsKeeperTest, NothingIsUnsavedAtFirst) {
    mInstance.setNormalized("Gain", 0.25);
    const SettingsKeeper keeper(mInstance);
    EXPECT_EQ(keeper.unsavedOptions(), std::nullopt);
}

TEST_F(SettingsKeeperTest, UnsavedSettingsAreReportedAsOptions) {
    mInstance.setNormalized("Volume", 0.1);
    const SettingsKeeper keeper(mInstance);
    mInstance.setNormalized("MasterBypassID", 1.0);
    mInstance.setNormalized("Gain", 0.375);
    EXPECT_EQ(keeper.unsavedOptions(), "--set MasterBypassID=1 --set Gain=0.375 --set Volume=0.1");
}

TEST_F(SettingsKeeperTest, TheOptionsBringEveryValueBack) {
    const SettingsKeeper keeper(mInstance);
    const double step = 1.0 / 17.0;
    for (const auto& parameter : mInstance.parameters()) {
        mInstance.setNormalized(parameter.id, 1.0 - parameter.index * step);
    }
    std::vector<std::string> words;
    std::istringstream options(keeper.unsavedOptions().value());
    for (std::string word; options >> word;) {
        words.push_back(word);
    }
    EXPECT_EQ(words.size(), 2 * mInstance.parameters().size());
    Instance other(mModule, InstanceSetup{});
    Settings(CommandLine(*findCommand("edit"), words)).applyTo(other);
    for (const auto& parameter : mInstance.parameters()) {
        EXPECT_EQ(other.normalized(parameter.id), mInstance.normalized(parameter.id)) << parameter.id;
    }
}

TEST_F(SettingsKeeperTest, BackAtTheStartNothingIsUnsaved) {
    const SettingsKeeper keeper(mInstance);
    mInstance.setNormalized("Gain", 0.25);
    mInstance.setNormalized("Gain", 0.5);
    EXPECT_EQ(keeper.unsavedOptions(), std::nullopt);
}

TEST_F(SettingsKeeperTest, DefaultsNeedNoOption) {
    mInstance.setNormalized("Gain", 0.25);
    const SettingsKeeper keeper(mInstance);
    mInstance.setNormalized("Gain", 0.5);
    EXPECT_EQ(keeper.unsavedOptions(), "");
}

TEST_F(SettingsKeeperTest, SavedSettingsAreKept) {
    SettingsKeeper keeper(mInstance);
    keeper.setFile(path("my.state"), Overwrite::kRefuse);
    EXPECT_EQ(mFolder.listing(), "");
    mInstance.setNormalized("Gain", 0.25);
    EXPECT_EQ(keeper.save(), path("my.state"));
    EXPECT_EQ(keeper.unsavedOptions(), std::nullopt);
    EXPECT_EQ(readFile(path("my.state")), stateBytes(mInstance));
    mInstance.setNormalized("Gain", 0.75);
    EXPECT_EQ(keeper.unsavedOptions(), "--set Gain=0.75");
    keeper.save();
    EXPECT_EQ(readFile(path("my.state")), stateBytes(mInstance));
}

TEST_F(SettingsKeeperTest, AFileThatAppearsMeanwhileIsNotReplaced) {
    SettingsKeeper keeper(mInstance);
    keeper.setFile(path("my.state"), Overwrite::kRefuse);
    writeFile(path("my.state"), "mine");
    mInstance.setNormalized("Gain", 0.25);
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { keeper.save(); }),
              path("my.state") + ": exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(keeper.unsavedOptions(), "--set Gain=0.25");
    EXPECT_EQ(readFile(path("my.state")), "mine");
}

} // namespace
} // namespace varno::test
