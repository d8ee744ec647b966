#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <set>
#include <system_error>

namespace varno::test {

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "varno-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::system_error(errno, std::generic_category(), name);
    }
    mPath = std::filesystem::canonical(name);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
}

std::string TemporaryFolder::listing() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(mPath)) {
        names.insert(entry.path().filename().string());
    }
    std::string result;
    for (const auto& name : names) {
        result += (result.empty() ? "" : " ") + name;
    }
    return result;
}

std::filesystem::path TemporaryFolder::write(const std::filesystem::path& name,
                                             std::string_view content) const {
    std::filesystem::path file = mPath / name;
    std::filesystem::create_directories(file.parent_path());
    writeFile(file, content);
    return file;
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void writeFile(const std::filesystem::path& path, std::string_view content) {
    std::ofstream file(path, std::ios::binary);
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    ASSERT_TRUE(file) << path;
}

} // namespace varno::test
