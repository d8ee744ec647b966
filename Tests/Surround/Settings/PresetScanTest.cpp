#include "Surround/Settings/PresetScan.h"

#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <limits>
#include <sys/stat.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

namespace fs = std::filesystem;

std::string presetOf(float value, const std::string& note = {}) {
    SettingValues values{};
    values.fill(value);
    return DemoGain_PresetText::Write(values) + note;
}

class PresetScanTest : public testing::Test {
protected:
    void add(const std::string& name, float value = 0.5F) const { mFolder.write(name, presetOf(value)); }

    // "group/name", with the reason for those that are damaged.
    std::vector<std::string> listed() {
        std::vector<std::string> names;
        for (const PresetEntry& entry : mScan.entries()) {
            names.push_back((entry.group.empty() ? "" : entry.group + '/') + entry.name +
                            (entry.isSound() ? "" : ": " + entry.damage));
        }
        return names;
    }
    std::vector<std::string> rescanned() {
        mScan.rescan();
        return listed();
    }

    TemporaryFolder mFolder;
    PresetScan mScan{mFolder.path(), false};
};

TEST_F(PresetScanTest, findsNothingWithoutAFolder) {
    PresetScan none({}, false);
    EXPECT_FALSE(none.rescan());
    EXPECT_THAT(none.entries(), IsEmpty());
    PresetScan absent(mFolder / "absent", false);
    EXPECT_FALSE(absent.rescan());
    EXPECT_THAT(absent.entries(), IsEmpty());
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(PresetScanTest, readsPresets) {
    mFolder.write("One.txt", presetOf(0.25F, "\nfor voices\nand more"));
    ASSERT_TRUE(mScan.rescan());
    ASSERT_EQ(mScan.entries().size(), 1U);
    const PresetEntry& entry = mScan.entries().front();
    EXPECT_EQ(entry.name, "One");
    EXPECT_EQ(entry.group, "");
    EXPECT_EQ(entry.path, mFolder / "One.txt");
    EXPECT_FALSE(entry.isFactory);
    EXPECT_TRUE(entry.isSound());
    EXPECT_EQ(entry.note, "for voices\nand more");
    SettingValues expected{};
    expected.fill(0.25F);
    EXPECT_EQ(entry.values, expected);
}

TEST_F(PresetScanTest, takesValuesAsTheEffectDoes) {
    mFolder.write("a.txt", "x 30001 a nan b 2 c -1 d 0.5 e inf f 0 g 0 h 0 i 0 j 0 k 0 l 0 m 0");
    mScan.rescan();
    const SettingValues& values = mScan.entries().at(0).values;
    EXPECT_EQ(std::vector<float>(values.begin(), values.begin() + 5),
              (std::vector<float>{0.0F, 1.0F, 0.0F, 0.5F, 1.0F}));
    EXPECT_EQ(mScan.entries().at(0).note, "");
}

TEST_F(PresetScanTest, ordersByFolderAndName) {
    for (const char* name : {"kick 10.txt", "Kick 2.txt", "Drums/b.txt", "Drums/A.txt", "Drums/Rooms/c.txt",
                             "Bass/z.txt", "Bass 2/a.txt"}) {
        add(name);
    }
    EXPECT_THAT(rescanned(), ElementsAre("Kick 2", "kick 10", "Bass/z", "Bass 2/a", "Drums/A", "Drums/b",
                                         "Drums/Rooms/c"));
}

TEST_F(PresetScanTest, leavesOutWhatIsNoPreset) {
    add(".hidden.txt");
    add(".folder/a.txt");
    add("a.txt~");
    add("a.text");
    add("noextension");
    add(".varno-0123456789abcdef.part");
    ASSERT_EQ(::mkfifo((mFolder / "pipe.txt").c_str(), 0600), 0);
    fs::create_directory(mFolder / "empty folder");
    EXPECT_THAT(rescanned(), IsEmpty());
}

TEST_F(PresetScanTest, marksDamagedOnes) {
    mFolder.write("a.txt", "");
    mFolder.write("b.txt", "something else");
    mFolder.write("c.txt", "Varno-S 030000" + presetOf(0.5F).substr(14));
    mFolder.write("d.txt", presetOf(0.5F).substr(0, 100));
    mFolder.write("e.txt", presetOf(0.5F, '\n' + std::string(70000, 'x')));
    fs::create_symlink(mFolder / "nowhere", mFolder / "f.txt");
    fs::create_symlink("g.txt", mFolder / "g.txt");
    EXPECT_THAT(rescanned(),
                ElementsAre("a: is empty", "b: is no preset", "c: is no preset", "d: is no preset",
                            "e: has more than 65536 bytes", "f: cannot be read: No such file or directory",
                            "g: cannot be read: Too many levels of symbolic links"));
}

TEST_F(PresetScanTest, readsHugeFilesInPart) {
    mFolder.write("huge.txt", "");
    fs::resize_file(mFolder / "huge.txt", std::uintmax_t{1} << 40U); // has no blocks
    EXPECT_THAT(rescanned(), ElementsAre("huge: has more than 65536 bytes"));
}

TEST_F(PresetScanTest, followsLinksOnce) {
    const TemporaryFolder other;
    other.write("sub/linked.txt", presetOf(0.5F));
    fs::create_directory_symlink(other.path(), mFolder / "Link");
    fs::create_directory_symlink(mFolder.path(), mFolder.path() / "Circle");
    fs::create_directory_symlink(other.path(), other.path() / "sub" / "back");
    other.write("file.txt", presetOf(0.5F));
    fs::create_symlink(other / "file.txt", mFolder / "a.txt");
    std::vector<std::string> names = rescanned();
    EXPECT_THAT(names, ElementsAre("a", "Link/file", "Link/sub/linked"));
}

TEST_F(PresetScanTest, goesDownSomeLevels) {
    std::string path;
    for (int level = 1; level < PresetScan::kMostLevels; ++level) {
        path += "x/";
    }
    add(path + "in.txt");
    add(path + "x/out.txt");
    ASSERT_EQ(rescanned().size(), 1U);
    EXPECT_EQ(mScan.entries().at(0).name, "in");
}

TEST_F(PresetScanTest, looksAtSoManyFiles) {
    const fs::path first = mFolder.write("below/first.txt", "x");
    for (std::size_t i = 0; i < PresetScan::kMostEntries; ++i) {
        fs::create_hard_link(first, mFolder / ("below/" + std::to_string(i) + ".txt"));
    }
    add("own.txt");
    mScan.rescan();
    EXPECT_EQ(mScan.entries().size(), PresetScan::kMostEntries - 1) << "all but the folder";
    EXPECT_EQ(mScan.entries().at(0).name, "own") << "before the levels below";
}

TEST_F(PresetScanTest, showsNamesThatAreNoUtf8) {
    add("bad\xFFname.txt");
    add("gr\xFEoup/a.txt");
    EXPECT_THAT(rescanned(), ElementsAre("bad\xEF\xBF\xBDname", "gr\xEF\xBF\xBDoup/a"));
    EXPECT_EQ(mScan.entries().at(0).path.filename().native(), "bad\xFFname.txt");
}

TEST_F(PresetScanTest, showsFoldersThatCannotBeRead) {
    add("closed/a.txt");
    add("Drums/closed/a.txt");
    add("open.txt");
    ::chmod((mFolder / "closed").c_str(), 0);
    ::chmod((mFolder / "Drums/closed").c_str(), 0);
    ::chmod(mFolder.path().c_str(), 0755);
    const int status = inChildProcess([&] {
        becomeOrdinaryUser();
        const std::vector<std::string> expected{"closed: cannot be read: Permission denied", "open",
                                                "Drums/closed: cannot be read: Permission denied"};
        return rescanned() == expected ? 0 : 1;
    });
    ::chmod((mFolder / "closed").c_str(), 0755);
    ::chmod((mFolder / "Drums/closed").c_str(), 0755);
    EXPECT_EQ(status, 0);
}

TEST_F(PresetScanTest, namesTheFactorysForPeople) {
    PresetScan factory(mFolder.path(), true);
    add("drum-bus.txt");
    add("mix-glue.txt");
    factory.rescan();
    ASSERT_EQ(factory.entries().size(), 2U);
    EXPECT_EQ(factory.entries().at(0).name, "Drum Bus");
    EXPECT_EQ(factory.entries().at(1).name, "Mix Glue");
    EXPECT_TRUE(factory.entries().at(0).isFactory);
}

// Files that were written long ago are not read again.
TEST_F(PresetScanTest, keepsWhatItHasRead) {
    fs::create_directory_symlink(VARNO_FACTORY_PRESETS, mFolder / "Factory");
    EXPECT_TRUE(mScan.rescan());
    const std::vector<PresetEntry> before = mScan.entries();
    ASSERT_EQ(before.size(), 12U);
    EXPECT_TRUE(std::ranges::all_of(before, &PresetEntry::isSound));
    EXPECT_FALSE(mScan.rescan());
    add("own.txt");
    EXPECT_TRUE(mScan.rescan());
    ASSERT_EQ(mScan.entries().size(), 13U);
    EXPECT_EQ(mScan.entries().front().name, "own");
    EXPECT_TRUE(std::equal(before.begin(), before.end(), mScan.entries().begin() + 1));
    fs::remove(mFolder / "Factory");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), ElementsAre("own"));
}

