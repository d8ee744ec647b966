/// Latin-1, the encoding in which old programs exchange texts.
#ifndef VARNO_SOURCE_PLATFORM_X11_LATIN1_H
#define VARNO_SOURCE_PLATFORM_X11_LATIN1_H

#include <string>
#include <string_view>

namespace varno {

/// Characters beyond Latin-1 and invalid UTF-8 become question marks. [any]
std::string latin1FromUtf8(std::string_view text);

/// [any]
std::string utf8FromLatin1(std::string_view text);

} // namespace varno

#endif
