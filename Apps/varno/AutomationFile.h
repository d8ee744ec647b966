#ifndef VARNO_APPS_VARNO_AUTOMATIONFILE_H
#define VARNO_APPS_VARNO_AUTOMATIONFILE_H

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// One value that a parameter takes at one sample.
struct AutomationPoint {
    std::int64_t frame = 0; // from the start of the file, 0 or more; may lie beyond its end
    std::string parameter;  // identifier as written; whether it exists is the reader's business
    std::string value;      // text as written
    int line = 0;           // of the file, from 1, for messages
};

/// Reads a file of comma-separated lines `time_s,parameter,value`. Blank lines, lines that start with `#` and
/// a first line of those very names are skipped; blanks around a field do not count; times are decimal
/// numbers with a point in every locale. Fields cannot hold commas.
/// @param rateHz frames per second; a time counts as the nearest frame (halves go up)
/// @return the points by time, those of equal frame in the order of their lines
/// @throws AudioFileError where it cannot be read; WorkError with the file, the line and what is wrong with
/// it
std::vector<AutomationPoint> readAutomationFile(const std::string& path, double rateHz);

} // namespace varno

#endif
