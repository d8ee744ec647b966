#ifndef VARNO_FILES_FILEERROR_H
#define VARNO_FILES_FILEERROR_H

#include <stdexcept>

namespace varno {

/// A file that cannot be opened, read, decoded or written. what() is one line without a line end: the file,
/// what was found and, where it helps, what was expected.
class FileError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace varno

#endif
