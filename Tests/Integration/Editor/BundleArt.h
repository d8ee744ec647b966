/// The picture that the editor should show: the bitmaps in the module's bundle and the line of text.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_BUNDLEART_H
#define VARNO_TESTS_INTEGRATION_EDITOR_BUNDLEART_H

#include "DemoGain_ViewLayout.h"
#include "Tests/Support/Picture.h"

#include <filesystem>
#include <map>
#include <string>

namespace varno::test {

class BundleArt {
public:
    /// Throws std::runtime_error where a bitmap is missing or has another size than in the layout.
    explicit BundleArt(const std::filesystem::path& resources);

    /// A part of the editor without any control.
    Picture background(const Area& area) const;
    /// A control's place with one of its bitmap's pictures on it, from 0.
    Picture control(const DemoGain_ViewLayout::Control& control, int picture) const;
    /// The same with a picture of another bitmap of the same size, as a meter's second one.
    Picture control(const DemoGain_ViewLayout::Control& control, DemoGain_ViewLayout::Art art,
                    int picture) const;

private:
    struct Pixel {
        std::uint32_t premultiplied; ///< 0xAARRGGBB.
    };

    std::map<DemoGain_ViewLayout::Art, std::vector<Pixel>> mBitmaps;
};

/// The status label with this text, drawn by the test and not by the module.
Picture labelPicture(const std::string& text);

} // namespace varno::test

#endif
