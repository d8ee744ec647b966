#include "Surround/Settings/PresetStore.h"

#include "Files/FileError.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace fs = std::filesystem;

SettingValues filled(float value) {
    SettingValues values{};
    values.fill(value);
    return values;
}

std::string nameOf(const PresetEntry* entry) {
    return entry == nullptr ? "none" : entry->name;
}

std::string errorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const FileError& error) {
        return error.what();
    }
    return {};
}

class PresetStoreTest : public testing::Test {
protected:
    PresetStoreTest() {
        mFolder.write("factory/drum-bus.txt", DemoGain_PresetText::Write(filled(0.125F)));
        mFolder.write("factory/bass-firm.txt", DemoGain_PresetText::Write(filled(0.25F)));
    }

    fs::path user(const std::string& name) const { return mFolder.path() / "user" / name; }
    fs::path factory(const std::string& name) const { return mFolder.path() / "factory" / name; }

    PresetStore& store() {
        if (!mStore) {
            mStore.emplace(mFolder / "factory", mFolder / "user");
        }
        return *mStore;
    }
    std::vector<std::string> names() {
        std::vector<std::string> all;
        for (const PresetEntry& entry : store().entries()) {
            all.push_back(entry.group.empty() ? entry.name : entry.group + '/' + entry.name);
        }
        return all;
    }

    TemporaryFolder mFolder;
    std::optional<PresetStore> mStore;
};

TEST_F(PresetStoreTest, beginsWithTheFactorys) {
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus"));
    EXPECT_EQ(store().present(), nullptr);
    EXPECT_FALSE(store().isChanged(filled(0.0F)));
    EXPECT_FALSE(store().canSave());
    EXPECT_FALSE(fs::exists(mFolder / "user")) << "made on demand";
    EXPECT_FALSE(store().rescan());
}

TEST_F(PresetStoreTest, savesNewOnes) {
    store().saveAs("Mine", "", filled(0.75F), Overwrite::kRefuse);
    store().saveAs("Other", "Drums/Rooms", filled(0.5F), Overwrite::kRefuse);
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "Mine", "Drums/Rooms/Other"));
    EXPECT_EQ(nameOf(store().present()), "Other");
    EXPECT_EQ(store().present()->values, filled(0.5F));
    EXPECT_TRUE(store().canSave());
    EXPECT_EQ(readFile(user("Mine.txt")), DemoGain_PresetText::Write(filled(0.75F)) + '\n');
}

TEST_F(PresetStoreTest, asksBeforeItReplaces) {
    EXPECT_FALSE(store().exists("Mine", ""));
    store().saveAs("Mine", "", filled(0.75F), Overwrite::kRefuse);
    EXPECT_TRUE(store().exists("Mine", ""));
    EXPECT_EQ(errorOf([&] { store().saveAs("Mine", "", filled(0.0F), Overwrite::kRefuse); }),
              "There is a preset \"Mine\" already.");
    EXPECT_EQ(store().present()->values, filled(0.75F));
    store().saveAs("Mine", "", filled(0.0F), Overwrite::kReplace);
    EXPECT_EQ(store().present()->values, filled(0.0F));
}

TEST_F(PresetStoreTest, refusesNamesThatNoFileCanHave) {
    EXPECT_EQ(presetNameRefusal("Drum Bus 2 (löud)"), "");
    EXPECT_EQ(presetNameRefusal("a"), "");
    EXPECT_EQ(presetNameRefusal("a.b"), "");
    EXPECT_EQ(presetNameRefusal(""), "A preset needs a name.");
    EXPECT_EQ(presetNameRefusal("   "), "A preset needs a name.");
    EXPECT_EQ(presetNameRefusal(".."), "The name of a preset cannot begin with a point.");
    EXPECT_EQ(presetNameRefusal("a/b"), "The name of a preset cannot have a slash.");
    EXPECT_EQ(presetNameRefusal(" a"), "The name of a preset cannot begin or end with a blank.");
    EXPECT_EQ(presetNameRefusal("a "), "The name of a preset cannot begin or end with a blank.");
    for (const std::string& name : {std::string("a\nb"), std::string("a\0b", 3), std::string("a\x7F"),
                                    std::string("a\xFF"), std::string("a\xE2\x80") + "\xAE"}) {
        EXPECT_EQ(presetNameRefusal(name), "The name of a preset can have letters, digits and signs alone.");
    }
    const std::string longest(251, 'x');
    EXPECT_EQ(presetNameRefusal(longest), "");
    EXPECT_EQ(presetNameRefusal(longest + "yz"), "The name is too long by 2 bytes.");
    store().saveAs(longest, "", filled(0.5F), Overwrite::kRefuse);
    EXPECT_EQ(nameOf(store().present()), longest);
    EXPECT_EQ(errorOf([&] { store().saveAs("../x", "", filled(0.5F), Overwrite::kRefuse); }),
              "The name of a preset cannot begin with a point.");
    EXPECT_EQ(errorOf([&] { store().saveAs("x", "a/../../b", filled(0.5F), Overwrite::kRefuse); }),
              "The name of a preset cannot begin with a point.");
    EXPECT_EQ(errorOf([&] { store().saveAs("x", "a//b", filled(0.5F), Overwrite::kRefuse); }),
              "A preset needs a name.");
    EXPECT_FALSE(fs::exists(mFolder / "x.txt"));
}

