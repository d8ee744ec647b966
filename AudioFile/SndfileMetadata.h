#ifndef VARNO_AUDIOFILE_SNDFILEMETADATA_H
#define VARNO_AUDIOFILE_SNDFILEMETADATA_H

#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"

#include <sndfile.h>

namespace varno {

/// Everything of the metadata that libsndfile tells, which is all but the chunks. @param file open for
/// reading
FileMetadata readMetadata(SNDFILE* file, int channels);

/// Hands text and the channel map to a file that has just been opened for writing.
/// @return whether the container holds all of the text
bool writeMetadata(SNDFILE* file, Container container, const FileMetadata& metadata);

} // namespace varno

#endif
