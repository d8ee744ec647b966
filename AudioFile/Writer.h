#ifndef VARNO_AUDIOFILE_WRITER_H
#define VARNO_AUDIOFILE_WRITER_H

#include "AudioFile/Block.h"
#include "AudioFile/Format.h"
#include "AudioFile/LeftOut.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/Quantizer.h"
#include "Files/AtomicFile.h"
#include "Files/Transfer.h"

#include <cstdint>
#include <memory>
#include <string>

namespace varno {

/// Writes an audio file that appears whole or not at all (see AtomicFile). The bytes depend on the samples
/// alone: not on block sizes, the time or the run. One thread at a time.
class AudioWriter {
public:
    struct Options {
        Overwrite overwrite = Overwrite::kRefuse;
        /// Used only where the output has fewer bits than the input; see signalBits().
        Dither dither = Dither::kTpdf;
        /// Sample format that the samples come from.
        SampleFormat inputSample = SampleFormat::kFloat;
        /// Called while a pipe or a device is waited for.
        GoOn goOn = {};
        /// kAsWritten: a pipe or a device receives every block when it is written, where the container is
        /// WAV. Of an unknown number of frames its header states unknown sizes.
        Delivery delivery = Delivery::kWhole;
    };

    /// @param path of the output; "-" is standard output
    /// @param format as chooseOutputFormat() returns it
    /// @param metadata of the input; what the container can hold of it is written
    /// @throws FileError where the file cannot be made
    AudioWriter(const std::string& path, const AudioFormat& format, const FileMetadata& metadata,
                const Options& options);

    /// Leaves nothing behind unless the file has its name.
    ~AudioWriter();

    AudioWriter(const AudioWriter&) = delete;
    AudioWriter& operator=(const AudioWriter&) = delete;

    /// Appends a block: source.frames() frames of `processed`, full scale +-1, one pointer per channel. A
    /// sample that the effect returned unchanged is written as the source has it, to the last bit; integer
    /// formats are rounded to nearest (after dither, if any) and limited to full scale, floating point is
    /// written as it is.
    /// @param processed may be source.samples(), where the effect worked in place
    /// @throws FileError where writing fails, for instance on a full disk
    void write(const AudioBlock& source, const float* const* processed);

    /// Completes the content; nothing can be appended afterwards. @return the file, owned by this object, for
    /// commitTogether() @throws FileError
    AtomicFile& finish();

    /// Completes the file and gives it its name. @throws FileError
    void commit() { finish().commit(); }

    /// Samples so far that lay more than half a step of an integer format beyond full scale, or were not a
    /// number.
    std::int64_t clippedSamples() const;

    /// Whether blocks have left for a pipe when write() returns, so that a failure does not take them back.
    bool isAsWritten() const;

    /// What of the input's metadata is not in the output. Known from the start.
    const LeftOutList& metadataLeftOut() const;

private:
    struct State;
    std::unique_ptr<State> mState;
};

} // namespace varno

#endif
