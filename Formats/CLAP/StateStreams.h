/// A host's streams as bytes.
#ifndef VARNO_FORMATS_CLAP_STATESTREAMS_H
#define VARNO_FORMATS_CLAP_STATESTREAMS_H

#include "CLAP/Clap/Extensions.h"

#include <cstddef>
#include <span>
#include <vector>

namespace varno {

/// Writes all bytes, in as many calls as the host needs. @throws HostError where it fails [main]
void writeAll(const clap_ostream_t& stream, std::span<const std::byte> bytes);

/// Reads to the end, in as many calls as the host needs. @throws HostError where it fails, and where there
/// are more than kMostRecordBytes [main]
std::vector<std::byte> readAll(const clap_istream_t& stream);

} // namespace varno

#endif
