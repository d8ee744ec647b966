#include "LV2/UI/HostOffer.h"

#include "Window/Scale.h"

#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <lv2/urid/urid.h>

#include <cstdint>
#include <cstring>
#include <limits>

namespace varno {
namespace {

template<class Data>
const Data* dataOf(const HostFeatures& features, const char* uri) {
    return static_cast<const Data*>(features.data(uri));
}

// An X11 window is a number; hosts pass it in place of a pointer.
xcb_window_t parentOf(const HostFeatures& features) {
    const auto number = reinterpret_cast<std::uintptr_t>(features.data(LV2_UI__parent));
    return number <= std::numeric_limits<xcb_window_t>::max() ? static_cast<xcb_window_t>(number)
                                                              : xcb_window_t{XCB_WINDOW_NONE};
}

// The options of a host that also offers the mapping of names to numbers.
class Options {
public:
    explicit Options(const HostFeatures& features)
        : mMap(dataOf<LV2_URID_Map>(features, LV2_URID__map)),
          mOptions(dataOf<LV2_Options_Option>(features, LV2_OPTIONS__options)) {}

    std::optional<double> number(const char* key) const {
        float value = 0.0F;
        const LV2_Options_Option* const option = find(key, LV2_ATOM__Float);
        if (option == nullptr || option->size != sizeof value) {
            return std::nullopt;
        }
        std::memcpy(&value, option->value, sizeof value);
        return value;
    }

    std::string text(const char* key) const {
        const LV2_Options_Option* const option = find(key, LV2_ATOM__String);
        if (option == nullptr) {
            return {};
        }
        const auto* const first = static_cast<const char*>(option->value);
        return {first, strnlen(first, option->size)};
    }

private:
    // An option that has a value of this type; the list ends with one of key 0.
    const LV2_Options_Option* find(const char* key, const char* type) const {
        if (mOptions == nullptr || mMap == nullptr || mMap->map == nullptr) {
            return nullptr;
        }
        const LV2_URID keyNumber = mMap->map(mMap->handle, key);
        const LV2_URID typeNumber = mMap->map(mMap->handle, type);
        for (const LV2_Options_Option* option = mOptions; option->key != 0; ++option) {
            if (option->key == keyNumber && option->type == typeNumber && option->value != nullptr) {
                return option;
            }
        }
        return nullptr;
    }

    const LV2_URID_Map* mMap;
    const LV2_Options_Option* mOptions;
};

} // namespace

HostOffer readHostOffer(const HostFeatures& features) {
    HostOffer offer;
    offer.parent = parentOf(features);
    const auto* const resize = dataOf<LV2UI_Resize>(features, LV2_UI__resize);
    offer.resize = resize != nullptr && resize->ui_resize != nullptr ? resize : nullptr;
    const auto* const touch = dataOf<LV2UI_Touch>(features, LV2_UI__touch);
    offer.touch = touch != nullptr && touch->touch != nullptr ? touch : nullptr;
    const Options options(features);
    const auto scale = options.number(LV2_UI__scaleFactor);
    offer.scale = scale && isScale(*scale) ? scale : std::nullopt;
    offer.rateHz = options.number(LV2_PARAMETERS__sampleRate);
    offer.title = options.text(LV2_UI__windowTitle);
    return offer;
}

} // namespace varno
