#ifndef VARNO_AUDIOFILE_SNDFILEOWNER_H
#define VARNO_AUDIOFILE_SNDFILEOWNER_H

#include <memory>
#include <sndfile.h>

namespace varno {

struct SndfileCloser {
    void operator()(SNDFILE* file) const { sf_close(file); }
};

/// Owns an open file of libsndfile and closes it.
using SndfileOwner = std::unique_ptr<SNDFILE, SndfileCloser>;

} // namespace varno

#endif
