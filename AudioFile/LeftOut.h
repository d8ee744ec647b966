#ifndef VARNO_AUDIOFILE_LEFTOUT_H
#define VARNO_AUDIOFILE_LEFTOUT_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// Why something of an input is not in the output.
enum class LeftOutReason {
    kNoPlace,          ///< the output's container does not hold it
    kTooLarge,         ///< the input has more than kMostCarriedBytes of metadata
    kUnreadable,       ///< it is damaged, or of a kind that is not known
    kDescribesSamples, ///< it describes the samples as they were before the effect
};

/// What it is.
enum class LeftOutKind {
    kTags, ///< all tags of the input, which could not be told apart
    kComment,
    kTagItem, ///< of a tag, neither text nor picture
    kPicture,
    kCueSheet,
    kCuePoint,
    kCueText, ///< of a cue point, beside its name
    kChunk,   ///< of a RIFF, W64, AIFF or CAF file
    kBlock,   ///< of a FLAC file
};

/// Things of one kind that are left out for one reason.
struct LeftOut {
    LeftOutReason reason = LeftOutReason::kNoPlace;
    LeftOutKind kind = LeftOutKind::kTags;
    std::size_t count = 0;
    std::vector<std::string> names = {}; ///< each once, in the input's order; at most kMostLeftOutNames
    bool hasMoreNames = false;
};

inline constexpr std::size_t kMostLeftOutNames = 8;

/// What is left out of an output, with an entry for each reason and kind.
using LeftOutList = std::vector<LeftOut>;

/// Counts one more. @param name as the input has it, of any bytes; empty for none
void addLeftOut(LeftOutList& list, LeftOutReason reason, LeftOutKind kind, std::string_view name = {});

/// Adds all of another list.
void addLeftOut(LeftOutList& list, const LeftOutList& more);

} // namespace varno

#endif
