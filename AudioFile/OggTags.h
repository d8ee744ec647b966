#ifndef VARNO_AUDIOFILE_OGGTAGS_H
#define VARNO_AUDIOFILE_OGGTAGS_H

#include "AudioFile/LeftOut.h"
#include "AudioFile/XiphComments.h"

#include <cstdint>
#include <string>

namespace varno {

/// The comments of an Ogg file of Vorbis or Opus. @param descriptor open for reading; its position stays
/// @param mostBytes of the file that are read for them @param leftOut gets what cannot be read
XiphComments readOggComments(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut);

/// Replaces the comments of a complete Ogg file of Vorbis or Opus, of which the encoder's name stays.
/// @param descriptor open for reading and writing @param name of the file for messages @throws FileError
void writeOggComments(int descriptor, const XiphComments& comments, const std::string& name);

} // namespace varno

#endif
