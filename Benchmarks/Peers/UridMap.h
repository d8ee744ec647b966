/// Numbers for URIs, as LV2 effects ask a host for.
#ifndef VARNO_BENCHMARKS_PEERS_URIDMAP_H
#define VARNO_BENCHMARKS_PEERS_URIDMAP_H

#include <lv2/core/lv2.h>
#include <lv2/urid/urid.h>

#include <map>
#include <string>

namespace varno::bench {

/// Both features stay valid as long as this lives. One thread at a time.
class UridMap {
public:
    UridMap() = default;
    UridMap(const UridMap&) = delete;
    UridMap& operator=(const UridMap&) = delete;

    /// The number of a URI, from 1 on; the same each time.
    LV2_URID map(const char* uri) {
        return mNumbers.try_emplace(uri, static_cast<LV2_URID>(mNumbers.size() + 1)).first->second;
    }
    /// The URI of a number, null when there is none.
    const char* unmap(LV2_URID number) const {
        for (const auto& [uri, itsNumber] : mNumbers) {
            if (itsNumber == number) {
                return uri.c_str();
            }
        }
        return nullptr;
    }

    const LV2_Feature* mapFeature() const { return &mMapFeature; }
    const LV2_Feature* unmapFeature() const { return &mUnmapFeature; }

private:
    static LV2_URID mapFor(LV2_URID_Map_Handle self, const char* uri) {
        return static_cast<UridMap*>(self)->map(uri);
    }
    static const char* unmapFor(LV2_URID_Unmap_Handle self, LV2_URID number) {
        return static_cast<const UridMap*>(self)->unmap(number);
    }

    std::map<std::string, LV2_URID> mNumbers;
    LV2_URID_Map mMap = {this, &mapFor};
    LV2_URID_Unmap mUnmap = {this, &unmapFor};
    LV2_Feature mMapFeature = {LV2_URID__map, &mMap};
    LV2_Feature mUnmapFeature = {LV2_URID__unmap, &mUnmap};
};

} // namespace varno::bench

#endif
