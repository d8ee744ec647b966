// The library that reads XML is not there to be built with: a host finds no page tables, as where there is no
// file.
#include "Host/HostError.h"
#include "Host/PageTableFile.h"

namespace varno {

PageTableFile PageTableFile::read(const std::filesystem::path& path) {
    throw HostError("page table file " + path.string() + ": this build reads none");
}

} // namespace varno
