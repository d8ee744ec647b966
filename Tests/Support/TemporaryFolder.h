/// A folder for the files of one test.
#ifndef VARNO_TESTS_SUPPORT_TEMPORARYFOLDER_H
#define VARNO_TESTS_SUPPORT_TEMPORARYFOLDER_H

#include <filesystem>
#include <string>
#include <string_view>

namespace varno::test {

/// Empty at first, and removed at the end with everything in it. Its path has no symbolic link in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return mPath; }
    /// The path of a file in the folder, as text.
    std::string operator/(const std::string& name) const { return (mPath / name).string(); }
    /// The names of its files and folders, sorted, separated by blanks.
    std::string listing() const;
    /// Writes a file of that name or path within the folder, with the folders above it; returns its path.
    std::filesystem::path write(const std::filesystem::path& name, std::string_view content) const;

private:
    std::filesystem::path mPath;
};

/// The content of a file; fails the test where it cannot be read.
std::string readFile(const std::filesystem::path& path);

/// Fails the test where the file cannot be written.
void writeFile(const std::filesystem::path& path, std::string_view content);

} // namespace varno::test

#endif
