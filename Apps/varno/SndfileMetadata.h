#pragma once

#include "AudioFormat.h"
#include "FileMetadata.h"

#include <sndfile.h>
#include <string>
#include <vector>

namespace varno {

/// Everything of the metadata that libsndfile tells; chunks stay empty. @param file open for reading
FileMetadata readMetadata(SNDFILE* file, int channels);

/// Hands the metadata to a file that has just been opened for writing; of `chunks` nothing.
/// @return what the container cannot hold, each in a word or two
std::vector<std::string> writeMetadata(SNDFILE* file, Container container, const FileMetadata& metadata);

} // namespace varno
