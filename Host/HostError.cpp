#include "Host/HostError.h"

namespace varno {

std::string quoted(const std::string& text) {
    std::string result = "\"";
    result += text;
    result += '"';
    return result;
}

} // namespace varno
