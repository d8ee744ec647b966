#ifndef VARNO_AUDIOFILE_ERROR_H
#define VARNO_AUDIOFILE_ERROR_H

#include "Files/FileError.h"

namespace varno {

/// An output was requested in a format that it cannot have. No file was touched.
class UnsupportedFormat : public FileError {
public:
    using FileError::FileError;
};

} // namespace varno

#endif
