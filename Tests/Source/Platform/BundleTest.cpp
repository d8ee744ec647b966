#include "Platform/Bundle.h"

#include "Tests/Support/TemporaryFolder.h"

#include <dlfcn.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

namespace fs = std::filesystem;
using varno::moduleBundle;
using varno::test::TemporaryFolder;

struct Unload {
    void operator()(void* module) const { dlclose(module); }
};
using Module = std::unique_ptr<void, Unload>;

// Copies of a module that reports which resources it finds, in bundles of their own.
class BundleTest : public testing::Test {
protected:
    ~BundleTest() override { fs::current_path(mStartedIn); }

    // A bundle of this name below the root; its binary, as a path below the root.
    fs::path makeBundle(const fs::path& name) {
        fs::path binary = name / "Contents/x86_64-linux/Varno-S.so";
        fs::create_directories(root() / name / "Contents/Resources");
        fs::create_directories((root() / binary).parent_path());
        fs::copy_file(VARNO_BUNDLE_MODULE, root() / binary);
        return binary;
    }

    fs::path resourcesIn(const fs::path& name) const { return root() / name / "Contents/Resources"; }

    static Module load(const fs::path& name) {
        Module module(dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL));
        EXPECT_NE(module, nullptr) << dlerror();
        return module;
    }

    static std::string resourcesFoundBy(const Module& module) {
        using Tell = const char* (*)();
        return reinterpret_cast<Tell>(dlsym(module.get(), "fixtureResources"))();
    }

    const fs::path& root() const { return mRoot.path(); }

private:
    const fs::path mStartedIn = fs::current_path();
    TemporaryFolder mRoot;
};

TEST_F(BundleTest, IsFoundFromTheModulesOwnAddress) {
    const Module module = load(root() / makeBundle("Varno-S.aaxplugin"));

    EXPECT_EQ(resourcesFoundBy(module), resourcesIn("Varno-S.aaxplugin"));
}

TEST_F(BundleTest, IsFoundInFoldersOfAnyName) {
    const Module module = load(root() / makeBundle("with blanks, 100%s %n \xc3\xa4"));

    EXPECT_EQ(resourcesFoundBy(module), resourcesIn("with blanks, 100%s %n \xc3\xa4"));
}

TEST_F(BundleTest, IsFoundWhereItWasLoadedByARelativeName) {
    const fs::path binary = makeBundle("relative");
    fs::current_path(root());

    EXPECT_EQ(resourcesFoundBy(load(binary)), resourcesIn("relative"));
}

TEST_F(BundleTest, IsFoundWhereTheFolderChangesAfterLoadingByARelativeName) {
    const fs::path binary = makeBundle("relative");
    fs::current_path(root());
    const Module module = load(binary);

    fs::current_path("/");

    EXPECT_EQ(resourcesFoundBy(module), resourcesIn("relative"));
}

TEST_F(BundleTest, IsFoundThroughLinks) {
    const fs::path binary = makeBundle("real");
    fs::create_directory_symlink("real", root() / "linked");
    fs::create_symlink(root() / binary, root() / "alone.so");

    EXPECT_EQ(resourcesFoundBy(load(root() / "linked/Contents/x86_64-linux/Varno-S.so")),
              resourcesIn("linked"));
    EXPECT_EQ(resourcesFoundBy(load(root() / "alone.so")), resourcesIn("real"));
}

TEST_F(BundleTest, OfOneCopyIsNotThatOfAnother) {
    const Module one = load(root() / makeBundle("one"));
    const Module other = load(root() / makeBundle("other"));

    EXPECT_EQ(resourcesFoundBy(one), resourcesIn("one"));
    EXPECT_EQ(resourcesFoundBy(other), resourcesIn("other"));
}

TEST_F(BundleTest, IsNotThereWithoutResources) {
    const Module module = load(root() / makeBundle("bare"));

    fs::remove(resourcesIn("bare"));

    EXPECT_EQ(resourcesFoundBy(module), "none");
}

TEST(BundleOfAProgram, IsWhatLiesAroundTheProgram) {
    const fs::path resources = fs::read_symlink("/proc/self/exe").parent_path() / "resources";
    EXPECT_FALSE(moduleBundle("any.identifier"));

    fs::create_directory(resources);
    const auto bundle = moduleBundle("any.identifier");
    fs::remove(resources);

    ASSERT_TRUE(bundle);
    EXPECT_EQ(bundle->resources, resources);
    EXPECT_EQ(bundle->reference, nullptr);
}

} // namespace
