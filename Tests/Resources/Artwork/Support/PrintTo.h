/// How parameters of tests are printed: the same on every run.
#pragma once

#include "DemoGain_ViewLayout.h"
#include "Typeface.h"

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
