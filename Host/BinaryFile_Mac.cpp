#include "Host/BinaryFile.h"

namespace varno {

const char* binaryFolder() {
    return "MacOS";
}

const char* binarySuffix() {
    return "";
}

std::optional<std::string> binaryDefect(const std::filesystem::path&) {
    return std::nullopt;
}

} // namespace varno
