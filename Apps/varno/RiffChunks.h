#pragma once

#include "ContainerChunks.h"
#include "FileMetadata.h"

#include <string>
#include <vector>

namespace varno {

/// Most bytes of chunks that are carried from one file to another; they are held in memory meanwhile.
inline constexpr std::int64_t kMostCarriedBytes = 4 << 20;

/// The chunks of a WAV or RF64 file that stay true when its samples change: broadcast extension, cue points
/// and their labels, text, sampler loops and the like. None of any other file.
/// @param tooLarge gets the identifiers of those beyond kMostCarriedBytes
std::vector<RiffChunk> readCarriedChunks(int descriptor, const ContainerChunks& container,
                                         std::vector<std::string>& tooLarge);

/// The chunks "cue " and "LIST" of labels that say the same.
std::vector<RiffChunk> riffCueChunks(const std::vector<CuePoint>& cues);

/// Adds chunks at the end of a complete WAV or RF64 file with little-endian sizes and corrects its length
/// field.
/// @param descriptor open for reading and writing @param name of the file for messages @throws WorkError
void appendRiffChunks(int descriptor, const std::vector<RiffChunk>& chunks, const std::string& name);

} // namespace varno
