/// How parameters of tests are printed: the same on every run.
#ifndef VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_PRINTTO_H
#define VARNO_TESTS_RESOURCES_ARTWORK_SUPPORT_PRINTTO_H

#include "Artwork/Typeface.h"
#include "DemoGain_ViewLayout.h"

#include <ostream>

namespace DemoGain_ViewLayout {

inline void PrintTo(const Bitmap& bitmap, std::ostream* stream) {
    *stream << bitmap.mFile;
}

inline void PrintTo(Art art, std::ostream* stream) {
    PrintTo(BitmapOf(art), stream);
}

} // namespace DemoGain_ViewLayout

namespace varno {

inline void PrintTo(const Family& family, std::ostream* stream) {
    *stream << family.mName;
}

} // namespace varno

#endif
