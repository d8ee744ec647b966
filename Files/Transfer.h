#ifndef VARNO_FILES_TRANSFER_H
#define VARNO_FILES_TRANSFER_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// Called during long transfers, after a signal has interrupted a wait for a pipe, and where a pipe has
/// ended. It throws to end the work; the exception passes through to the caller. An empty one never ends it.
using GoOn = std::function<void()>;

/// Owns an open file descriptor of the system and closes it.
class FileDescriptor {
public:
    FileDescriptor() = default;
    /// Takes ownership. @param descriptor -1 for none
    explicit FileDescriptor(int descriptor)
        : mDescriptor(descriptor) {}
    ~FileDescriptor() { close(); }

    FileDescriptor(FileDescriptor&& other) noexcept
        : mDescriptor(other.release()) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept;

    bool isOpen() const { return mDescriptor >= 0; }
    int get() const { return mDescriptor; }

    /// Gives ownership away. @return the descriptor, which the caller now closes
    int release();

    /// @return 0, or the system's error number where closing reports a failed write. Nothing to close is no
    ///         error.
    int close();

private:
    int mDescriptor = -1;
};

/// Throws the FileError "NAME: cannot be read: REASON". @param error number of the system
[[noreturn]] void throwReadError(const std::string& name, int error);

/// Throws the FileError "NAME: cannot be written: REASON". @param error number of the system
[[noreturn]] void throwWriteError(const std::string& name, int error);

/// Opens with `flags` of the system, closed in child processes. Waits on after a signal if `goOn` returns.
/// @param mode of a file that is created
/// @return nothing open where that fails, with the reason in errno
FileDescriptor openFile(const std::string& path, int flags, const GoOn& goOn, unsigned mode = 0);

/// Reads from the present position until all bytes have arrived or the file has ended. @return bytes read
/// @throws FileError
std::size_t readUpTo(int descriptor, char* bytes, std::size_t count, const std::string& name,
                     const GoOn& goOn);

/// Writes all bytes at the present position. @param name for messages @throws FileError
void writeAll(int descriptor, std::string_view bytes, const std::string& name, const GoOn& goOn);

/// Reads bytes at an offset; the position stays. @return whether all of them could be read; else errno has
/// the reason
bool readAt(int descriptor, std::int64_t offset, void* bytes, std::size_t count);

/// Writes bytes at an offset; the position stays. @param name for messages @throws FileError
void writeAt(int descriptor, std::int64_t offset, std::string_view bytes, const std::string& name);

/// Puts bytes in the place of `oldBytes` bytes at an offset; what follows moves. The position does not count.
/// @param name for messages @throws FileError
void replaceRange(int descriptor, std::int64_t offset, std::int64_t oldBytes, std::string_view bytes,
                  const std::string& name);

/// Copies from the present position to the end of one file to the present position of another.
/// @throws FileError
void copyAll(int from, const std::string& fromName, int to, const std::string& toName, const GoOn& goOn);

/// The whole content of a file or a pipe. @return nothing where it has more than `mostBytes`
/// @throws FileError
std::optional<std::string> readWhole(const std::string& path, std::size_t mostBytes, const GoOn& goOn);

/// A file without a name in the folder for temporary files (TMPDIR, else /tmp), deleted when it is closed.
/// @throws FileError
FileDescriptor openUnnamedTemporary();

} // namespace varno

#endif
