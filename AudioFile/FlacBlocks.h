#ifndef VARNO_AUDIOFILE_FLACBLOCKS_H
#define VARNO_AUDIOFILE_FLACBLOCKS_H

#include "AudioFile/LeftOut.h"
#include "AudioFile/Tags.h"
#include "AudioFile/XiphComments.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

struct FLAC__StreamMetadata;

namespace varno {

/// A block of a FLAC file's metadata.
using FlacBlock = std::shared_ptr<const FLAC__StreamMetadata>;

/// What a FLAC file holds beside its samples, but for what the encoder makes: stream information, seek table
/// and padding.
struct FlacMetadata {
    XiphComments comments;
    std::vector<Picture> pictures;
    std::vector<FlacBlock> others; ///< cue sheets and data of applications

    bool isEmpty() const { return comments.empty() && pictures.empty() && others.empty(); }
};

/// Reads the metadata of a native FLAC file. @param descriptor open for reading; its position stays
/// @param mostBytes of the file that are read for it @param leftOut gets what cannot be read
FlacMetadata readFlacMetadata(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut);

/// Adds what the block is to the list, with the identifier of an application's block.
void leaveOutBlock(const FlacBlock& block, LeftOutReason reason, LeftOutList& leftOut);

/// Takes what a FLAC file cannot hold out of the metadata: pictures of more than 16 MiB, comments
/// beyond 100,000 or 16 MiB in all, and the headers of another file that `flac --keep-foreign-metadata`
/// keeps, which state sizes of the input. A cue sheet that ends where the input does will end where the
/// output does. @param leftOut gets what is left out
void fitFlacMetadata(FlacMetadata& metadata, std::int64_t inputFrames, std::int64_t outputFrames,
                     LeftOutList& leftOut);

/// Gives a complete native FLAC file these blocks instead of its comments; the encoder's name stays.
/// @param descriptor open for reading and writing @param name of the file for messages @throws FileError
void writeFlacMetadata(int descriptor, const FlacMetadata& metadata, const std::string& name);

} // namespace varno

#endif
