/// Failure of the host to do what it was asked.
#ifndef VARNO_HOST_HOSTERROR_H
#define VARNO_HOST_HOSTERROR_H

#include <stdexcept>
#include <string>

namespace varno {

/// Its text is one line that names the thing concerned, what was found and what was expected, fit to be shown
/// to a person.
class HostError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A name or text as it stands in messages: between double quotes. [any]
std::string quoted(const std::string& text);

} // namespace varno

#endif
