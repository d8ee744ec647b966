#include "Session/SharedLibrary.h"

#include "Session/LiveBackend.h"

#include <dlfcn.h>

namespace varno {

SharedLibrary::SharedLibrary(const char* name)
    : mName(name),
      mHandle(::dlopen(name, RTLD_NOW | RTLD_LOCAL)) {
    if (mHandle == nullptr) {
        throw SoundUnavailable(std::string(name) + " is not installed");
    }
}

void* SharedLibrary::address(const char* name) const {
    return ::dlsym(mHandle, name);
}

void* SharedLibrary::require(const char* name) const {
    void* const found = address(name);
    if (found == nullptr) {
        throw SoundUnavailable(std::string(mName) + " has no function " + name);
    }
    return found;
}

} // namespace varno
