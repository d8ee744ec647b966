#include "LV2/HostFeatures.h"

#include <cstdio>
#include <cstring>
#include <lv2/log/log.h>
#include <lv2/urid/urid.h>

namespace varno {

void* HostFeatures::data(const char* uri) const noexcept {
    for (const LV2_Feature* const* feature = mFeatures; feature != nullptr && *feature != nullptr;
         ++feature) {
        if ((*feature)->URI != nullptr && std::strcmp((*feature)->URI, uri) == 0) {
            return (*feature)->data;
        }
    }
    return nullptr;
}

void HostFeatures::logError(const char* text) const noexcept {
    const auto* const log = static_cast<const LV2_Log_Log*>(data(LV2_LOG__log));
    const auto* const map = static_cast<const LV2_URID_Map*>(data(LV2_URID__map));
    if (log != nullptr && map != nullptr) {
        log->printf(log->handle, map->map(map->handle, LV2_LOG__Error), "Varno-S: %s\n", text);
    } else {
        std::fprintf(stderr, "Varno-S: %s\n", text);
    }
}

} // namespace varno
