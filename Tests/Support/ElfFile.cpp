#include "Tests/Support/ElfFile.h"

#include <algorithm>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace varno::test {

ElfFile::ElfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    mBytes.assign(std::istreambuf_iterator<char>(file), {});
    if (mBytes.size() < sizeof(Elf64_Ehdr) || mBytes.compare(0, SELFMAG, ELFMAG) != 0 ||
        mBytes[EI_CLASS] != ELFCLASS64) {
        throw std::runtime_error(path + " is no 64-bit ELF file");
    }
}

template<class T>
T ElfFile::read(std::size_t offset) const {
    if (offset > mBytes.size() || mBytes.size() - offset < sizeof(T)) {
        throw std::runtime_error("the ELF file is cut short");
    }
    T value;
    std::memcpy(&value, mBytes.data() + offset, sizeof(T));
    return value;
}

std::string ElfFile::textAt(std::size_t offset) const {
    const std::size_t start = std::min(offset, mBytes.size());
    return mBytes.substr(start, mBytes.find('\0', start) - start);
}

std::vector<Elf64_Shdr> ElfFile::sections() const {
    const auto header = read<Elf64_Ehdr>(0);
    std::vector<Elf64_Shdr> sections;
    for (std::size_t i = 0; i < header.e_shnum; ++i) {
        sections.push_back(read<Elf64_Shdr>(header.e_shoff + i * header.e_shentsize));
    }
    return sections;
}

std::set<std::string> ElfFile::dynamicSymbols(bool imported) const {
    const std::vector<Elf64_Shdr> all = sections();
    std::set<std::string> names;
    for (const Elf64_Shdr& section : all) {
        if (section.sh_type != SHT_DYNSYM) {
            continue;
        }
        for (std::size_t at = 0; at + sizeof(Elf64_Sym) <= section.sh_size; at += sizeof(Elf64_Sym)) {
            const auto symbol = read<Elf64_Sym>(section.sh_offset + at);
            if ((symbol.st_shndx == SHN_UNDEF) == imported && ELF64_ST_BIND(symbol.st_info) != STB_LOCAL) {
                names.insert(textAt(all.at(section.sh_link).sh_offset + symbol.st_name));
            }
        }
    }
    return names;
}

std::set<std::string> ElfFile::exportedSymbols() const {
    return dynamicSymbols(false);
}

std::set<std::string> ElfFile::importedSymbols() const {
    return dynamicSymbols(true);
}

std::set<std::string> ElfFile::neededLibraries() const {
    const std::vector<Elf64_Shdr> all = sections();
    std::set<std::string> names;
    for (const Elf64_Shdr& section : all) {
        if (section.sh_type != SHT_DYNAMIC) {
            continue;
        }
        for (std::size_t at = 0; at + sizeof(Elf64_Dyn) <= section.sh_size; at += sizeof(Elf64_Dyn)) {
            const auto entry = read<Elf64_Dyn>(section.sh_offset + at);
            if (entry.d_tag == DT_NEEDED) {
                names.insert(textAt(all.at(section.sh_link).sh_offset + entry.d_un.d_val));
            }
        }
    }
    return names;
}

bool ElfFile::hasTextRelocations() const {
    for (const Elf64_Shdr& section : sections()) {
        if (section.sh_type != SHT_DYNAMIC) {
            continue;
        }
        for (std::size_t at = 0; at + sizeof(Elf64_Dyn) <= section.sh_size; at += sizeof(Elf64_Dyn)) {
            const auto entry = read<Elf64_Dyn>(section.sh_offset + at);
            if (entry.d_tag == DT_TEXTREL ||
                (entry.d_tag == DT_FLAGS && (entry.d_un.d_val & DF_TEXTREL) != 0)) {
                return true;
            }
        }
    }
    return false;
}

} // namespace varno::test
