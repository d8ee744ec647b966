/// An operation of the host that failed.
#ifndef VARNO_HOST_HOSTERROR_H
#define VARNO_HOST_HOSTERROR_H

#include <stdexcept>
#include <string>

namespace varno {

/// Its text is one line for the user: the thing concerned, what was found and what was expected.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A name or text between double quotes, as in messages. [any]
inline std::string quoted(const std::string& text) {
    return '"' + text + '"';
}

} // namespace varno

#endif
