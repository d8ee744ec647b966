#ifndef VARNO_AUDIOFILE_XIPHCOMMENTS_H
#define VARNO_AUDIOFILE_XIPHCOMMENTS_H

#include "AudioFile/LeftOut.h"
#include "AudioFile/Tags.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The comments of a FLAC or Ogg file, "KEY=value" each, in their order and of any bytes.
using XiphComments = std::vector<std::string>;

/// A comment structure of the Vorbis specification, which Opus has too.
struct XiphCommentStructure {
    std::string vendor; ///< the encoder of the samples
    XiphComments comments;
    bool isWhole = true; ///< whether all comments that it announces are there
};

/// Reads one. TagLib's reader drops comments without a value or with bytes that are no UTF-8, and changes
/// order and keys. @return nothing where there is none
std::optional<XiphCommentStructure> readXiphComments(std::string_view bytes);

/// The bytes of a structure.
std::string writeXiphComments(const std::string& vendor, const XiphComments& comments);

/// Texts for containers of other kinds. @param leftOut gets comments that are no texts
std::vector<TextTag> textsOfComments(const XiphComments& comments, LeftOutList& leftOut);

/// Comments for texts. @param leftOut gets the texts whose key cannot be one of a comment
XiphComments commentsOfTexts(const std::vector<TextTag>& texts, LeftOutList& leftOut);

/// The key of a comment as it is there; the whole comment where it has none.
std::string_view keyOfComment(std::string_view comment);

/// Takes the pictures out of an Ogg file's comments. What cannot be decoded stays there as text.
std::vector<Picture> takePictures(XiphComments& comments);

/// The comment that holds a picture in an Ogg file.
std::string commentOfPicture(const Picture& picture);

} // namespace varno

#endif
