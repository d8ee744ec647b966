/// The symbols and libraries that a linked ELF file names, and how it is protected.
#ifndef VARNO_APPS_VARNO_VALIDATE_ELFFILE_H
#define VARNO_APPS_VARNO_VALIDATE_ELFFILE_H

#include <cstddef>
#include <elf.h>
#include <set>
#include <string>
#include <vector>

namespace varno::validate {

/// A 64-bit ELF file of this machine's byte order. Reading anything else throws std::runtime_error.
class ElfFile {
public:
    explicit ElfFile(const std::string& path);

    /// Names of the symbols that the file exports.
    std::set<std::string> exportedSymbols() const;
    /// Names of the symbols that the file takes from others.
    std::set<std::string> importedSymbols() const;
    /// Names of the libraries that are loaded with it.
    std::set<std::string> neededLibraries() const;
    /// The highest version of the C library that it needs, as 100 * major + minor: 236 for "GLIBC_2.36"; 0
    /// for none.
    int neededGlibc() const;
    /// Whether it has text relocations: the loader must write to its code.
    bool hasTextRelocations() const;
    /// Whether all functions of others are found when it is loaded, and their addresses cannot be written
    /// afterwards.
    bool hasFixedAddresses() const;
    /// Whether data on its stack can be executed.
    bool hasExecutableStack() const;
    /// Whether a part of it can be both written and executed.
    bool hasWritableCode() const;
    /// Whether the addresses of others that it has found cannot be written afterwards.
    bool hasReadOnlyRelocations() const;
    /// Whether all functions of others are found when it is loaded, not at their first call.
    bool isBoundWhenLoaded() const;
    /// The folders that it has the loader search for libraries first.
    std::set<std::string> searchFolders() const;

private:
    bool hasDynamicFlag(Elf64_Sxword tag, Elf64_Xword flag) const;
    std::vector<Elf64_Dyn> dynamicEntries() const;
    std::set<std::string> dynamicTexts(const std::set<Elf64_Sxword>& tags) const;
    std::vector<Elf64_Phdr> segments() const;
    template<class T>
    T read(std::size_t offset) const;
    std::string textAt(std::size_t offset) const;
    std::vector<Elf64_Shdr> sections() const;
    std::set<std::string> dynamicSymbols(bool imported) const;

    std::string mBytes;
};

} // namespace varno::validate

#endif
