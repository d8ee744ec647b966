#include "Host/HostOptions.h"

#include <algorithm>

namespace varno {

bool HostOptions::withholds(const acfIID& iid) const {
    return std::any_of(withheld.begin(), withheld.end(), [&](const acfIID& entry) { return entry == iid; });
}

} // namespace varno
