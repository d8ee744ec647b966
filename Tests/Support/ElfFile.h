/// What a linked ELF file says about itself.
#ifndef VARNO_TESTS_SUPPORT_ELFFILE_H
#define VARNO_TESTS_SUPPORT_ELFFILE_H

#include <cstddef>
#include <elf.h>
#include <set>
#include <string>
#include <vector>

namespace varno::test {

/// A 64-bit ELF file of this machine's byte order. Reading a file that is none throws std::runtime_error.
class ElfFile {
public:
    explicit ElfFile(const std::string& path);

    /// Names of the symbols that a loader offers to others.
    std::set<std::string> exportedSymbols() const;
    /// Names of the symbols that a loader has to find elsewhere.
    std::set<std::string> importedSymbols() const;
    /// Names of the libraries that a loader has to load with it.
    std::set<std::string> neededLibraries() const;
    /// Whether the loader has to write to its code.
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
