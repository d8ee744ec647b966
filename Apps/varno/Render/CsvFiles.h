#ifndef VARNO_APPS_VARNO_RENDER_CSVFILES_H
#define VARNO_APPS_VARNO_RENDER_CSVFILES_H

#include "Files/AtomicFile.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varno {

/// The value of a parameter from one sample on.
struct AutomationPoint {
    std::int64_t frame = 0; ///< From the start of the file, 0 or more; may lie beyond its end.
    std::string parameter;  ///< Identifier as written; not checked.
    std::string value;      ///< Text as written.
    int line = 0;           ///< Of the file, from 1, for messages.
};

/// Reads a file of comma-separated lines `time_s,parameter,value`. Blank lines, lines that start with `#` and
/// a first line of these names are skipped; blanks around a field are ignored; times are decimal numbers with
/// a point in every locale. Fields cannot hold commas.
/// @param rateHz frames per second; a time means the nearest frame (halves are rounded up)
/// @return the points by time, those of equal frame in the order of their lines
/// @throws FileError where it cannot be read; WorkError where it has more than 64 MiB, or with the file,
/// the line and what is wrong with it
std::vector<AutomationPoint> readAutomationFile(const std::string& path, double rateHz);

/// Writes meter readings as comma-separated lines: a heading `time_s` and the meters' names, then one line
/// per block. Numbers have a decimal point in every locale. The file appears whole or not at all (see
/// AtomicFile).
class MeterFile {
public:
    /// @param meters names for the heading, without commas
    /// @throws FileError where the file cannot be created
    MeterFile(const std::string& path, Overwrite overwrite, double rateHz,
              const std::vector<std::string>& meters);

    /// @param frame at which the block starts @param values one per meter @throws FileError
    void addRow(std::int64_t frame, std::span<const float> values);

    /// Completes the content; nothing can be added afterwards. @return the file, owned by this object, for
    /// commitTogether() @throws FileError
    AtomicFile& finish();

private:
    void flush();

    AtomicFile mFile;
    double mRateHz;
    std::string mPending; ///< Lines not yet handed to the system.
};

} // namespace varno

#endif
