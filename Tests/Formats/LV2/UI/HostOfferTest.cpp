#include "LV2/UI/HostOffer.h"

#include <gtest/gtest.h>
#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <lv2/urid/urid.h>

#include <limits>
#include <string>
#include <vector>

namespace varno {
namespace {

LV2_URID numberOf(LV2_URID_Map_Handle handle, const char* uri) {
    auto& known = *static_cast<std::vector<std::string>*>(handle);
    for (std::size_t i = 0; i < known.size(); ++i) {
        if (known[i] == uri) {
            return static_cast<LV2_URID>(i + 1);
        }
    }
    known.emplace_back(uri);
    return static_cast<LV2_URID>(known.size());
}

class HostOfferTest : public testing::Test {
protected:
    LV2_URID number(const char* uri) { return numberOf(&mKnown, uri); }

    HostOffer offerOf(const std::vector<LV2_Feature>& features) {
        std::vector<const LV2_Feature*> list;
        for (const LV2_Feature& feature : features) {
            list.push_back(&feature);
        }
        list.push_back(nullptr);
        return readHostOffer(HostFeatures(list.data()));
    }

    template<class Value>
    HostOffer offerOfScale(Value value, const char* type, std::uint32_t size = sizeof(Value)) {
        const LV2_Options_Option options[] = {
            {LV2_OPTIONS_INSTANCE, 0, number("urn:other"), size, number(type), &value},
            {LV2_OPTIONS_INSTANCE, 0, number(LV2_UI__scaleFactor), size, number(type), &value},
            {}};
        return offerOf({{LV2_URID__map, &mMap}, optionsFeature(options)});
    }

    static LV2_Feature optionsFeature(const LV2_Options_Option* options) {
        return {LV2_OPTIONS__options, const_cast<LV2_Options_Option*>(options)};
    }

    std::vector<std::string> mKnown;
    LV2_URID_Map mMap{&mKnown, &numberOf};
};

TEST_F(HostOfferTest, isNothingWithoutFeatures) {
    for (const HostOffer& offer : {readHostOffer(HostFeatures(nullptr)), offerOf({}),
                                   offerOf({{nullptr, nullptr}, {"urn:other", nullptr}})}) {
        EXPECT_EQ(offer.parent, xcb_window_t{XCB_WINDOW_NONE});
        EXPECT_EQ(offer.resize, nullptr);
        EXPECT_EQ(offer.touch, nullptr);
        EXPECT_FALSE(offer.scale);
        EXPECT_EQ(offer.title, "");
    }
}

TEST_F(HostOfferTest, holdsAWindowUnlessItsNumberIsNone) {
    const auto parent = [](std::uintptr_t window) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a window's number is passed as a pointer
        return LV2_Feature{LV2_UI__parent, reinterpret_cast<void*>(window)};
    };
    EXPECT_EQ(offerOf({{nullptr, nullptr}, parent(0x1200003)}).parent, 0x1200003U);
    EXPECT_EQ(offerOf({parent(0)}).parent, xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(offerOf({parent(0x100000000)}).parent, xcb_window_t{XCB_WINDOW_NONE});
}

TEST_F(HostOfferTest, holdsCallsThatThereAre) {
    LV2UI_Touch touch{nullptr, [](LV2UI_Feature_Handle, std::uint32_t, bool) {}};
    LV2UI_Resize resize{nullptr, [](LV2UI_Feature_Handle, int, int) { return 0; }};
    const HostOffer offer = offerOf({{LV2_UI__touch, &touch}, {LV2_UI__resize, &resize}});
    EXPECT_EQ(offer.touch, &touch);
    EXPECT_EQ(offer.resize, &resize);
    LV2UI_Touch noTouch{};
    LV2UI_Resize noResize{};
    const HostOffer none = offerOf({{LV2_UI__touch, &noTouch}, {LV2_UI__resize, &noResize}});
    EXPECT_EQ(none.touch, nullptr);
    EXPECT_EQ(none.resize, nullptr);
}

TEST_F(HostOfferTest, holdsAScaleThatCanBeOne) {
    EXPECT_EQ(offerOfScale(1.5F, LV2_ATOM__Float).scale, 1.5);
    for (const float scale : {0.0F, -1.0F, 0.1F, 50.0F, std::numeric_limits<float>::quiet_NaN()}) {
        EXPECT_FALSE(offerOfScale(scale, LV2_ATOM__Float).scale) << scale;
    }
    EXPECT_FALSE(offerOfScale(2, LV2_ATOM__Int).scale);
    EXPECT_FALSE(offerOfScale(1.5F, LV2_ATOM__Float, 1).scale);
}

TEST_F(HostOfferTest, readsNoOptionWithoutTheirNumbers) {
    const float scale = 2.0F;
    const LV2_Options_Option options[] = {
        {LV2_OPTIONS_INSTANCE, 0, number(LV2_UI__scaleFactor), sizeof scale, number(LV2_ATOM__Float), &scale},
        {}};
    EXPECT_FALSE(offerOf({optionsFeature(options)}).scale);
    EXPECT_FALSE(offerOf({optionsFeature(options), {LV2_URID__map, nullptr}}).scale);
    EXPECT_EQ(offerOf({optionsFeature(options), {LV2_URID__map, &mMap}}).scale, 2.0);
}

TEST_F(HostOfferTest, holdsTheSampleRate) {
    const float rateHz = 96'000.0F;
    const LV2_Options_Option options[] = {{LV2_OPTIONS_INSTANCE, 0, number(LV2_PARAMETERS__sampleRate),
                                           sizeof rateHz, number(LV2_ATOM__Float), &rateHz},
                                          {}};
    const HostOffer offer = offerOf({{LV2_URID__map, &mMap}, optionsFeature(options)});
    EXPECT_EQ(offer.rateHz, 96'000.0);
    EXPECT_FALSE(offer.scale);
    EXPECT_FALSE(offerOf({{LV2_URID__map, &mMap}}).rateHz);
}

TEST_F(HostOfferTest, holdsATitle) {
    const char title[] = "Bass\0hidden";
    const LV2_Options_Option options[] = {
        {LV2_OPTIONS_INSTANCE, 0, number(LV2_UI__windowTitle), sizeof title, number(LV2_ATOM__String), title},
        {}};
    EXPECT_EQ(offerOf({{LV2_URID__map, &mMap}, optionsFeature(options)}).title, "Bass");
}

} // namespace
} // namespace varno
