#ifndef VARNO_APPS_VARNO_RENDER_BATCHRENDER_H
#define VARNO_APPS_VARNO_RENDER_BATCHRENDER_H

#include "Render/FileRender.h"

#include <functional>
#include <optional>
#include <string>

namespace varno {

/// Whether an output is there already. It appeared whole; pipes and devices never are.
bool isMade(const std::string& path);

/// How the render of one file ended.
struct RenderResult {
    std::optional<RenderReport> report; ///< Nothing where it failed.
    std::string error;
    int exitStatus = 0;
};

/// Takes a result; one call at a time, from any thread, while no progress is drawn. Does not throw.
using ResultListener = std::function<void(const RenderTask&, const RenderResult&)>;

/// Renders every task of the session's options, with as many threads as the options give, or fewer where the
/// system refuses threads or memory. Each result is reported as its file ends. A failure does not stop the
/// others; an interruption does, and is thrown.
/// @param others appear with the output of a single task; of several tasks, they are left to the caller
/// @throws Interrupted; WorkError where there was no memory to report a result
void renderAll(RenderSession& session, OutputFiles others, const ResultListener& onResult);

} // namespace varno

#endif
