#include "Host/BinaryFile.h"

#include <dlfcn.h>

namespace varno {

void* loadBinary(const std::filesystem::path& path, std::string& refusal) {
    // An absolute path, so that the loader's search path is not used.
    void* const handle = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        refusal = dlerror();
    }
    return handle;
}

void* binarySymbol(void* handle, const char* name) {
    return dlsym(handle, name);
}

void unloadBinary(void* handle) {
    dlclose(handle);
}

} // namespace varno
