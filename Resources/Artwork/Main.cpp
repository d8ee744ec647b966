#include "Artwork/Artwork.h"
#include "Artwork/EditorPicture.h"
#include "Artwork/Options.h"

#include <exception>
#include <iostream>

namespace varno {
namespace {

// Exit statuses.
constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

void drawBitmaps(const Typeface& typeface, const std::filesystem::path& folder) {
    std::filesystem::create_directories(folder);
    for (const auto& bitmap : DemoGain_ViewLayout::kBitmaps) {
        for (const auto& scale : DemoGain_ViewLayout::kArtScales) {
            drawBitmap(bitmap, typeface, scale.mFactor).write(folder / fileName(bitmap, scale));
        }
    }
}

void drawIcons(const Typeface& typeface, const std::filesystem::path& folder) {
    for (const int size : kIconSizes) {
        const std::filesystem::path file = folder / iconFile(size);
        std::filesystem::create_directories(file.parent_path());
        drawIcon(typeface, size).write(file);
    }
}

void run(const Options& options) {
    if (options.help) {
        std::cout << kHelp;
        return;
    }
    const Typeface typeface;
    if (options.preview) {
        drawPreview(typeface, options.scale).write(*options.preview);
        return;
    }
    if (options.numberedFrom) {
        drawNumbered(typeface, *options.numberedFrom).write(options.numbered);
        return;
    }
    drawBitmaps(typeface, options.folder);
    drawIcons(typeface, options.folder);
}

} // namespace
} // namespace varno

int main(int argc, char** argv) {
    try {
        varno::run(varno::parseOptions({argv + 1, argv + argc}));
        return 0;
    } catch (const varno::UsageError& error) {
        std::cerr << "varno_artwork: " << error.what() << '\n';
        return varno::kWrongUsage;
    } catch (const std::exception& error) {
        std::cerr << "varno_artwork: " << error.what() << '\n';
        return varno::kFailed;
    }
}
