#ifndef VARNO_APPS_VARNO_RENDER_FILERENDER_H
#define VARNO_APPS_VARNO_RENDER_FILERENDER_H

#include "AudioFile/AtomicFile.h"
#include "Render/RenderReport.h"
#include "Render/RenderSession.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varno {

/// Outputs that are complete but for their names.
using OutputFiles = std::span<AtomicFile* const>;

/// Renders one file into another, which appears together with its meters and the other files or not at all;
/// checks everything and writes nothing where the session is a dry run. Several threads at a time. [any]
/// @throws CommandError that names the file, option or parameter; HostError
RenderReport renderFile(RenderSession& session, const RenderTask& task, OutputFiles others);

/// How one of several renders ended.
struct RenderResult {
    std::optional<RenderReport> report; ///< Nothing where it failed.
    std::string error;
    int exitStatus = 0;
};

/// Renders every task of the session's options, with as many threads as the options give. A failure does not
/// stop the others; an interruption does.
/// @param others appear with the output of a single task; of several tasks, they are left to the caller
/// @return one result per task, in their order
std::vector<RenderResult> renderAll(RenderSession& session, OutputFiles others);

} // namespace varno

#endif
