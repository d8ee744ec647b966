#include "Validate/ElfFile.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace varno::validate {

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
    T value{};
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

std::vector<Elf64_Dyn> ElfFile::dynamicEntries() const {
    std::vector<Elf64_Dyn> entries;
    for (const Elf64_Shdr& section : sections()) {
        for (std::size_t at = 0; section.sh_type == SHT_DYNAMIC && at + sizeof(Elf64_Dyn) <= section.sh_size;
             at += sizeof(Elf64_Dyn)) {
            entries.push_back(read<Elf64_Dyn>(section.sh_offset + at));
        }
    }
    return entries;
}

std::vector<Elf64_Phdr> ElfFile::segments() const {
    const auto header = read<Elf64_Ehdr>(0);
    std::vector<Elf64_Phdr> segments;
    for (std::size_t i = 0; i < header.e_phnum; ++i) {
        segments.push_back(read<Elf64_Phdr>(header.e_phoff + i * header.e_phentsize));
    }
    return segments;
}

std::set<std::string> ElfFile::neededLibraries() const {
    return dynamicTexts({DT_NEEDED});
}

std::set<std::string> ElfFile::searchFolders() const {
    return dynamicTexts({DT_RPATH, DT_RUNPATH});
}

std::set<std::string> ElfFile::dynamicTexts(const std::set<Elf64_Sxword>& tags) const {
    const std::vector<Elf64_Shdr> all = sections();
    const auto dynamic = std::find_if(
        all.begin(), all.end(), [](const Elf64_Shdr& section) { return section.sh_type == SHT_DYNAMIC; });
    std::set<std::string> names;
    for (const Elf64_Dyn& entry : dynamicEntries()) {
        if (tags.contains(entry.d_tag)) {
            names.insert(textAt(all.at(dynamic->sh_link).sh_offset + entry.d_un.d_val));
        }
    }
    return names;
}

int ElfFile::neededGlibc() const {
    const std::vector<Elf64_Shdr> all = sections();
    int highest = 0;
    for (const Elf64_Shdr& section : all) {
        if (section.sh_type != SHT_GNU_verneed) {
            continue;
        }
        const std::size_t names = all.at(section.sh_link).sh_offset;
        std::size_t file = section.sh_offset;
        for (std::size_t i = 0; i < section.sh_info; ++i) {
            const auto need = read<Elf64_Verneed>(file);
            std::size_t version = file + need.vn_aux;
            for (std::size_t k = 0; k < need.vn_cnt; ++k) {
                const auto part = read<Elf64_Vernaux>(version);
                const std::string name = textAt(names + part.vna_name);
                int major = 0;
                int minor = 0;
                if (std::sscanf(name.c_str(), "GLIBC_%d.%d", &major, &minor) == 2) {
                    highest = std::max(highest, 100 * major + minor);
                }
                version += part.vna_next;
            }
            file += need.vn_next;
        }
    }
    return highest;
}

bool ElfFile::hasDynamicFlag(Elf64_Sxword tag, Elf64_Xword flag) const {
    const std::vector<Elf64_Dyn> entries = dynamicEntries();
    return std::any_of(entries.begin(), entries.end(), [&](const Elf64_Dyn& entry) {
        return entry.d_tag == tag && (entry.d_un.d_val & flag) != 0;
    });
}

bool ElfFile::hasTextRelocations() const {
    const std::vector<Elf64_Dyn> entries = dynamicEntries();
    return hasDynamicFlag(DT_FLAGS, DF_TEXTREL) ||
           std::any_of(entries.begin(), entries.end(),
                       [](const Elf64_Dyn& entry) { return entry.d_tag == DT_TEXTREL; });
}

bool ElfFile::hasReadOnlyRelocations() const {
    const std::vector<Elf64_Phdr> all = segments();
    return std::any_of(all.begin(), all.end(),
                       [](const Elf64_Phdr& segment) { return segment.p_type == PT_GNU_RELRO; });
}

bool ElfFile::isBoundWhenLoaded() const {
    return hasDynamicFlag(DT_FLAGS, DF_BIND_NOW) || hasDynamicFlag(DT_FLAGS_1, DF_1_NOW);
}

bool ElfFile::hasFixedAddresses() const {
    return hasReadOnlyRelocations() && isBoundWhenLoaded();
}

bool ElfFile::hasWritableCode() const {
    const std::vector<Elf64_Phdr> all = segments();
    return std::any_of(all.begin(), all.end(), [](const Elf64_Phdr& segment) {
        return segment.p_type == PT_LOAD && (segment.p_flags & PF_W) != 0 && (segment.p_flags & PF_X) != 0;
    });
}

bool ElfFile::hasExecutableStack() const {
    const std::vector<Elf64_Phdr> all = segments();
    return std::none_of(all.begin(), all.end(), [](const Elf64_Phdr& segment) {
        return segment.p_type == PT_GNU_STACK && (segment.p_flags & PF_X) == 0;
    });
}

} // namespace varno::validate
