// The binary as the system's loader sees it, and what loading it does to a process.
#include "CLAP/Clap/Plugin.h"

#include "Validate/Binaries.h"
#include "Validate/Check.h"
#include "Validate/ElfFile.h"
#include "Validate/ProcessTraces.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace varno::validate {
namespace {

// Calls `check(file, name)` for each binary. One that is no ELF file fails.
template<class Action>
void forEachBinary(Context& context, Action check) {
    for (const auto& path : binariesOf(context.path(), context.format())) {
        context.step("read " + path.string());
        check(ElfFile(path.string()), path.filename().string());
    }
}

void checkSymbols(Context& context) {
    forEachBinary(context, [&](const ElfFile& file, const std::string& name) {
        const auto exported = file.exportedSymbols();
        const auto entries = entryPoints(context.format());
        std::size_t found = 0;
        std::string missing;
        for (const std::string& entry : entries) {
            const bool isThere = exported.contains(entry);
            found += isThere ? 1 : 0;
            missing = isThere ? missing : entry;
        }
        context.expect(found >= leastEntries(context.format()), name + " without " + missing,
                       "the entry points of the format");
        std::vector<std::string> others;
        for (const std::string& symbol : exported) {
            if (!mayExport(context.format(), symbol)) {
                others.push_back(symbol);
            }
        }
        if (!others.empty()) {
            context.fail(name + " exporting " + std::to_string(others.size()) +
                             " other symbols, for instance " + others.front(),
                         "the entry points alone, since names of two plug-ins clash");
        }
    });
}

void checkDependencies(Context& context) {
    forEachBinary(context, [&](const ElfFile& file, const std::string& name) {
        for (const std::string& folder : file.searchFolders()) {
            context.expect(folder.starts_with("$ORIGIN"),
                           std::string(name).append(" searching libraries in ").append(folder),
                           "no folder of the machine that built it");
        }
        for (const std::string& library : file.neededLibraries()) {
            context.expect(library.find('/') == std::string::npos,
                           std::string(name).append(" needing ").append(library),
                           "a name without folder, which other machines have too");
        }
    });
}

void checkBinding(Context& context) {
    forEachBinary(context, [&](const ElfFile& file, const std::string& name) {
        context.expect(file.isBoundWhenLoaded(), name + " bound at first calls",
                       "functions of others found when it is loaded (-z now), not by the audio thread");
    });
}

void checkHardening(Context& context) {
    forEachBinary(context, [&](const ElfFile& file, const std::string& name) {
        context.expect(file.hasReadOnlyRelocations(), name + " with writable relocations", "-z relro");
        context.expect(!file.hasExecutableStack(), name + " with an executable stack", "-z noexecstack");
        context.expect(!file.hasTextRelocations(), name + " with text relocations",
                       "code that the loader need not write to (-fPIC)");
        context.expect(!file.hasWritableCode(), name + " with a part to write and execute", "none");
    });
}

void checkOpening(Context& context) {
    context.step("open");
    const auto plugin = context.open();
    context.expect(!plugin->plugins().empty(), "no plug-in", "at least one");
}

// Has the system forget what it has read of a file, as far as it does so for this user.
void forgetContent(const std::filesystem::path& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file >= 0) {
        (void)::posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
        ::close(file);
    }
}

// How long opening takes in a process that has not done so before; nothing where that fails.
std::optional<double> secondsToOpen(const Context& context) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return std::nullopt;
    }
    const pid_t process = ::fork();
    if (process == 0) {
        const auto start = std::chrono::steady_clock::now();
        try {
            const auto plugin = context.open();
            const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
            const double count = seconds.count();
            (void)!::write(ends[1], &count, sizeof count);
        } catch (...) {
            ::_exit(1);
        }
        ::_exit(0);
    }
    ::close(ends[1]);
    double seconds = 0.0;
    const bool isWhole = process > 0 && ::read(ends[0], &seconds, sizeof seconds) == sizeof seconds;
    ::close(ends[0]);
    if (process > 0) {
        ::waitpid(process, nullptr, 0);
    }
    return isWhole ? std::optional(seconds) : std::nullopt;
}

