#include "Platform/Bundle.h"

#include "Tests/Support/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using varno::resourcesOf;
using varno::test::TemporaryFolder;

class BundleLayoutTest : public testing::Test {
protected:
    fs::path folder(const fs::path& below) const {
        fs::create_directories(root() / below);
        return root() / below;
    }

    fs::path file(const fs::path& below) const {
        folder(below.parent_path());
        std::ofstream(root() / below) << "x";
        return root() / below;
    }

    const fs::path& root() const { return mRoot.path(); }

private:
    TemporaryFolder mRoot;
};

TEST_F(BundleLayoutTest, AreThoseOfTheBundle) {
    const fs::path binary = file("Varno-S.aaxplugin/Contents/x86_64-linux/Varno-S.so");
    const fs::path resources = folder("Varno-S.aaxplugin/Contents/Resources");

    EXPECT_EQ(resourcesOf(binary), resources);
}

TEST_F(BundleLayoutTest, OfTheBundleComeBeforeThoseBeside) {
    const fs::path binary = file("Contents/x86_64-linux/Varno-S.so");
    const fs::path resources = folder("Contents/Resources");
    folder("Contents/x86_64-linux/resources");

    EXPECT_EQ(resourcesOf(binary), resources);
}

TEST_F(BundleLayoutTest, AreThoseBesideWhereTheBundleHasNone) {
    const fs::path binary = file("Contents/x86_64-linux/Varno-S.so");
    const fs::path resources = folder("Contents/x86_64-linux/resources");

    EXPECT_EQ(resourcesOf(binary), resources);
}

TEST_F(BundleLayoutTest, AreThoseBesideABinaryWithoutABundle) {
    const fs::path binary = file("varno.lv2/varno.so");
    const fs::path resources = folder("varno.lv2/resources");
    folder("Resources");

    EXPECT_EQ(resourcesOf(binary), resources);
}

TEST_F(BundleLayoutTest, AreNoneWhereThereAreNone) {
    EXPECT_EQ(resourcesOf(file("Contents/x86_64-linux/Varno-S.so")), std::nullopt);
    EXPECT_EQ(resourcesOf({}), std::nullopt);
    EXPECT_EQ(resourcesOf("/"), std::nullopt);
}

TEST_F(BundleLayoutTest, AreNoneWhereTheirNameIsAFiles) {
    const fs::path binary = file("Contents/x86_64-linux/Varno-S.so");
    file("Contents/Resources");
    file("Contents/x86_64-linux/resources");

    EXPECT_EQ(resourcesOf(binary), std::nullopt);
}

TEST_F(BundleLayoutTest, AreFoundInFoldersOfAnyName) {
    for (const char* name :
         {"with blanks", "100%s %n %", "d\xc3\xa4nisch", "#2.0x", "-dash", "new\nline", "\\"}) {
        const fs::path binary = file(fs::path(name) / "Contents/x86_64-linux/Varno-S.so");
        const fs::path resources = folder(fs::path(name) / "Contents/Resources");

        EXPECT_EQ(resourcesOf(binary), resources) << name;
    }
}

TEST_F(BundleLayoutTest, AreFoundThroughALinkToTheBundle) {
    file("real/Contents/x86_64-linux/Varno-S.so");
    folder("real/Contents/Resources");
    fs::create_directory_symlink("real", root() / "link");

    EXPECT_EQ(resourcesOf(root() / "link/Contents/x86_64-linux/Varno-S.so"),
              root() / "link/Contents/Resources");
}

TEST_F(BundleLayoutTest, BesideALinkToTheBinaryComeFirst) {
    file("store/Varno-S.so");
    folder("store/resources");
    folder("bundle/Contents/x86_64-linux");
    const fs::path resources = folder("bundle/Contents/Resources");
    const fs::path link = root() / "bundle/Contents/x86_64-linux/Varno-S.so";
    fs::create_symlink(root() / "store/Varno-S.so", link);

    EXPECT_EQ(resourcesOf(link), resources);
}

TEST_F(BundleLayoutTest, AreThoseOfTheLinksTargetWhereTheLinkHasNone) {
    const fs::path binary = file("real/Contents/x86_64-linux/Varno-S.so");
    const fs::path resources = folder("real/Contents/Resources");
    fs::create_symlink(binary, root() / "alone.so");

    EXPECT_EQ(resourcesOf(root() / "alone.so"), resources);
}

TEST_F(BundleLayoutTest, AreFoundFromAPathWithDetours) {
    file("Contents/x86_64-linux/Varno-S.so");
    folder("elsewhere");
    const fs::path resources = folder("Contents/Resources");

    EXPECT_EQ(resourcesOf(root() / "elsewhere/.././Contents//x86_64-linux/Varno-S.so"), resources);
}

} // namespace
