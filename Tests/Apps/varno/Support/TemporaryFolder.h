/// A folder for the files of one test.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_TEMPORARYFOLDER_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_TEMPORARYFOLDER_H

#include <filesystem>
#include <string>
#include <string_view>

namespace varno::test {

/// Unique, and removed with everything in it at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return mPath; }
    /// The path of a file in the folder, as text.
    std::string operator/(const std::string& name) const { return (mPath / name).string(); }
    /// The names in the folder, sorted, separated by blanks.
    std::string listing() const;

private:
    std::filesystem::path mPath;
};

/// The content of a file; fails the test where it cannot be read.
std::string readFile(const std::filesystem::path& path);

void writeFile(const std::filesystem::path& path, std::string_view content);

} // namespace varno::test

#endif