void checkColdStart(Context& context) {
    // The fastest of several: a busy machine makes some of them longer, a slow plug-in all.
    constexpr int kRounds = 5;
    constexpr double kMostSeconds = 0.1;
    constexpr double kMsPerSecond = 1000.0;
    double fastest = -1.0;
    for (int round = 0; round < kRounds; ++round) {
        for (const auto& path : binariesOf(context.path(), context.format())) {
            forgetContent(path);
        }
        const auto seconds = secondsToOpen(context);
        if (!seconds) {
            context.fail("no description in a fresh process", "one");
            return;
        }
        fastest = fastest < 0.0 ? *seconds : std::min(fastest, *seconds);
    }
    context.expect(fastest <= kMostSeconds,
                   std::to_string(std::lround(fastest * kMsPerSecond)) + " ms to load and describe",
                   "at most 100 ms, since hosts scan hundreds");
}

class LoadedBinary {
public:
    explicit LoadedBinary(const std::filesystem::path& path)
        : mHandle(::dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL)) {
        if (mHandle == nullptr) {
            throw PluginError(::dlerror());
        }
    }
    LoadedBinary(const LoadedBinary&) = delete;
    LoadedBinary& operator=(const LoadedBinary&) = delete;
    ~LoadedBinary() { ::dlclose(mHandle); }

    void* find(const char* symbol) const { return ::dlsym(mHandle, symbol); }

private:
    void* mHandle;
};

// Has a binary describe itself, without what a host has around it. That of an LV2 plug-in describes what can
// be made.
void loadAndUnload(Context& context) {
    if (context.format() == Format::kModule) {
        (void)context.open();
        return;
    }
    for (const auto& path : binariesOf(context.path(), context.format())) {
        const LoadedBinary binary(path);
        using Descriptor = const void* (*)(std::uint32_t);
        for (const char* const name : {"lv2_descriptor", "lv2ui_descriptor"}) {
            const auto describe = reinterpret_cast<Descriptor>(binary.find(name));
            for (std::uint32_t index = 0; describe != nullptr && describe(index) != nullptr; ++index) {
            }
        }
        if (const auto* entry = static_cast<const clap_plugin_entry_t*>(binary.find("clap_entry"))) {
            if (entry->init(path.c_str())) {
                (void)entry->get_factory(CLAP_PLUGIN_FACTORY_ID);
                entry->deinit();
            }
        }
    }
}

void checkReloading(Context& context) {
    constexpr int kRounds = 100;
    keepLibrariesLoaded(context.path(), context.format());
    const ProcessTraces before;
    MemoryGrowth growth(kRounds);
    for (int round = 0; round < kRounds; ++round) {
        context.step("load and unload, round " + std::to_string(round + 1));
        loadAndUnload(context);
        growth.endRound();
    }
    for (const std::string& change : before.changes()) {
        context.fail(change + " after " + std::to_string(kRounds) + " times loaded and unloaded",
                     "the process as it was before");
    }
    if (const auto bytes = growth.bytesPerRound()) {
        context.fail(std::to_string(*bytes) + " bytes of memory lost each time it is loaded and unloaded",
                     "none");
    }
}

void checkWithoutDisplay(Context& context) {
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "XAUTHORITY", "XDG_RUNTIME_DIR",
                             "DBUS_SESSION_BUS_ADDRESS", "HOME"}) {
        ::unsetenv(name);
    }
    context.step("open without DISPLAY and HOME");
    const auto plugin = context.open();
    context.expect(!plugin->plugins().empty(), "no plug-in without a display", "the same as with one");
}

constexpr Check kBinaryChecks[] = {
    {.id = "binary-symbols",
     .title = "The entry points of the format are exported and nothing else",
     .run = checkSymbols},
    {.id = "binary-dependencies",
     .title = "Libraries are looked for where every machine has them",
     .run = checkDependencies},
    {.id = "binary-binding", .title = "Functions of others are found when it is loaded", .run = checkBinding},
    {.id = "binary-hardening", .title = "Relocations, stack and code are protected", .run = checkHardening},
    {.id = "binary-opens", .title = "It is loaded and describes a plug-in", .run = checkOpening},
    {.id = "binary-cold-start", .title = "Loading and describing take at most 100 ms", .run = checkColdStart},
    {.id = "binary-reloading",
     .title = "Loading and unloading it 100 times leaves nothing behind",
     .run = checkReloading},
    {.id = "binary-no-display",
     .title = "It is described without a display and a home",
     .run = checkWithoutDisplay},
};

} // namespace

std::span<const Check> binaryChecks() {
    return kBinaryChecks;
}

} // namespace varno::validate
