#ifndef VARNO_AUDIOFILE_ERROR_H
#define VARNO_AUDIOFILE_ERROR_H

#include <stdexcept>

namespace varno {

/// A file that cannot be opened, read, decoded or written. what() is one line without a line end: the file,
/// what was found and, where it helps, what was expected.
class AudioFileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// An output was requested in a format that it cannot have. No file was touched.
class UnsupportedFormat : public AudioFileError {
public:
    using AudioFileError::AudioFileError;
};

} // namespace varno

#endif
