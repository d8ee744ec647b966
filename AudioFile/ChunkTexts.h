#ifndef VARNO_AUDIOFILE_CHUNKTEXTS_H
#define VARNO_AUDIOFILE_CHUNKTEXTS_H

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/LeftOut.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/Tags.h"

#include <vector>

namespace varno {

/// Whether textsOfChunks() or readId3() reads this chunk for a file of another family.
bool isTextChunk(ChunkFamily family, const CarriedChunk& chunk);

/// Whether the chunk is an ID3v2 tag.
bool isId3Chunk(ChunkFamily family, const CarriedChunk& chunk);

/// The texts that the chunks of a file hold in the family's own form: INFO of RIFF, NAME, AUTH, "(c) " and
/// ANNO of AIFF, info of CAF. @param leftOut gets damaged ones
std::vector<TextTag> textsOfChunks(ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                                   LeftOutList& leftOut);

/// Texts and pictures as chunks of a family.
struct TagChunks {
    std::vector<CarriedChunk> chunks;
    LeftOutList leftOut; ///< what they do not hold
};

/// In the family's own form for programs that read nothing else and, of RIFF and AIFF, as an ID3v2 tag where
/// that form does not hold everything.
/// @param id3 a tag that will hold everything and its own; empty for none
TagChunks makeTagChunks(ChunkFamily family, const Tags& tags, const std::string& id3);

} // namespace varno

#endif
