#ifndef VARNO_AUDIOFILE_FILEDESCRIPTOR_H
#define VARNO_AUDIOFILE_FILEDESCRIPTOR_H

namespace varno {

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
    /// error.
    int close();

private:
    int mDescriptor = -1;
};

} // namespace varno

#endif
