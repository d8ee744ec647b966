#include "Host/BinaryFile.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <elf.h>
#include <fstream>

namespace varno {

namespace {

#if defined(__x86_64__)
constexpr Elf64_Half kMachine = EM_X86_64;
constexpr const char* kFolder = "x86_64-linux";
#elif defined(__aarch64__)
constexpr Elf64_Half kMachine = EM_AARCH64;
constexpr const char* kFolder = "aarch64-linux";
#else
#error "name the bundle's folder for this machine here"
#endif

template<class Record>
bool read(std::ifstream& file, std::uint64_t offset, Record& record) {
    std::array<char, sizeof(Record)> bytes{};
    file.seekg(static_cast<std::streamoff>(offset));
    if (!file.read(bytes.data(), bytes.size())) {
        return false;
    }
    std::memcpy(&record, bytes.data(), bytes.size());
    return true;
}

std::string cutShort(std::uint64_t found, std::uint64_t expected) {
    return "found " + std::to_string(found) + " bytes, expected at least " + std::to_string(expected);
}

} // namespace

const char* binaryFolder() {
    return kFolder;
}

const char* binarySuffix() {
    return ".so";
}

// It is no binary of this system and machine at all, or it is cut short. The loader maps a file as its
// headers say, and a program that touches what lies beyond the file's end is killed, so this has to be found
// before.
std::optional<std::string> binaryDefect(const std::filesystem::path& path) {
    std::error_code ignored;
    const std::uint64_t size = std::filesystem::file_size(path, ignored);
    std::ifstream file(path, std::ios::binary);
    Elf64_Ehdr header{};
    if (!read(file, 0, header)) {
        return cutShort(size, sizeof header);
    }
    if (std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 || header.e_ident[EI_CLASS] != ELFCLASS64 ||
        header.e_machine != kMachine || header.e_phentsize != sizeof(Elf64_Phdr)) {
        return "found no shared library for this machine";
    }
    for (std::uint64_t index = 0; index < header.e_phnum; ++index) {
        const std::uint64_t offset = header.e_phoff + index * sizeof(Elf64_Phdr);
        Elf64_Phdr segment{};
        if (!read(file, offset, segment)) {
            return cutShort(size, offset + sizeof segment);
        }
        if (segment.p_type == PT_LOAD &&
            (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)) {
            return cutShort(size, segment.p_offset + segment.p_filesz);
        }
    }
    return std::nullopt;
}

} // namespace varno
