#include "Surround/Settings/TextReading.h"

#include <fstream>
#include <system_error>

namespace varno {

namespace fs = std::filesystem;

TextFile readTextFile(const fs::path& path) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::not_found || status.type() == fs::file_type::none) {
        return {{}, "cannot be read: " + error.message()};
    }
    if (!fs::is_regular_file(status)) {
        return {{}, "is no file"};
    }
    std::ifstream file(path, std::ios::binary);
    std::string text(kMostTextBytes + 1, '\0');
    if (!file || file.read(text.data(), static_cast<std::streamsize>(text.size())).bad()) {
        return {{}, "cannot be read"};
    }
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (text.size() > kMostTextBytes) {
        return {{}, "has more than " + std::to_string(kMostTextBytes) + " bytes"};
    }
    return {std::move(text), {}};
}

} // namespace varno
