#ifndef VARNO_APPS_VARNO_COMMANDS_FILERENDER_H
#define VARNO_APPS_VARNO_COMMANDS_FILERENDER_H

#include "RenderReport.h"
#include "RenderSession.h"

namespace varno {

/// Renders one file into another, which appears whole or not at all; checks everything and writes nothing
/// where the session is a dry run. Any thread, several at a time.
/// @throws CommandError that names the file, option or parameter; HostError
RenderReport renderFile(RenderSession& session, const RenderTask& task);

} // namespace varno

#endif
