#ifndef VARNO_APPS_VARNO_PLOT_FILELEVELS_H
#define VARNO_APPS_VARNO_PLOT_FILELEVELS_H

#include "AudioFile/Reader.h"
#include "Host/Module.h"
#include "Plot/Plots.h"
#include "Settings/Settings.h"

#include <memory>

namespace varno {

/// Levels of input and output and the gain reduction over an audio file. [main]
/// @param reader at the start of a file with as many channels as the effect has a variant for
/// @throws FileError, HostError, CommandError
Plot plotFileLevels(const std::shared_ptr<Module>& module, const Settings& settings, std::int32_t quality,
                    AudioReader& reader, const PlotProgress& progress);

} // namespace varno

#endif
