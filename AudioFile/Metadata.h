#ifndef VARNO_AUDIOFILE_METADATA_H
#define VARNO_AUDIOFILE_METADATA_H

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/FlacBlocks.h"
#include "AudioFile/Format.h"
#include "AudioFile/LeftOut.h"
#include "AudioFile/Tags.h"
#include "AudioFile/XiphComments.h"

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// A chunk of an audio file, copied unchanged.
struct CarriedChunk {
    std::string id; ///< four characters
    std::vector<char> data;

    bool operator==(const CarriedChunk&) const = default;
};

/// A marker of a file.
struct CuePoint {
    std::int32_t id = 0;
    std::uint32_t frame = 0;
    std::string name; ///< empty where the file has none
};

/// What an audio file holds beside its samples, each as its container has it.
struct FileMetadata {
    /// Of RIFF, AIFF and CAF files, every chunk that stays valid when the samples change: markers, text,
    /// tags, broadcast extension, sampler loops and the like.
    std::vector<CarriedChunk> chunks;
    ChunkFamily family = ChunkFamily::kNone;

    FlacMetadata flac;          ///< of FLAC files
    XiphComments comments;      ///< of Ogg files; their pictures are among them
    std::string id3;            ///< the ID3v2 tag before an MP3 or FLAC file, its bytes
    std::vector<TextTag> texts; ///< of MP3 files, beside that tag; of AU files

    std::vector<CuePoint> cues; ///< of the chunks, read
    std::vector<int>
        channelMap;          ///< libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty if not known
    std::int64_t frames = 0; ///< of the file
    LeftOutList leftOut;     ///< what could not be read
};

/// Most bytes of metadata that are carried from one file to another; they are held in memory.
inline constexpr std::int64_t kMostCarriedBytes = 64 << 20;

/// The family of the files that AudioWriter writes into a container.
ChunkFamily familyOf(Container container);

/// Reads everything but cue points, channel map and the number of frames. @param descriptor open for reading;
/// its position stays
/// @param format of the file
FileMetadata readFileMetadata(int descriptor, const ContainerChunks& container, const AudioFormat& format);

/// Bytes of a chunk, as a text.
std::string_view bytesOf(const CarriedChunk& chunk);

CarriedChunk makeChunk(std::string_view id, std::string_view data);

/// Header, data and padding of a chunk within a file or, for RIFF, within another chunk.
std::string chunkBytes(ChunkFamily family, std::string_view id, std::string_view data);

/// The chunks that hold these cue points in a WAV or AIFF file; none for other families.
std::vector<CarriedChunk> cueChunks(ChunkFamily family, const std::vector<CuePoint>& cues);

/// Adds chunks at the end of a complete file of a family and corrects its length field.
/// @param descriptor open for reading and writing @param name of the file for messages @throws FileError
void appendChunks(int descriptor, ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                  const std::string& name);

} // namespace varno

#endif
