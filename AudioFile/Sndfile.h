#ifndef VARNO_AUDIOFILE_SNDFILE_H
#define VARNO_AUDIOFILE_SNDFILE_H

#include "AudioFile/Format.h"
#include "AudioFile/SndfileOwner.h"

#include <optional>
#include <sndfile.h>

namespace varno {

/// What libsndfile says of a file in this program's terms.
AudioFormat audioFormatOf(const SF_INFO& info);

/// The record with which libsndfile opens a file of this format for writing; nothing where it offers none.
std::optional<SF_INFO> sndfileInfoOf(const AudioFormat& format);

/// Whether libsndfile writes files of this format, channel count and sample rate: opens one that goes
/// nowhere.
bool canWrite(const AudioFormat& format);

} // namespace varno

#endif
