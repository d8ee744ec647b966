/// The symbols and libraries that a linked ELF file names.
#ifndef VARNO_TESTS_SUPPORT_ELFFILE_H
#define VARNO_TESTS_SUPPORT_ELFFILE_H

#include <cstddef>
#include <elf.h>
#include <set>
#include <string>
#include <vector>

namespace varno::test {

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
    /// Whether it has text relocations: the loader must write to its code.
    bool hasTextRelocations() const;

private:
    template<class T>
    T read(std::size_t offset) const;
    std::string textAt(std::size_t offset) const;
    std::vector<Elf64_Shdr> sections() const;
    std::set<std::string> dynamicSymbols(bool imported) const;

    std::string mBytes;
};

} // namespace varno::test

#endif
