#ifndef VARNO_AUDIOFILE_ATOMICFILE_H
#define VARNO_AUDIOFILE_ATOMICFILE_H

#include "AudioFile/FileDescriptor.h"
#include "AudioFile/FileIdentity.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace varno {

/// Whether an output may take the place of a file that is there already.
enum class Overwrite { kRefuse, kReplace };

/// A file that appears whole or not at all. It is written under a hidden, unique name in the folder of its
/// target and gets its own name by commit(); an object destroyed without that leaves nothing behind. Where
/// the target is standard output, a pipe or a device, which cannot be renamed to, the content waits in an
/// unnamed temporary file and is copied by commit(). One thread at a time; several objects, in several
/// threads or programs, do not disturb each other.
class AtomicFile {
public:
    /// @param path of the target; "-" is standard output; a symbolic link is followed
    /// @throws WorkError where the target exists and may not be replaced, is a directory, or its folder does
    /// not
    ///         exist or cannot be written
    AtomicFile(const std::string& path, Overwrite overwrite);
    ~AtomicFile();

    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// The path as given; "standard output" for "-".
    const std::string& name() const { return mName; }

    /// The file being written, open for reading and writing; owned by this object.
    int descriptor() const { return mFile.get(); }

    /// Appends at the present position. @throws WorkError with the reason, for instance a full disk
    void write(std::string_view bytes);

    /// Gives the file its name, or copies it to where it goes. Nothing can be written afterwards.
    /// @throws WorkError where that fails, or where a file has appeared under the name and may not be
    /// replaced
    void commit();

private:
    void openBeside(const std::filesystem::path& target);
    void copyToStream();

    std::string mName;
    Overwrite mOverwrite;
    std::filesystem::path mTarget;    // empty for standard output
    std::filesystem::path mTemporary; // empty once there is nothing to remove
    bool mIsStream = false;
    FileDescriptor mFile;
};

/// @throws WorkError where `outputPath` is the file `input` under whatever name, through links or not.
/// @param inputName for the message
void refuseSameFile(const FileIdentity& input, const std::string& inputName, const std::string& outputPath);

} // namespace varno

#endif
