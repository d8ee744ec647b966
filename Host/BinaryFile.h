/// Binaries of modules as files of the system: where they lie in a bundle, and their loading.
#ifndef VARNO_HOST_BINARYFILE_H
#define VARNO_HOST_BINARYFILE_H

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

/// The folder within a bundle's `Contents` for binaries of this system and machine: "x86_64-linux". [any]
const char* binaryFolder();
/// What the name of such a binary ends with: ".so". [any]
const char* binarySuffix();

/// What makes a binary unfit to be loaded, as part of a sentence, where loading it would end the program;
/// other damage is left to the loader. Nothing when no such defect is found. [any]
std::optional<std::string> binaryDefect(const std::filesystem::path& path);

/// Loads a binary, with nothing looked for elsewhere. @return its handle, for unloadBinary(); null where it
/// cannot be loaded @param refusal receives the system's reason then [main]
void* loadBinary(const std::filesystem::path& path, std::string& refusal);
/// An exported function of a loaded binary, valid while it is loaded; null where it has none of the name.
/// [main]
void* binarySymbol(void* handle, const char* name);
/// Takes back one loadBinary(). [main]
void unloadBinary(void* handle);

} // namespace varno

#endif
