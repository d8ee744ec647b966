#include "Surround/Settings/PresetScan.h"

#include "Surround/Settings/Characters.h"
#include "Surround/Settings/NameOrder.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t kNsPerSecond = 1'000'000'000;
// Within this time a file may change once more without another time stamp.
constexpr std::int64_t kUnsettledNs = kNsPerSecond;

std::int64_t nanoseconds(const struct timespec& time) {
    return std::int64_t{time.tv_sec} * kNsPerSecond + time.tv_nsec;
}

std::int64_t nowNs() {
    struct timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return nanoseconds(now);
}

bool isBefore(const PresetEntry& left, const PresetEntry& right) {
    if (left.group != right.group) {
        return left.group.empty() || (!right.group.empty() && standsBefore(left.group, right.group));
    }
    return left.name != right.name ? standsBefore(left.name, right.name) : left.path < right.path;
}

} // namespace

// One look into the folders.
class PresetScan::Walk {
public:
    explicit Walk(PresetScan& scan)
        : mScan(scan),
          mNowNs(nowNs()) {}

    // Returns whether anything was read anew or is no longer there.
    bool run() {
        struct stat status {};
        if (::stat(mScan.mFolder.c_str(), &status) == 0) {
            mFolders.emplace(status.st_dev, status.st_ino);
        }
        mLevel = {{mScan.mFolder, {}}};
        for (int level = 0; level < kMostLevels && !mLevel.empty(); ++level) {
            for (const Folder& folder : std::exchange(mLevel, {})) {
                list(folder);
            }
        }
        const bool isSame = mIsAllKnown && mScan.mKnown.empty();
        mScan.mKnown = std::move(mFound);
        return !isSame;
    }

private:
    struct Folder {
        fs::path path;
        std::string group;
    };

    void list(const Folder& folder) {
        std::error_code error;
        fs::directory_iterator file(folder.path, error);
        const bool isAbsent = folder.group.empty() && error == std::errc::no_such_file_or_directory;
        for (; !error && file != fs::directory_iterator() && mLooked < kMostEntries; file.increment(error)) {
            look(file->path(), folder.group);
        }
        if (error && !isAbsent) {
            const std::size_t slash = folder.group.rfind('/');
            const std::string above = slash == std::string::npos ? "" : folder.group.substr(0, slash);
            add(folder.path, {}, entryOf(folder.path, above, "cannot be read: " + error.message()));
        }
    }

    void look(const fs::path& path, const std::string& group) {
        ++mLooked;
        const std::string fileName = path.filename().native();
        if (fileName.starts_with('.')) {
            return;
        }
        struct stat status {};
        const bool isPreset = path.extension() == kPresetSuffix;
        if (::stat(path.c_str(), &status) != 0) {
            if (isPreset) {
                const std::string reason = std::generic_category().message(errno);
                add(path, {}, entryOf(path, group, "cannot be read: " + reason));
            }
        } else if (S_ISDIR(status.st_mode)) {
            if (mFolders.emplace(status.st_dev, status.st_ino).second) {
                const std::string name = safeText(fileName);
                mLevel.push_back({path, group.empty() ? name : group + '/' + name});
            }
        } else if (isPreset && S_ISREG(status.st_mode)) {
            addFile(path, group, status);
        }
    }

    void addFile(const fs::path& path, const std::string& group, const struct stat& status) {
        const Version version{status.st_dev, status.st_ino, status.st_size, nanoseconds(status.st_mtim),
                              nanoseconds(status.st_ctim)};
        const auto known = mScan.mKnown.find(path.native());
        if (known != mScan.mKnown.end() && known->second.version == version) {
            mFound.insert(mScan.mKnown.extract(known));
            return;
        }
        PresetEntry entry = readPreset(path, mScan.mIsFactory);
        entry.group = group;
        const bool isSettled = mNowNs - version.changedNs > kUnsettledNs;
        add(path, isSettled ? version : Version(), std::move(entry));
    }

    PresetEntry entryOf(const fs::path& path, const std::string& group, const std::string& damage) const {
        PresetEntry entry = namedEntry(path, mScan.mIsFactory);
        entry.group = group;
        entry.damage = damage;
        return entry;
    }

    void add(const fs::path& path, const Version& version, PresetEntry entry) {
        mIsAllKnown = false;
        mFound.insert_or_assign(path.native(), Known{version, std::move(entry)});
    }

    PresetScan& mScan;
    std::int64_t mNowNs;
    std::size_t mLooked = 0;
    bool mIsAllKnown = true;
    std::vector<Folder> mLevel;
    std::set<std::pair<dev_t, ino_t>> mFolders; // that were met
    KnownFiles mFound;
};

PresetScan::PresetScan(fs::path folder, bool isFactory)
    : mFolder(std::move(folder)),
      mIsFactory(isFactory) {
}

bool PresetScan::rescan() {
    if (mFolder.empty() || !Walk(*this).run()) {
        return false;
    }
    std::vector<PresetEntry> entries;
    entries.reserve(mKnown.size());
    for (const auto& [path, known] : mKnown) {
        entries.push_back(known.entry);
    }
    std::ranges::sort(entries, isBefore);
    if (entries == mEntries) {
        return false;
    }
    mEntries = std::move(entries);
    return true;
}

} // namespace varno
