#ifndef VARNO_AUDIOFILE_TAGS_H
#define VARNO_AUDIOFILE_TAGS_H

#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// One text about a file. Texts with several values are several of these.
struct TextTag {
    std::string key;   ///< upper case, named as in Vorbis comments: "TITLE", "ARTIST"
    std::string value; ///< UTF-8

    bool operator==(const TextTag&) const = default;
};

/// A picture about a file, such as its cover.
struct Picture {
    unsigned type = 0;       ///< as ID3v2 and FLAC number them; 3 is the front cover
    std::string mime;        ///< "image/png"; "-->" where the data is an address
    std::string description; ///< UTF-8
    unsigned width = 0;      ///< pixels; 0 where it is not known, as in the following
    unsigned height = 0;
    unsigned depth = 0;  ///< bits per pixel
    unsigned colors = 0; ///< of an indexed picture
    std::string data;

    bool operator==(const Picture&) const = default;
};

/// Texts and pictures in a form that no container prescribes.
struct Tags {
    std::vector<TextTag> texts;
    std::vector<Picture> pictures;
};

/// Appends those texts whose keys are not there yet.
void addMissing(std::vector<TextTag>& texts, const std::vector<TextTag>& others);

bool isUtf8(std::string_view bytes);

/// The bytes where they are UTF-8; else what they are as Latin-1, as older programs wrote them.
std::string toUtf8(std::string_view bytes);

/// ASCII letters in upper case.
std::string upperCase(std::string_view text);

} // namespace varno

#endif
