#include "Platform/Bundle.h"

#include <dlfcn.h>
#include <link.h>

namespace varno {

namespace fs = std::filesystem;

namespace {

std::optional<fs::path> resourcesAround(const fs::path& binary) {
    const fs::path folder = binary.parent_path();
    const fs::path contents = folder.parent_path();
    std::error_code ignored;
    if (contents.filename() == "Contents" && fs::is_directory(contents / "Resources", ignored)) {
        return contents / "Resources";
    }
    if (fs::is_directory(folder / "resources", ignored)) {
        return folder / "resources";
    }
    return std::nullopt;
}

// The file that this code was loaded from; empty where the system does not report it.
fs::path thisBinary() {
    std::error_code unknown;
    static const char codeOfThisBinary = 0;
    Dl_info info{};
    void* found = nullptr;
    if (dladdr1(&codeOfThisBinary, &info, &found, RTLD_DL_LINKMAP) == 0) {
        return {};
    }
    // The loader reports a program only by its argument zero, which need not be a path.
    const char* const name = static_cast<const link_map*>(found)->l_name;
    return *name == '\0' ? fs::read_symlink("/proc/self/exe", unknown) : fs::absolute(name, unknown);
}

// Read while the module is loaded: the name may be relative, and the host may change its folder later.
const fs::path kBinary = thisBinary();

} // namespace

std::optional<fs::path> resourcesOf(const fs::path& binary) {
    if (auto found = resourcesAround(binary.lexically_normal())) {
        return found;
    }
    std::error_code missing;
    const fs::path target = fs::canonical(binary, missing);
    return missing ? std::nullopt : resourcesAround(target);
}

std::optional<Bundle> moduleBundle(const std::string&) {
    if (const auto resources = resourcesOf(kBinary)) {
        return Bundle{*resources, nullptr};
    }
    return std::nullopt;
}

} // namespace varno