TEST_F(PresetStoreTest, savesNothingWithoutAFolder) {
    PresetStore homeless({}, {});
    EXPECT_EQ(homeless.next(), nullptr);
    EXPECT_THAT(errorOf([&] { homeless.saveAs("x", "", filled(0.5F), Overwrite::kRefuse); }),
                StartsWith("There is no folder for presets"));
}

TEST_F(PresetStoreTest, reportsWhatCannotBeWritten) {
    mFolder.write("user", "a file in the place of the folder");
    EXPECT_THAT(errorOf([&] { store().saveAs("x", "", filled(0.5F), Overwrite::kRefuse); }),
                HasSubstr("user: "));
    EXPECT_EQ(store().present(), nullptr);
}

TEST_F(PresetStoreTest, knowsWhetherThePresentOneIsChanged) {
    store().saveAs("Mine", "", filled(0.75F), Overwrite::kRefuse);
    EXPECT_FALSE(store().isChanged(filled(0.75F)));
    SettingValues now = filled(0.75F);
    now.back() = 0.7501F;
    EXPECT_TRUE(store().isChanged(now));
    // What the text does not keep is no change.
    SettingValues small = filled(1e-7F / 3.0F);
    store().saveAs("Small", "", small, Overwrite::kRefuse);
    EXPECT_FALSE(store().isChanged(small));
}

TEST_F(PresetStoreTest, savesOverThePresentOne) {
    mFolder.write("user/Mine.txt", DemoGain_PresetText::Write(filled(0.5F)) + "\nfor voices\nmine\n");
    store().choose(user("Mine.txt"));
    ASSERT_TRUE(store().canSave());
    store().save(filled(0.25F));
    EXPECT_EQ(readFile(user("Mine.txt")), DemoGain_PresetText::Write(filled(0.25F)) + "\nfor voices\nmine\n");
    EXPECT_FALSE(store().isChanged(filled(0.25F)));
}

TEST_F(PresetStoreTest, leavesTheFactorysAlone) {
    store().choose(factory("drum-bus.txt"));
    EXPECT_EQ(nameOf(store().present()), "Drum Bus");
    EXPECT_FALSE(store().canSave());
    const std::string refusal = "The factory's presets stay as they are.";
    EXPECT_EQ(errorOf([&] { store().save(filled(1.0F)); }), refusal);
    EXPECT_EQ(errorOf([&] { store().remove(factory("drum-bus.txt")); }), refusal);
    EXPECT_EQ(errorOf([&] { store().rename(factory("drum-bus.txt"), "x", Overwrite::kRefuse); }), refusal);
    EXPECT_EQ(readFile(factory("drum-bus.txt")), DemoGain_PresetText::Write(filled(0.125F)));
}

TEST_F(PresetStoreTest, walksOverTheSoundOnes) {
    mFolder.write("user/a.txt", "damaged");
    store().saveAs("b", "", filled(0.5F), Overwrite::kRefuse);
    mFolder.write("user/c.txt", "damaged");
    store().rescan();
    store().choose({});
    std::vector<std::string> forward;
    for (int i = 0; i < 4; ++i) {
        const PresetEntry* const entry = store().next();
        forward.push_back(nameOf(entry));
        store().choose(entry->path);
    }
    EXPECT_THAT(forward, ElementsAre("Bass Firm", "Drum Bus", "b", "Bass Firm"));
    EXPECT_EQ(nameOf(store().previous()), "b");
    store().choose({});
    EXPECT_EQ(nameOf(store().previous()), "b");
    store().choose(user("c.txt"));
    EXPECT_EQ(nameOf(store().previous()), "b");
    EXPECT_EQ(nameOf(store().next()), "Bass Firm");
    EXPECT_FALSE(store().isChanged(filled(1.0F))) << "a damaged one has no values";
}

TEST_F(PresetStoreTest, hasNoneWhereAllAreDamaged) {
    const TemporaryFolder folder;
    folder.write("a.txt", "damaged");
    PresetStore damaged({}, folder.path());
    EXPECT_EQ(damaged.next(), nullptr);
    EXPECT_EQ(damaged.previous(), nullptr);
    damaged.choose(folder / "a.txt");
    EXPECT_EQ(damaged.next(), nullptr);
}

