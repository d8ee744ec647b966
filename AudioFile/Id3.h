#ifndef VARNO_AUDIOFILE_ID3_H
#define VARNO_AUDIOFILE_ID3_H

#include "AudioFile/LeftOut.h"
#include "AudioFile/Tags.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The texts and pictures of an ID3v2 tag. @param tag its bytes @param leftOut gets what is neither, and a
/// tag that cannot be read
Tags readId3(std::string_view tag, LeftOutList& leftOut);

/// An ID3v2 tag with everything that `tag` holds, and with those of `more` whose texts have other keys; as it
/// is where there are none.
/// @param tag its bytes; empty for a new one @param leftOut gets what the tag does not hold as it was
std::string addToId3(std::string_view tag, const Tags& more, LeftOutList& leftOut);

/// The tags of an MP3 file.
struct Mp3Tags {
    std::string id3;            ///< the ID3v2 tag at its start
    std::vector<TextTag> texts; ///< what only the APE or the ID3v1 tag at its end has
};

/// @param descriptor open for reading; its position stays @param mostBytes of the file that are read for the
/// tags @param leftOut gets what cannot be read
Mp3Tags readMp3Tags(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut);

} // namespace varno

#endif
