#ifndef VARNO_APPS_VARNO_METERFILE_H
#define VARNO_APPS_VARNO_METERFILE_H

#include "AudioFile/AtomicFile.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace varno {

/// Writes meter readings as comma-separated lines: a heading `time_s` and the meters' names, then one line
/// per block. Numbers have a decimal point in every locale. The file appears whole or not at all (see
/// AtomicFile).
class MeterFile {
public:
    /// @param meters names for the heading, without commas
    /// @throws AudioFileError where the file cannot be made
    MeterFile(const std::string& path, Overwrite overwrite, double rateHz,
              const std::vector<std::string>& meters);

    /// @param frame at which the block starts @param values one per meter @throws AudioFileError
    void addRow(std::int64_t frame, std::span<const float> values);

    /// Hands all rows to the system, so that a full disk shows before commit(). @throws AudioFileError
    void flush();

    /// Gives the file its name. @throws AudioFileError
    void commit();

private:
    AtomicFile mFile;
    double mRateHz;
    std::string mPending; // lines not yet handed to the system
};

} // namespace varno

#endif