TEST_F(PresetStoreTest, renames) {
    store().saveAs("Mine", "Drums", filled(0.75F), Overwrite::kRefuse);
    store().saveAs("Taken", "Drums", filled(0.5F), Overwrite::kRefuse);
    store().choose(user("Drums/Mine.txt"));
    EXPECT_EQ(errorOf([&] { store().rename(user("Drums/Mine.txt"), "Taken", Overwrite::kRefuse); }),
              "There is a preset \"Taken\" already.");
    EXPECT_EQ(errorOf([&] { store().rename(user("Drums/Mine.txt"), "a/b", Overwrite::kRefuse); }),
              "The name of a preset cannot have a slash.");
    store().rename(user("Drums/Mine.txt"), "Yours", Overwrite::kRefuse);
    EXPECT_EQ(nameOf(store().present()), "Yours");
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "Drums/Taken", "Drums/Yours"));
    store().rename(user("Drums/Taken.txt"), "Other", Overwrite::kRefuse);
    EXPECT_EQ(nameOf(store().present()), "Yours") << "another one was renamed";
    store().rename(user("Drums/Yours.txt"), "Other", Overwrite::kReplace);
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "Drums/Other"));
    EXPECT_EQ(store().present()->values, filled(0.75F));
    EXPECT_EQ(errorOf([&] { store().rename(user("gone.txt"), "x", Overwrite::kRefuse); }),
              "The preset is not there any more.");
    fs::remove(user("Drums/Other.txt"));
    EXPECT_THAT(errorOf([&] { store().rename(user("Drums/Other.txt"), "x", Overwrite::kRefuse); }),
                StartsWith("\"Other\" cannot be renamed: "));
}

TEST_F(PresetStoreTest, removesAndBringsBack) {
    store().saveAs("Mine", "", filled(0.75F), Overwrite::kRefuse);
    mFolder.write("user/Damaged.txt", "with something of value");
    store().rescan();
    EXPECT_EQ(store().removedName(), "");
    store().undoRemove();
    store().remove(user("Mine.txt"));
    EXPECT_FALSE(fs::exists(user("Mine.txt")));
    EXPECT_EQ(store().present(), nullptr);
    EXPECT_EQ(store().removedName(), "Mine");
    store().undoRemove();
    EXPECT_EQ(store().removedName(), "");
    EXPECT_EQ(nameOf(store().present()), "Mine");
    EXPECT_EQ(store().present()->values, filled(0.75F));
    store().remove(user("Damaged.txt"));
    EXPECT_EQ(nameOf(store().present()), "Mine");
    store().undoRemove();
    EXPECT_EQ(readFile(user("Damaged.txt")), "with something of value");
    EXPECT_EQ(nameOf(store().present()), "Mine") << "another one was removed";
}

TEST_F(PresetStoreTest, keepsTheLastRemovedOne) {
    for (const char* name : {"a", "b"}) {
        store().saveAs(name, "Group", filled(0.5F), Overwrite::kRefuse);
    }
    store().remove(user("Group/a.txt"));
    store().remove(user("Group/b.txt"));
    fs::remove_all(user("Group"));
    store().undoRemove();
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "Group/b"));
}

TEST_F(PresetStoreTest, bringsNothingBackOverAnother) {
    store().saveAs("a", "", filled(0.5F), Overwrite::kRefuse);
    store().remove(user("a.txt"));
    store().saveAs("a", "", filled(0.25F), Overwrite::kRefuse);
    EXPECT_EQ(errorOf([&] { store().undoRemove(); }), "There is a preset \"a\" already.");
    EXPECT_EQ(store().present()->values, filled(0.25F));
    EXPECT_EQ(store().removedName(), "a") << "it can still come back";
}

TEST_F(PresetStoreTest, removesNothingThatItCannotKeep) {
    mFolder.write("user/long.txt", std::string(70000, 'x'));
    EXPECT_EQ(errorOf([&] { store().remove(user("long.txt")); }),
              "\"long\" cannot be removed, since it has more than 65536 bytes.");
    EXPECT_TRUE(fs::exists(user("long.txt")));
}

TEST_F(PresetStoreTest, showsWhatOtherProgramsDo) {
    store().saveAs("a", "", filled(0.5F), Overwrite::kRefuse);
    mFolder.write("user/new.txt", DemoGain_PresetText::Write(filled(0.5F)));
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "a"));
    EXPECT_TRUE(store().rescan());
    EXPECT_THAT(names(), ElementsAre("Bass Firm", "Drum Bus", "a", "new"));
    EXPECT_EQ(nameOf(store().present()), "a");
    fs::remove(user("a.txt"));
    EXPECT_TRUE(store().rescan());
    EXPECT_EQ(store().present(), nullptr);
    EXPECT_EQ(nameOf(store().next()), "Bass Firm");
}

} // namespace
} // namespace varno::test
