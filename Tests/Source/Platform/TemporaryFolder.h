/// A folder for a test's files.
#ifndef VARNO_TESTS_SOURCE_PLATFORM_TEMPORARYFOLDER_H
#define VARNO_TESTS_SOURCE_PLATFORM_TEMPORARYFOLDER_H

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace varno::test {

/// Empty at first, and gone at its end with all that is in it. Its path has no symbolic link in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "varno-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::system_error(errno, std::generic_category(), name);
        }
        mPath = std::filesystem::canonical(name);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(mPath, ignored);
    }

    const std::filesystem::path& path() const { return mPath; }

private:
    std::filesystem::path mPath;
};

} // namespace varno::test

#endif
