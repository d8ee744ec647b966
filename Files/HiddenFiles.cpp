#include "Files/HiddenFiles.h"

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#include <vector>

namespace varno {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kNameStart = ".varno-";
constexpr std::string_view kNameEnd = ".part";
constexpr std::size_t kNameDigits = 16;

bool isHiddenName(std::string_view name) {
    const auto isDigit = [](char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f'); };
    return name.size() == kNameStart.size() + kNameDigits + kNameEnd.size() && name.starts_with(kNameStart) &&
           name.ends_with(kNameEnd) &&
           std::ranges::all_of(name.substr(kNameStart.size(), kNameDigits), isDigit);
}

FileDescriptor openFolder(const fs::path& folder) {
    return FileDescriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

bool isSameFile(const struct stat& left, const struct stat& right) {
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

std::string procPath(const FileDescriptor& file) {
    return "/proc/self/fd/" + std::to_string(file.get());
}

// When folders are read for stale files. A folder of n entries is read again after n / kEntriesPerFile files:
// a batch that fills it would otherwise take a time that grows with the square of their number. [any]
class FolderReadings {
public:
    // Counts a file that begins in the folder.
    bool isDue(const struct stat& folder) {
        const std::lock_guard lock(mMutex);
        const auto found = mFilesLeft.find({folder.st_dev, folder.st_ino});
        if (found == mFilesLeft.end() || found->second == 0) {
            return true;
        }
        --found->second;
        return false;
    }

    void setEntries(const struct stat& folder, std::size_t entries) {
        const std::lock_guard lock(mMutex);
        if (const std::size_t files = entries / kEntriesPerFile) {
            mFilesLeft[{folder.st_dev, folder.st_ino}] = files;
        } else {
            mFilesLeft.erase({folder.st_dev, folder.st_ino});
        }
    }

private:
    static constexpr std::size_t kEntriesPerFile =
        16; // takes a few microseconds, a small part of a file's work

    std::mutex mMutex;
    std::map<std::pair<dev_t, ino_t>, std::size_t> mFilesLeft; // of folders with that many entries
};

FolderReadings& folderReadings() {
    static FolderReadings readings;
    return readings;
}

// Opened, locked and still of this name: nobody else has it, and nobody can take it meanwhile.
void removeWhereStale(const fs::path& path) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat opened {};
    struct stat named {};
    if (!file.isOpen() || ::fstat(file.get(), &opened) != 0 || !S_ISREG(opened.st_mode) ||
        opened.st_uid != ::geteuid() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    if (::lstat(path.c_str(), &named) == 0 && isSameFile(opened, named)) {
        ::unlink(path.c_str());
    }
}

} // namespace

FolderInUse::FolderInUse(const fs::path& folder, const GoOn& goOn)
    : mFolder(openFolder(folder)) {
    while (mFolder.isOpen() && ::flock(mFolder.get(), LOCK_SH) != 0 && errno == EINTR) {
        if (goOn) {
            goOn();
        }
    }
}

fs::path folderOf(const fs::path& file) {
    return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

fs::path hiddenNameBeside(const fs::path& target) {
    // The C++ library's own source of random numbers requires a newer C library than the plug-in may.
    std::uint64_t random = 0;
    if (::getrandom(&random, sizeof random, 0) < 0) {
        throw std::system_error(errno, std::generic_category(), "no random number");
    }
    char digits[kNameDigits + 1];
    std::snprintf(digits, sizeof digits, "%016" PRIx64, random);
    return folderOf(target) / std::string(kNameStart).append(digits).append(kNameEnd);
}

FileDescriptor openUnnamed(const fs::path& folder, unsigned mode) {
    FileDescriptor file(::openat(AT_FDCWD, folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, mode));
    struct stat opened {};
    struct stat found {};
    if (!file.isOpen() || ::fstat(file.get(), &opened) != 0 || ::stat(procPath(file).c_str(), &found) != 0 ||
        !isSameFile(opened, found)) {
        return {};
    }
    return file;
}

int linkUnnamed(const FileDescriptor& file, const fs::path& name) {
    return ::linkat(AT_FDCWD, procPath(file).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0
                                                                                                      : errno;
}

FileDescriptor openHidden(const fs::path& target, unsigned mode, const GoOn& goOn, fs::path& name) {
    const FolderInUse inUse(folderOf(target), goOn);
    FileDescriptor file;
    do {
        name = hiddenNameBeside(target);
        file = openFile(name, O_RDWR | O_CREAT | O_EXCL, goOn, mode);
    } while (!file.isOpen() && errno == EEXIST);
    if (file.isOpen()) {
        ::flock(file.get(), LOCK_EX | LOCK_NB);
    }
    return file;
}

int renameOver(const fs::path& from, const fs::path& to) {
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

int renameToNew(const fs::path& from, const fs::path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    return fs::exists(fs::symlink_status(to)) ? EEXIST : renameOver(from, to);
}

void removeStaleFiles(const fs::path& folder) {
    const FileDescriptor opened = openFolder(folder);
    struct stat status {};
    if (!opened.isOpen() || ::fstat(opened.get(), &status) != 0 || !folderReadings().isDue(status) ||
        ::flock(opened.get(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    std::error_code error;
    std::size_t entries = 0;
    std::vector<fs::path> found;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        ++entries;
        if (isHiddenName(entry->path().filename().native())) {
            found.push_back(entry->path());
        }
    }
    for (const fs::path& path : found) {
        removeWhereStale(path);
    }
    folderReadings().setEntries(status, entries);
}

} // namespace varno
