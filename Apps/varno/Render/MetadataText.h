#ifndef VARNO_APPS_VARNO_RENDER_METADATATEXT_H
#define VARNO_APPS_VARNO_RENDER_METADATATEXT_H

#include "AudioFile/Format.h"
#include "AudioFile/LeftOut.h"
#include "Render/RenderOptions.h"

#include <string>
#include <vector>

namespace varno {

/// Warnings that name the metadata of an input that its output does not have, one for each reason.
std::vector<std::string> metadataWarnings(const LeftOutList& leftOut, const RenderTask& task,
                                          Container container);

} // namespace varno

#endif
