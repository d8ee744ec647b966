#ifndef VARNO_AUDIOFILE_PEAKCHUNK_H
#define VARNO_AUDIOFILE_PEAKCHUNK_H

#include <string>

namespace varno {

/// Sets the time of day in the file's peak chunk to 0, where it has such a chunk. libsndfile 1.2 adds one to
/// RF64 files of floats whatever it is told, and the time would make every run's bytes differ.
/// @param descriptor open for reading and writing @param name of the file for messages @throws WorkError
void clearPeakTime(int descriptor, const std::string& name);

} // namespace varno

#endif
