#include "Settings/FileRoles.h"

#include "CommandLine/CommandError.h"

#include <sys/stat.h>

#include <filesystem>
#include <unistd.h>

namespace varno {

void FileRoles::addInput(const std::string& path) {
    if (const auto place = placeOf(path, STDIN_FILENO)) {
        mInputs.emplace(*place, path);
    }
}

void FileRoles::addOutput(const std::string& path) {
    const auto place = placeOf(path, STDOUT_FILENO);
    if (!place) {
        return;
    }
    if (const auto input = mInputs.find(*place); input != mInputs.end()) {
        throw UsageError(path + ": is the input file " + input->second + "; expected another file");
    }
    if (const auto [other, isNew] = mOutputs.emplace(*place, path); !isNew) {
        throw UsageError("outputs " + inQuotes(other->second) + " and " + inQuotes(path) +
                         " are one file; expected one each");
    }
}

std::optional<FileRoles::Place> FileRoles::placeOf(const std::string& path, int standardStream) {
    struct stat status {};
    const bool isStream = path == "-";
    if ((isStream ? ::fstat(standardStream, &status) : ::stat(path.c_str(), &status)) == 0 &&
        S_ISREG(status.st_mode)) {
        return Place(status.st_dev, status.st_ino, "");
    }
    if (isStream) { // two outputs would be mixed in a pipe
        return standardStream == STDOUT_FILENO ? std::optional(Place(0, 0, path)) : std::nullopt;
    }
    const std::filesystem::path file(path);
    if (status.st_mode != 0 || !file.has_filename()) {
        return std::nullopt;
    }
    const auto folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    if (::stat(folder.c_str(), &status) == 0) {
        return Place(status.st_dev, status.st_ino, file.filename());
    }
    return Place(0, 0, file.lexically_normal());
}

} // namespace varno
