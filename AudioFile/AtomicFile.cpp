#include "AudioFile/AtomicFile.h"

#include "AudioFile/Error.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kNewFileMode = 0666;     // the system removes the bits of the user's mask
constexpr unsigned kPermissionBits = 07777; // of the mode that the system reports

std::string uniqueHiddenName() {
    std::random_device random;
    char name[32];
    std::snprintf(name, sizeof name, ".varno-%08x%08x.part", random(), random());
    return name;
}

[[noreturn]] void throwExists(const std::string& name) {
    throw AudioFileError(name + ": exists already; expected a new name, or --force to replace it");
}

[[noreturn]] void throwNoFolder(const std::string& name, int error) {
    throw AudioFileError(name + ": cannot be written: " + std::generic_category().message(error) +
                         "; expected a folder that exists and can be written to");
}

// Returns 0 or the system's error number, as the other renames here do.
int renamed(const fs::path& from, const fs::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

// Gives `temporary` the name `target` unless a file has that name, in one step where the file system offers
// it.
int renameToNew(const fs::path& temporary, const fs::path& target) {
    if (::renameat2(AT_FDCWD, temporary.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (fs::exists(fs::symlink_status(target))) {
        return EEXIST;
    }
    return renamed(temporary, target);
}

} // namespace

bool isPipeOutput(const std::string& path) {
    struct stat status {};
    const int result = path == "-" ? ::fstat(STDOUT_FILENO, &status) : ::stat(path.c_str(), &status);
    return result == 0 && (S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode) || S_ISCHR(status.st_mode));
}

AtomicFile::AtomicFile(const std::string& path, Overwrite overwrite, GoOn goOn, Delivery delivery)
    : mName(path == "-" ? "standard output" : path),
      mOverwrite(overwrite),
      mGoOn(std::move(goOn)) {
    struct stat status {};
    const bool exists = path != "-" && ::stat(path.c_str(), &status) == 0;
    if (path != "-" && !exists && fs::is_symlink(fs::path(path))) {
        throw AudioFileError(mName + ": is a link to a file that does not exist; expected a new name");
    }
    if (exists && (S_ISDIR(status.st_mode) || S_ISBLK(status.st_mode))) {
        throw AudioFileError(mName + (S_ISDIR(status.st_mode) ? ": is a folder" : ": is a disk device") +
                             "; expected the name of a file");
    }
    if (path == "-" || (exists && !S_ISREG(status.st_mode))) {
        mIsStream = true;
        mTarget = path == "-" ? "" : path;
        mIsDelivered = delivery == Delivery::kAsWritten && isPipeOutput(path);
        mFile = mIsDelivered ? openStream() : openUnnamedTemporary();
        return;
    }
    if (exists && overwrite == Overwrite::kRefuse) {
        throwExists(mName);
    }
    openBeside(exists ? fs::canonical(path) : fs::path(path));
    if (exists) { // the new file has the permissions of the old one
        ::fchmod(mFile.get(), status.st_mode & kPermissionBits);
    }
}

AtomicFile::~AtomicFile() {
    removeHidden();
}

void AtomicFile::openBeside(const fs::path& target) {
    if (!target.has_filename()) {
        throw AudioFileError(mName + ": is no file name; expected one");
    }
    mTarget = target;
    fs::path temporary;
    do {
        temporary = target.parent_path() / uniqueHiddenName();
        mFile = openFile(temporary, O_RDWR | O_CREAT | O_EXCL, mGoOn, kNewFileMode);
    } while (!mFile.isOpen() && errno == EEXIST);
    if (!mFile.isOpen()) {
        throwNoFolder(mName, errno);
    }
    mTemporary = temporary;
}

void AtomicFile::write(std::string_view bytes) {
    writeAll(mFile.get(), bytes, mName, mGoOn);
}

void AtomicFile::commit() {
    AtomicFile* const file = this;
    commitTogether({&file, 1});
}

// To the disk, so that a name never stands for content that a failure of power can lose.
void AtomicFile::complete() {
    if (mIsStream) {
        return;
    }
    while (::fsync(mFile.get()) != 0) {
        if (errno == EINVAL || errno == EOPNOTSUPP) { // this file system cannot
            break;
        }
        if (errno != EINTR) {
            throwWriteError(mName, errno);
        }
        if (mGoOn) {
            mGoOn();
        }
    }
    if (const int error = mFile.close()) {
        throwWriteError(mName, error);
    }
}

// With `keepReplaced` what had the name before stays under the temporary one.
void AtomicFile::giveName(bool keepReplaced) {
    if (mIsStream) {
        return;
    }
    int error = 0;
    if (mOverwrite == Overwrite::kRefuse) {
        error = renameToNew(mTemporary, mTarget);
    } else if (keepReplaced && fs::exists(fs::symlink_status(mTarget))) {
        error = replaceAndKeep();
    } else {
        error = renamed(mTemporary, mTarget);
    }
    if (error == EEXIST) {
        throwExists(mName);
    }
    if (error != 0) {
        throwWriteError(mName, error);
    }
    mTemporary.clear();
}

// In one step where the file system offers it.
int AtomicFile::replaceAndKeep() {
    if (::renameat2(AT_FDCWD, mTemporary.c_str(), AT_FDCWD, mTarget.c_str(), RENAME_EXCHANGE) == 0) {
        mReplaced = mTemporary;
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    const fs::path aside = mTarget.parent_path() / uniqueHiddenName();
    if (const int error = renamed(mTarget, aside)) {
        return error;
    }
    if (const int error = renamed(mTemporary, mTarget)) {
        renamed(aside, mTarget);
        return error;
    }
    mReplaced = aside;
    return 0;
}

void AtomicFile::takeNameBack() {
    if (mIsStream) {
        return;
    }
    if (mReplaced.empty()) {
        ::unlink(mTarget.c_str());
    } else {
        renamed(mReplaced, mTarget);
        mReplaced.clear(); // where that fails it stays, since it is the only copy
    }
}

void AtomicFile::removeHidden() {
    for (fs::path* file : {&mTemporary, &mReplaced}) {
        if (!file->empty()) {
            ::unlink(file->c_str());
            file->clear();
        }
    }
}

FileDescriptor AtomicFile::openStream() {
    FileDescriptor stream = mTarget.empty() ? FileDescriptor(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0))
                                            : openFile(mTarget, O_WRONLY, mGoOn);
    if (!stream.isOpen()) {
        throwWriteError(mName, errno);
    }
    return stream;
}

void AtomicFile::copyToStream() {
    FileDescriptor stream;
    if (mIsDelivered) {
        stream = std::move(mFile);
    } else {
        stream = openStream();
        if (::lseek(mFile.get(), 0, SEEK_SET) < 0) {
            throwReadError("a temporary file", errno);
        }
        copyAll(mFile.get(), "a temporary file", stream.get(), mName, mGoOn);
    }
    if (const int error = stream.close()) {
        throwWriteError(mName, error);
    }
}

void commitTogether(std::span<AtomicFile* const> files) {
    for (AtomicFile* file : files) {
        file->complete();
    }
    // Before the names: what a stream has received cannot be taken back, but its failure is reported in time.
    for (AtomicFile* file : files) {
        if (file->mIsStream) {
            file->copyToStream();
        }
    }
    std::size_t named = 0;
    try {
        for (; named < files.size(); ++named) {
            const bool isLast = named + 1 == files.size();
            files[named]->giveName(!isLast);
        }
    } catch (...) {
        while (named > 0) {
            files[--named]->takeNameBack();
        }
        throw;
    }
    for (AtomicFile* file : files) {
        file->removeHidden();
    }
}

} // namespace varno
