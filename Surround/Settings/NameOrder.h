#ifndef VARNO_SURROUND_SETTINGS_NAMEORDER_H
#define VARNO_SURROUND_SETTINGS_NAMEORDER_H

#include <string_view>

namespace varno {

/// Whether a name stands before another in a list for people: letters whatever their case, those of Western
/// European languages beside the letters that they are made of, and digits as numbers, so that "Kick 2"
/// stands before "Kick 10". Names that are equal so far stand in the order of their bytes. [any]
bool standsBefore(std::string_view left, std::string_view right);

} // namespace varno

#endif
