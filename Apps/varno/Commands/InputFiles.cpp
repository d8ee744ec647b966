#include "InputFiles.h"

#include "AudioFile/AtomicFile.h"
#include "AudioFile/Transfer.h"

#include <sys/stat.h>

namespace varno {

InputFiles::InputFiles(const std::vector<RenderTask>& tasks) {
    for (const auto& task : tasks) {
        struct stat status {};
        if (::stat(task.input.c_str(), &status) == 0) {
            mNames.emplace(Identity{status.st_dev, status.st_ino}, task.input);
        }
    }
}

void InputFiles::refuseAsOutput(const std::string& output) const {
    struct stat status {};
    if (::stat(output.c_str(), &status) != 0) {
        return;
    }
    if (const auto found = mNames.find({status.st_dev, status.st_ino}); found != mNames.end()) {
        refuseSameFile({found->first.first, found->first.second}, found->second, output);
    }
}

} // namespace varno
