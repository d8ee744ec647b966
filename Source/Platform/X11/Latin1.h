/// The one byte to a character that old programs exchange texts in.
#ifndef VARNO_SOURCE_PLATFORM_X11_LATIN1_H
#define VARNO_SOURCE_PLATFORM_X11_LATIN1_H

#include <string>
#include <string_view>

namespace varno {

/// A question mark stands for each character beyond Latin-1 and for what is no UTF-8. [any]
std::string latin1FromUtf8(std::string_view text);

/// [any]
std::string utf8FromLatin1(std::string_view text);

} // namespace varno

#endif
