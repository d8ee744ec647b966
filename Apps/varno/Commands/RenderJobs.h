#ifndef VARNO_APPS_VARNO_COMMANDS_RENDERJOBS_H
#define VARNO_APPS_VARNO_COMMANDS_RENDERJOBS_H

#include "RenderReport.h"
#include "RenderSession.h"

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// How one of several renders ended.
struct RenderResult {
    std::optional<RenderReport> report; // nothing where it failed
    std::string error;
    int exitStatus = 0;
};

/// Renders every task of the session's options, as many at a time as they say. A failure does not stop the
/// others; an interruption does.
/// @return one result per task, in their order
std::vector<RenderResult> renderAll(RenderSession& session);

} // namespace varno

#endif
