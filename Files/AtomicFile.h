#ifndef VARNO_FILES_ATOMICFILE_H
#define VARNO_FILES_ATOMICFILE_H

#include "Files/Transfer.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace varno {

/// Whether an output may replace a file that exists already.
enum class Overwrite {
    kRefuse,
    kReplace,     ///< of a symbolic link, the file that it names
    kReplaceFile, ///< a regular file; refuses links and everything else
};

/// Whether an output is a pipe, a socket or a device, also where it is one under the name of standard output.
/// @param path "-" is standard output
bool isPipeOutput(const std::string& path);

/// When what is not a regular file receives the content.
enum class Delivery {
    kWhole,     ///< at commit
    kAsWritten, ///< at once: a failure leaves a part of it
};

/// A file that appears whole or not at all. It is written without a name in the folder of its target, or
/// where the file system has no such files under a hidden, unique name, and gets its own name by commit(). An
/// object destroyed without that leaves nothing behind; a program that is killed leaves hidden names at most,
/// which the next file in that folder removes (in a large folder, one of the next). A replaced file's mode,
/// owner and group are kept; where owner or group cannot be, without the special bits of the mode. Where the
/// target is standard output, a pipe or a device, which cannot be renamed to, the content is kept in an
/// unnamed temporary file and copied by commit(); with Delivery::kAsWritten a pipe or a device receives it at
/// once. One thread at a time; several objects, in several threads or programs, do not disturb each other.
class AtomicFile {
public:
    /// @param path of the target; "-" is standard output
    /// @param goOn called while write() and commit() wait for a pipe or a device
    /// @throws FileError where the target exists and may not be replaced, is a directory, or its folder
    ///         does not exist or cannot be written
    AtomicFile(const std::string& path, Overwrite overwrite, GoOn goOn = {},
               Delivery delivery = Delivery::kWhole);
    ~AtomicFile();

    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    /// The path as given; "standard output" for "-".
    const std::string& name() const { return mName; }

    /// The file being written, open for reading and writing; owned by this object.
    int descriptor() const { return mFile.get(); }

    /// A path under which this process can open what has been written, until commit(); not of a stream.
    std::string pathBeforeCommit() const;

    /// Appends at the present position. @throws FileError with the reason, for instance a full disk
    void write(std::string_view bytes);

    /// Gives the file its name, or copies it to its target: commitTogether() of this file alone.
    void commit();

private:
    friend void commitTogether(std::span<AtomicFile* const> files);

    void complete();
    void keepAttributes();
    void refuseOtherThanFile() const;
    void giveName(bool keepReplaced);
    int nameNew();
    int nameOver(bool keepReplaced);
    int replaceAndKeep();
    void takeNameBack();
    void removeHidden();
    void openBeside(const std::filesystem::path& target, unsigned mode);
    void openForStream(Delivery delivery);
    FileDescriptor openStream();
    void copyToStream();

    std::string mName;
    Overwrite mOverwrite;
    GoOn mGoOn;
    std::filesystem::path mTarget;    // empty for standard output
    std::filesystem::path mTemporary; // of the content; empty where it has no name or its own
    std::filesystem::path mReplaced;  // what had the name before; empty for nothing
    struct stat mReplacedStatus {};   // of a file that exists at the start; mode 0 for none
    bool mIsUnnamed = false;          // the content has no name yet
    bool mIsStream = false;
    bool mIsDelivered = false; // a stream that has received everything
    FileDescriptor mFile;
};

/// Gives files their names so that they appear together. All of them are complete and on the disk before the
/// first gets its name, and what goes to streams has been copied. Where a name cannot be given, those given
/// before are taken back and replaced files restored. Nothing can be written afterwards.
/// @param files in different places
/// @throws FileError where that fails, or where a file has appeared under a name and may not be replaced
void commitTogether(std::span<AtomicFile* const> files);

} // namespace varno

#endif