TEST_F(PresetScanTest, noticesWhatOthersDo) {
    add("a.txt", 0.0F);
    EXPECT_TRUE(mScan.rescan());
    EXPECT_FALSE(mScan.rescan());
    add("b.txt");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), ElementsAre("a", "b"));
    add("a.txt", 1.0F);
    EXPECT_TRUE(mScan.rescan()) << "of the same length, at the same time";
    EXPECT_EQ(mScan.entries().at(0).values.front(), 1.0F);
    fs::rename(mFolder / "a.txt", mFolder / "c.txt");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), ElementsAre("b", "c"));
    fs::remove(mFolder / "b.txt");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), ElementsAre("c"));
    fs::remove_all(mFolder.path());
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), IsEmpty());
    fs::create_directory(mFolder.path());
    add("d.txt");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_THAT(listed(), ElementsAre("d"));
}

TEST_F(PresetScanTest, seesADamagedOneRepaired) {
    mFolder.write("a.txt", "half a preset");
    EXPECT_THAT(rescanned(), ElementsAre("a: is no preset"));
    add("a.txt");
    EXPECT_THAT(rescanned(), ElementsAre("a"));
    fs::create_symlink("missing.txt", mFolder / "b.txt");
    EXPECT_TRUE(mScan.rescan());
    EXPECT_FALSE(mScan.rescan()) << "still missing";
}

TEST_F(PresetScanTest, takesTenThousand) {
    const TemporaryFolder other;
    const fs::path first = other.write("first.txt", presetOf(0.5F));
    for (int i = 0; i < 10000; ++i) {
        const fs::path group = mFolder / std::to_string(i % 20);
        fs::create_directory(group);
        fs::create_hard_link(first, group / ("preset " + std::to_string(i) + ".txt"));
    }
    EXPECT_TRUE(mScan.rescan());
    EXPECT_EQ(mScan.entries().size(), 10000U);
    EXPECT_TRUE(std::ranges::all_of(mScan.entries(), &PresetEntry::isSound));
    EXPECT_EQ(mScan.entries().front().group, "0");
    EXPECT_EQ(mScan.entries().at(1).name, "preset 20");
    EXPECT_FALSE(mScan.rescan());
}

} // namespace
} // namespace varno::test
