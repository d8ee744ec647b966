#ifndef VARNO_AUDIOFILE_TRANSFER_H
#define VARNO_AUDIOFILE_TRANSFER_H

#include "AudioFile/FileDescriptor.h"
#include "AudioFile/FileIdentity.h"

#include <string>
#include <string_view>

namespace varno {

/// The error "NAME: cannot be read: REASON". @param error number of the system
[[noreturn]] void throwReadError(const std::string& name, int error);

/// The error "NAME: cannot be written: REASON". @param error number of the system
[[noreturn]] void throwWriteError(const std::string& name, int error);

/// Opens with `flags` of the system, closed in child processes; goes on after signals that do not end the
/// work.
/// @return nothing open where that fails, with errno telling why
/// @throws WorkError where the user interrupts the wait for a pipe's other end
FileDescriptor openFile(const std::string& path, int flags, unsigned mode = 0);

/// Writes all bytes at the present position. @param name for messages
/// @throws WorkError where that fails or the user interrupts it
void writeAll(int descriptor, std::string_view bytes, const std::string& name);

/// Copies from the present position to the end of one file to the present position of another.
/// @throws WorkError where that fails or the user interrupts it
void copyAll(int from, const std::string& fromName, int to, const std::string& toName);

/// A file without a name in the folder for temporary files (TMPDIR, else /tmp), gone when it is closed.
/// @throws WorkError
FileDescriptor openUnnamedTemporary();

} // namespace varno

#endif
