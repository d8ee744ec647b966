#ifndef VARNO_AUDIOFILE_STREAMHEAD_H
#define VARNO_AUDIOFILE_STREAMHEAD_H

#include "AudioFile/ContainerChunks.h"
#include "Files/Transfer.h"

#include <string>

namespace varno {

/// What has been read of a pipe so far.
struct StreamHead {
    FileDescriptor bytes;      ///< a file in memory
    ContainerChunks container; ///< of these bytes
};

/// Reads a pipe up to the start of its samples where it has a container with chunks, or AU; of all others
/// only a few bytes. Where the samples are of size 0, what follows is read too, since it decides what that
/// means.
/// @param goOn called while the pipe is waited for @throws FileError
StreamHead readStreamHead(int pipe, const std::string& name, const GoOn& goOn);

} // namespace varno

#endif
