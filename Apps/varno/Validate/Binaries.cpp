#include "Validate/Binaries.h"

#include "Validate/ElfFile.h"

#include <algorithm>
#include <dlfcn.h>
#include <system_error>

namespace varno::validate {
namespace {

namespace fs = std::filesystem;

#if defined(__aarch64__)
constexpr const char* kModuleFolder = "aarch64-linux";
#else
constexpr const char* kModuleFolder = "x86_64-linux";
#endif

// What every linker of the past has exported, which no program looks for.
constexpr std::string_view kOfLinkers[] = {"_init", "_fini", "__bss_start", "_edata", "_end"};

} // namespace

std::vector<fs::path> binariesOf(const fs::path& path, Format format) {
    if (format == Format::kClap) {
        return {path};
    }
    const fs::path folder = format == Format::kModule ? path / "Contents" / kModuleFolder : path;
    std::vector<fs::path> binaries;
    std::error_code unreadable;
    for (const auto& entry : fs::directory_iterator(folder, unreadable)) {
        if (entry.path().extension() == ".so" && entry.is_regular_file(unreadable)) {
            binaries.push_back(entry.path());
        }
    }
    if (binaries.empty()) {
        throw PluginError(folder.string() + " has no binary NAME.so");
    }
    std::ranges::sort(binaries);
    return binaries;
}

void keepLibrariesLoaded(const fs::path& path, Format format) {
    for (const fs::path& binary : binariesOf(path, format)) {
        for (const std::string& library : ElfFile(binary.string()).neededLibraries()) {
            (void)::dlopen(library.c_str(), RTLD_LAZY | RTLD_LOCAL);
        }
    }
}

std::vector<std::string> entryPoints(Format format) {
    switch (format) {
    case Format::kModule:
        return {"ACFCanUnloadNow",   "ACFGetClassFactory", "ACFGetSDKVersion", "ACFRegisterComponent",
                "ACFRegisterPlugin", "ACFShutdown",        "ACFStartup"};
    case Format::kLv2:
        return {"lv2_descriptor", "lv2_lib_descriptor", "lv2ui_descriptor", "lv2_dyn_manifest_open"};
    case Format::kClap:
        return {"clap_entry"};
    }
    return {};
}

std::size_t leastEntries(Format format) {
    return format == Format::kModule ? entryPoints(format).size() : 1;
}

bool mayExport(Format format, std::string_view symbol) {
    const auto entries = entryPoints(format);
    return std::ranges::find(entries, symbol) != entries.end() ||
           (format == Format::kLv2 && symbol.starts_with("lv2_dyn_manifest_")) ||
           std::ranges::find(kOfLinkers, symbol) != std::end(kOfLinkers);
}

} // namespace varno::validate
