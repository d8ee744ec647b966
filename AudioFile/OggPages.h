#ifndef VARNO_AUDIOFILE_OGGPAGES_H
#define VARNO_AUDIOFILE_OGGPAGES_H

#include <string>

namespace varno {

/// Gives the one stream of a complete Ogg file the serial number 1, in every page, with the pages' checksums.
/// libsndfile draws a random number, which would make every run's bytes differ; a number need only be unlike
/// those of other streams within the same file (RFC 3533, section 4).
/// @param descriptor open for reading and writing @param name of the file for messages @throws WorkError
void setOggSerial(int descriptor, const std::string& name);

/// Whether the file is an Ogg file without the page that ends its stream, as one that was cut off is. Its
/// header does not promise a length, so nothing else tells. @param descriptor open for reading, able to seek;
/// its position stays
bool isOggWithoutEnd(int descriptor);

} // namespace varno

#endif
