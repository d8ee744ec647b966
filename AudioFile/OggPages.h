#ifndef VARNO_AUDIOFILE_OGGPAGES_H
#define VARNO_AUDIOFILE_OGGPAGES_H

#include <string>

namespace varno {

/// Gives the one stream of a complete Ogg file the serial number 1, in every page, with the pages' checksums.
/// libsndfile chooses a random number, which would make the bytes of every run differ; the number need only
/// differ from those of other streams within the same file (RFC 3533, section 4).
/// @param descriptor open for reading and writing @param name of the file for messages @throws FileError
void setOggSerial(int descriptor, const std::string& name);

/// Whether the file is an Ogg file without the page that ends its stream: it was truncated. An Ogg header
/// states no length, so there is no other sign. @param descriptor open for reading, able to seek; its
/// position stays
bool isOggWithoutEnd(int descriptor);

} // namespace varno

#endif
