#include "Render/RenderRecord.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/Json.h"
#include "Files/Transfer.h"
#include "Settings/Quality.h"
#include "Surround/Settings/NumberText.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <system_error>
#include <unistd.h>
#include <vector>
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace varno {
namespace {

constexpr std::size_t kReadBytes = 256 * 1024;

// 128 bits as xxhsum -H128 prints them: no protection from forgery, but fast beside the rendering.
class Digest {
public:
    Digest()
        : mState(XXH3_createState()) {
        if (!mState) {
            throw std::bad_alloc();
        }
        XXH3_128bits_reset(mState.get());
    }

    void add(std::string_view bytes) { XXH3_128bits_update(mState.get(), bytes.data(), bytes.size()); }

    std::string text() const {
        XXH128_canonical_t canonical{};
        XXH128_canonicalFromHash(&canonical, XXH3_128bits_digest(mState.get()));
        std::string text;
        for (const unsigned char byte : canonical.digest) {
            constexpr const char* kDigits = "0123456789abcdef";
            text += kDigits[byte / 16];
            text += kDigits[byte % 16];
        }
        return text;
    }

private:
    struct Free {
        void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
    };
    std::unique_ptr<XXH3_state_t, Free> mState;
};

std::string digestOfFile(const std::string& path) {
    const FileDescriptor file = openFile(path, O_RDONLY, throwIfInterrupted);
    if (!file.isOpen()) {
        throwReadError(path, errno);
    }
    Digest digest;
    std::vector<char> bytes(kReadBytes);
    for (std::size_t count = bytes.size(); count == bytes.size();) {
        throwIfInterrupted();
        count = readUpTo(file.get(), bytes.data(), bytes.size(), path, throwIfInterrupted);
        digest.add({bytes.data(), count});
    }
    return digest.text();
}

// The content of all files of a bundle.
std::string digestOfBundle(const std::filesystem::path& bundle) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (std::filesystem::recursive_directory_iterator file(bundle, error), end; !error && file != end;
         file.increment(error)) {
        if (file->is_regular_file()) {
            files.push_back(file->path());
        }
    }
    if (error) {
        throw FileError(bundle.string() + ": cannot be read: " + error.message());
    }
    std::ranges::sort(files);
    Digest digest;
    for (const auto& file : files) {
        digest.add(file.lexically_relative(bundle).string() + ' ' + digestOfFile(file.string()) + '\n');
    }
    return digest.text();
}

const std::string* textIn(const Json::Object& object, const std::string& key) {
    const auto found = std::ranges::find(object, key, &std::pair<std::string, Json>::first);
    return found == object.end() ? nullptr : std::get_if<std::string>(&found->second.value());
}

// Waits until no other process appends, and keeps it so while the file is open. Without locks in the file
// system nothing holds.
void lockFile(const FileDescriptor& file) {
    while (::flock(file.get(), LOCK_EX) != 0 && errno == EINTR) {
        throwIfInterrupted();
    }
}

} // namespace

std::string settingsDigest(const RenderOptions& options, const Settings& settings, const Instance& instance,
                           const std::string& bundle) {
    std::string text;
    const auto add = [&text](const std::string& name, const std::string& value) {
        text.append(name).append("=").append(value).append("\n");
    };
    for (const ParameterInfo& parameter : instance.parameters()) {
        add(parameter.id, textFromNumber(instance.normalized(parameter.id)));
    }
    // A time means another value at another sample rate.
    for (const ParameterText& value : settings.sets()) {
        add("set " + value.id, value.value);
    }
    add("quality", qualityName(options.quality));
    add("compensate", options.compensate ? "yes" : "no");
    add("mid-side", options.midSide ? "yes" : "no");
    add("channels", channelGroupsText(options.channels));
    add("tail", textFromNumber(options.tailS));
    add("format", options.format ? sampleFormatName(*options.format) : "");
    add("dither", textFromNumber(static_cast<int>(options.dither)));
    add("truncated", options.acceptTruncated ? "yes" : "no");
    add("automation", options.automation ? digestOfFile(*options.automation) : "");
    add("module", bundle.empty() ? "" : digestOfBundle(bundle));
    Digest digest;
    digest.add(text);
    return digest.text();
}

RenderRecord::RenderRecord(std::string path, std::string settings)
    : mPath(std::move(path)),
      mSettings(std::move(settings)) {
    struct stat status {};
    const bool isThere = ::stat(mPath.c_str(), &status) == 0;
    const std::filesystem::path folder = std::filesystem::path(mPath).parent_path();
    // Before anything is rendered.
    if (::access(isThere ? mPath.c_str() : folder.empty() ? "." : folder.c_str(), W_OK) != 0) {
        throwWriteError(mPath, errno);
    }
    if (!isThere) {
        return;
    }
    if (!S_ISREG(status.st_mode)) {
        throw UsageError(mPath + ": is no file that can keep a record; expected the name of a file");
    }
    std::ifstream file(mPath);
    if (!file) {
        throwReadError(mPath, errno);
    }
    for (std::string line; std::getline(file, line);) {
        const auto report = jsonObject(line);
        const auto output = report ? textIn(*report, "output") : nullptr;
        if (output == nullptr) {
            continue;
        }
        const auto origin = std::ranges::find(*report, "made_of", &std::pair<std::string, Json>::first);
        if (origin == report->end()) {
            continue;
        }
        if (const auto* parts = std::get_if<Json::Object>(&origin->second.value())) {
            const auto part = [&](const char* name) {
                const std::string* const text = textIn(*parts, name);
                return text == nullptr ? std::string() : *text;
            };
            mLast[*output] = {part("version"), part("settings"), part("input")};
        }
    }
}

RenderOrigin RenderRecord::originOf(const RenderTask& task) const {
    std::error_code ignored;
    const bool isFile = task.input != "-" && std::filesystem::is_regular_file(task.input, ignored);
    return {VARNO_VERSION, mSettings, isFile ? digestOfFile(task.input) : std::string()};
}

bool RenderRecord::isUpToDate(const RenderTask& task) const {
    const auto last = mLast.find(task.output);
    if (last == mLast.end() || last->second.input.empty()) {
        return false;
    }
    return last->second == originOf(task);
}

void RenderRecord::add(const std::string& line) const {
    constexpr unsigned kMode = 0666;
    const FileDescriptor file = openFile(mPath, O_RDWR | O_APPEND | O_CREAT, throwIfInterrupted, kMode);
    if (!file.isOpen()) {
        throwWriteError(mPath, errno);
    }
    // Else the size could be one that a line has halfway.
    lockFile(file);
    struct stat status {};
    char last = '\n';
    if (::fstat(file.get(), &status) != 0 ||
        (status.st_size > 0 && !readAt(file.get(), status.st_size - 1, &last, 1))) {
        throwReadError(mPath, errno);
    }
    // What was cut off before stays a line of its own.
    writeAll(file.get(), (last == '\n' ? "" : "\n") + line, mPath, throwIfInterrupted);
}

} // namespace varno
