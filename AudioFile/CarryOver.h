#ifndef VARNO_AUDIOFILE_CARRYOVER_H
#define VARNO_AUDIOFILE_CARRYOVER_H

#include "AudioFile/Format.h"
#include "AudioFile/LeftOut.h"
#include "AudioFile/Metadata.h"

#include <string>
#include <vector>

namespace varno {

/// What an output receives of an input's metadata.
struct CarriedOver {
    std::vector<CarriedChunk> chunks; ///< for RIFF, AIFF and CAF files
    FlacMetadata flac;                ///< for FLAC files
    XiphComments comments;            ///< for Ogg files
    LeftOutList leftOut;              ///< what it does not receive, and what of the input could not be read
};

/// Chooses what an output receives: between files of one family everything as it is, otherwise texts,
/// pictures and cue points in the form of its container.
/// @param output its format, with the number of its frames
CarriedOver carryOver(const FileMetadata& metadata, const AudioFormat& output);

/// Adds it to a complete file. @param descriptor open for reading and writing
/// @param name of the file for messages @throws FileError
void writeCarriedOver(int descriptor, const CarriedOver& carried, Container container,
                      const std::string& name);

} // namespace varno

#endif
