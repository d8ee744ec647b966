/// Which of a parameter's spellings to show.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H

#include <cstdint>
#include <string_view>

/// `names` holds spellings separated by line feeds; only its first 255 characters are looked at. Returns the
/// longest spelling of at most `length` characters, the first one among equally long ones. If none fits: the
/// first `length` characters of `names`, nothing for a length below 1. An empty spelling is none.
std::string_view NameOfLength(std::string_view names, int32_t length);

#endif
