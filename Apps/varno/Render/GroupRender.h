#ifndef VARNO_APPS_VARNO_RENDER_GROUPRENDER_H
#define VARNO_APPS_VARNO_RENDER_GROUPRENDER_H

#include "Render/FileRender.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace varno {

/// Most files that are rendered side by side: more are no faster.
inline constexpr std::size_t kMostFilesTogether = 4;

/// How many of a command's files are rendered side by side, by turns: as many as possible, up to
/// kMostFilesTogether, while every thread has its share, and fewer near the end, so that all threads end at
/// about the same time. @param threads at least 1 @return numbers of files that add up to `files`
std::vector<std::size_t> filesTogether(std::size_t files, std::size_t threads);

/// What renderTogether() does with its files. Each call may throw and is then given to `failed`; the file
/// takes no further part, and the others go on.
struct GroupListener {
    /// A file has been rendered to its last frame: to finish and report it.
    std::function<void(FileRender&)> ended;
    /// To be called while the exception is handled. Does not throw.
    std::function<void(FileRender&)> failed;
};

/// Renders several files side by side, each to its end. Blocks of files of the same rate and number of
/// channels are processed in one call, and the effect takes less time for them where they are equally long.
/// Each output has the bytes that it has alone. One thread. @throws std::bad_alloc where the memory does not
/// suffice for the group
void renderTogether(const std::vector<FileRender*>& files, const GroupListener& listener);

} // namespace varno

#endif
