#ifndef VARNO_APPS_VARNO_RENDER_FILERENDER_H
#define VARNO_APPS_VARNO_RENDER_FILERENDER_H

#include "Files/AtomicFile.h"
#include "Render/RenderReport.h"
#include "Render/RenderSession.h"

#include <span>

namespace varno {

/// Outputs that are complete but for their names.
using OutputFiles = std::span<AtomicFile* const>;

/// Renders one file into another, which appears together with its meters and the other files or not at all;
/// checks everything and writes nothing where the session is a dry run. Several threads at a time. [any]
/// @throws CommandError that names the file, option or parameter; HostError
RenderReport renderFile(RenderSession& session, const RenderTask& task, OutputFiles others);

} // namespace varno

#endif
