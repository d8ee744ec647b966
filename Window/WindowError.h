#ifndef VARNO_WINDOW_WINDOWERROR_H
#define VARNO_WINDOW_WINDOWERROR_H

#include <stdexcept>

namespace varno {

/// A window or the display that it is on cannot be had, or has gone. what() is one line without a line end
/// that names what was found and what was expected.
class WindowError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace varno

#endif
