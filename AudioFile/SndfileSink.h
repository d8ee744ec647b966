#ifndef VARNO_AUDIOFILE_SNDFILESINK_H
#define VARNO_AUDIOFILE_SNDFILESINK_H

#include <sndfile.h>

namespace varno {

/// Where libsndfile writes: an open file of the system. libsndfile forgets some failed writes, above all
/// those of its last moments; this remembers the first. One thread at a time.
class SndfileSink {
public:
    /// @param descriptor open for reading and writing; stays the caller's
    explicit SndfileSink(int descriptor)
        : mDescriptor(descriptor) {}

    /// Opens the file for writing through this sink, which must outlive it. @return null where libsndfile
    /// refuses
    SNDFILE* open(SF_INFO& info);

    /// The system's number of the first error, 0 if there was none.
    int error() const { return mError; }

private:
    static sf_count_t length(void* user);
    static sf_count_t seek(sf_count_t offset, int whence, void* user);
    static sf_count_t read(void* data, sf_count_t count, void* user);
    static sf_count_t write(const void* data, sf_count_t count, void* user);
    static sf_count_t tell(void* user);

    sf_count_t remember(sf_count_t result);

    int mDescriptor;
    int mError = 0;
};

} // namespace varno

#endif
