#include "Files/AtomicFile.h"

#include "Files/FileError.h"
#include "Files/HiddenFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <list>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kNewFileMode = 0666;     // the system removes the bits of the user's mask
constexpr unsigned kReplacementMode = 0600; // until the file gets that of the one it replaces
constexpr unsigned kModeBits = 07777;       // of the mode that the system reports
constexpr unsigned kPermissionBits = 0777;  // without those that depend on owner and group

constexpr const char* kKeptExtension = ".old";

[[noreturn]] void throwExists(const std::string& name) {
    throw FileError(name + ": exists already; expected a new name, or --force to replace it");
}

[[noreturn]] void throwNoFolder(const std::string& name, int error) {
    throw FileError(name + ": cannot be written: " + std::generic_category().message(error) +
                    "; expected a folder that exists and can be written to");
}

// Gives the file the owner and group of another, or at least its group. Returns whether anything has changed.
bool giveOwner(int file, const struct stat& other) {
    constexpr auto kSameOwner = static_cast<uid_t>(-1);
    return ::fchown(file, other.st_uid, other.st_gid) == 0 || ::fchown(file, kSameOwner, other.st_gid) == 0;
}

bool isThere(const fs::path& path) {
    return fs::exists(fs::symlink_status(path));
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
    if (path == "-") {
        openForStream(delivery);
        return;
    }
    mTarget = path;
    if (overwrite == Overwrite::kReplaceFile) {
        refuseOtherThanFile();
    }
    struct stat status {};
    const bool exists = ::stat(path.c_str(), &status) == 0;
    if (!exists && fs::is_symlink(mTarget)) {
        throw FileError(mName + ": is a link to a file that does not exist; expected a new name");
    }
    if (exists && (S_ISDIR(status.st_mode) || S_ISBLK(status.st_mode))) {
        throw FileError(mName + (S_ISDIR(status.st_mode) ? ": is a folder" : ": is a disk device") +
                        "; expected the name of a file");
    }
    if (exists && !S_ISREG(status.st_mode)) {
        openForStream(delivery);
        return;
    }
    if (exists && overwrite == Overwrite::kRefuse) {
        throwExists(mName);
    }
    mReplacedStatus = status;
    const bool isLinkFollowed = exists && overwrite != Overwrite::kReplaceFile;
    openBeside(isLinkFollowed ? fs::canonical(path) : fs::path(path),
               exists ? kReplacementMode : kNewFileMode);
}

// Of standard output `mTarget` is empty.
void AtomicFile::openForStream(Delivery delivery) {
    mIsStream = true;
    mIsDelivered = delivery == Delivery::kAsWritten && isPipeOutput(mTarget.empty() ? "-" : mTarget.string());
    mFile = mIsDelivered ? openStream() : openUnnamedTemporary();
}

AtomicFile::~AtomicFile() {
    removeHidden();
}

void AtomicFile::refuseOtherThanFile() const {
    struct stat status {};
    if (::lstat(mTarget.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        throw FileError(mName + (S_ISLNK(status.st_mode) ? ": is a link" : ": is no file") +
                        "; expected a file to replace, or nothing of this name");
    }
}

void AtomicFile::openBeside(const fs::path& target, unsigned mode) {
    if (!target.has_filename()) {
        throw FileError(mName + ": is no file name; expected one");
    }
    mTarget = target;
    const fs::path folder = folderOf(target);
    removeStaleFiles(folder);
    mFile = openUnnamed(folder, mode);
    mIsUnnamed = mFile.isOpen();
    if (mIsUnnamed) {
        return;
    }
    fs::path temporary;
    mFile = openHidden(target, mode, mGoOn, temporary);
    if (!mFile.isOpen()) {
        throwNoFolder(mName, errno);
    }
    mTemporary = temporary;
}

std::string AtomicFile::pathBeforeCommit() const {
    return mIsUnnamed ? "/proc/self/fd/" + std::to_string(mFile.get()) : mTemporary.string();
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
    keepAttributes();
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
    if (mIsUnnamed) { // gets its name while it is open
        return;
    }
    if (const int error = mFile.close()) {
        throwWriteError(mName, error);
    }
}

// After the last byte, since writing and a change of owner remove the special bits. Where the file system has
// no owners or modes, there is nothing to keep.
void AtomicFile::keepAttributes() {
    struct stat replaced {};
    if (::stat(mTarget.c_str(), &replaced) != 0 || !S_ISREG(replaced.st_mode)) {
        replaced = mReplacedStatus;
    }
    struct stat own {};
    if (replaced.st_mode == 0 || ::fstat(mFile.get(), &own) != 0) {
        return;
    }
    const auto isKept = [&] { return own.st_uid == replaced.st_uid && own.st_gid == replaced.st_gid; };
    if (!isKept() && giveOwner(mFile.get(), replaced)) {
        ::fstat(mFile.get(), &own);
    }
    ::fchmod(mFile.get(), replaced.st_mode & (isKept() ? kModeBits : kPermissionBits));
}

// With `keepReplaced` what had the name before stays under a temporary one.
void AtomicFile::giveName(bool keepReplaced) {
    if (mIsStream) {
        return;
    }
    if (mOverwrite == Overwrite::kReplaceFile) {
        refuseOtherThanFile();
    }
    const bool mayReplace = mOverwrite != Overwrite::kRefuse;
    int error = mayReplace && isThere(mTarget) ? EEXIST : nameNew();
    if (error == EEXIST && mayReplace) {
        error = nameOver(keepReplaced);
    }
    if (error == EEXIST) {
        throwExists(mName);
    }
    if (error != 0) {
        throwWriteError(mName, error);
    }
    mTemporary.clear();
    mIsUnnamed = false;
}

int AtomicFile::nameNew() {
    return mIsUnnamed ? linkUnnamed(mFile, mTarget) : renameToNew(mTemporary, mTarget);
}

int AtomicFile::nameOver(bool keepReplaced) {
    if (mIsUnnamed) {
        const fs::path hidden = hiddenNameBeside(mTarget);
        if (const int error = linkUnnamed(mFile, hidden)) {
            return error;
        }
        mTemporary = hidden;
        mIsUnnamed = false;
    }
    return keepReplaced && isThere(mTarget) ? replaceAndKeep() : renameOver(mTemporary, mTarget);
}

// In one step where the file system offers it, else with a second link, so that the target always has a file.
// Where there are no links either, what is replaced waits under a name that removeStaleFiles() leaves alone.
int AtomicFile::replaceAndKeep() {
    if (::renameat2(AT_FDCWD, mTemporary.c_str(), AT_FDCWD, mTarget.c_str(), RENAME_EXCHANGE) == 0) {
        mReplaced = mTemporary;
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    fs::path aside = hiddenNameBeside(mTarget);
    if (::link(mTarget.c_str(), aside.c_str()) == 0) {
        mReplaced = aside;
        return renameOver(mTemporary, mTarget);
    }
    aside.replace_extension(kKeptExtension);
    if (const int error = renameOver(mTarget, aside)) {
        return error;
    }
    if (const int error = renameOver(mTemporary, mTarget)) {
        renameOver(aside, mTarget);
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
        renameOver(mReplaced, mTarget);
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
    std::list<FolderInUse> folders;
    for (AtomicFile* file : files) {
        if (!file->mIsStream) {
            folders.emplace_back(folderOf(file->mTarget), file->mGoOn);
        }
    }
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
        file->mFile.close(); // what it holds is on the disk
    }
}

} // namespace varno
