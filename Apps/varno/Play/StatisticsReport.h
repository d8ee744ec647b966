#ifndef VARNO_APPS_VARNO_PLAY_STATISTICSREPORT_H
#define VARNO_APPS_VARNO_PLAY_STATISTICSREPORT_H

#include "CommandLine/Json.h"
#include "Session/BlockStatistics.h"

#include <string>

namespace varno {

/// What `varno play --statistics` reports, once the sound system is closed.
struct LiveStatistics {
    const BlockStatistics& blocks;
    int frames;    ///< Of a block, in the end.
    double rateHz; ///< Likewise.
    int overruns;  ///< As the sound system has counted them.
};

/// Several lines for people.
std::string statisticsText(const LiveStatistics& statistics);

/// The same for scripts, with every row of the histograms and every long block that was kept; times are in
/// microseconds, those at which blocks began in nanoseconds of the monotonic clock.
Json statisticsJson(const LiveStatistics& statistics);

} // namespace varno

#endif
