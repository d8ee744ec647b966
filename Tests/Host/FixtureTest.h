/// Base of tests with the fixture module.
#ifndef VARNO_TESTS_HOST_FIXTURETEST_H
#define VARNO_TESTS_HOST_FIXTURETEST_H

#include "Tests/Host/FixtureModule.h"
#include "Tests/Support/HostFixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace varno {

/// The fixture module, linked in, with a page-table resource.
class FixtureTest : public HostFixture {
protected:
    FixtureTest()
        : HostFixture(fixture::entryPoints()) {}

    /// An instance of the fixture's effect.
    std::unique_ptr<Instance> makeInstance(const InstanceSetup& setup = {}) {
        return std::make_unique<Instance>(module(), setup);
    }
};

/// A folder of its own for one test, removed with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "varno-host-XXXXXX").string();
        mPath = mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(mPath); }

    const std::filesystem::path& path() const { return mPath; }
    /// Writes a file, with the folders above it.
    std::filesystem::path write(const std::filesystem::path& name, const std::string& text) const {
        std::filesystem::path file = mPath / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
        return file;
    }

private:
    std::filesystem::path mPath;
};

/// The text of the HostError that an action throws; empty when it throws none.
template<class Action>
std::string hostErrorOf(Action action) {
    try {
        action();
    } catch (const HostError& error) {
        return error.what();
    }
    return {};
}

} // namespace varno

#endif
