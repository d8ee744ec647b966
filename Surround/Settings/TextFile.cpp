#include "Surround/Settings/TextFile.h"

#include "Files/FileError.h"

#include <system_error>

namespace varno {

namespace fs = std::filesystem;

void writeTextFile(const fs::path& path, const std::string& text, Overwrite overwrite) {
    std::error_code error;
    fs::create_directories(path.parent_path(), error);
    if (error) {
        throw FileError(path.parent_path().string() + ": cannot be made: " + error.message());
    }
    AtomicFile file(path, overwrite);
    file.write(text);
    file.commit();
}

} // namespace varno
