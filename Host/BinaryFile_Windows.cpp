#include "Host/BinaryFile.h"

#include <system_error>

#include <windows.h>

namespace varno {

const char* binaryFolder() {
    return "x86_64-windows";
}

const char* binarySuffix() {
    return ".dll";
}

// The loader refuses what is damaged.
std::optional<std::string> binaryDefect(const std::filesystem::path&) {
    return std::nullopt;
}

void* loadBinary(const std::filesystem::path& path, std::string& refusal) {
    // An absolute path, so that the loader's search path is not used.
    void* const handle = LoadLibraryW(std::filesystem::absolute(path).c_str());
    if (handle == nullptr) {
        refusal = std::system_category().message(static_cast<int>(GetLastError()));
    }
    return handle;
}

void* binarySymbol(void* handle, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

void unloadBinary(void* handle) {
    FreeLibrary(static_cast<HMODULE>(handle));
}

} // namespace varno
