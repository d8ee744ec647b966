// varno_lv2_ttl FOLDER [--window] [PRESET.txt ...]: writes the files that hosts read of the bundle.
#include "Host/Module.h"
#include "LV2/Description/BundleFiles.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace {

void write(const std::filesystem::path& file, const std::string& text) {
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    if (!stream.flush()) {
        throw std::runtime_error(file.string() + ": cannot be written");
    }
}

void writeAll(const std::filesystem::path& folder, std::span<const char* const> arguments) {
    varno::BundleContent content;
    std::vector<varno::FactoryPreset> presets;
    for (const char* const argument : arguments) {
        if (std::string_view(argument) == "--window") {
            content.hasWindow = true;
        } else {
            presets.push_back(varno::readFactoryPreset(argument));
        }
    }
    content.module = varno::Module::linked(varno::linkedEntryPoints());
    content.presets = presets;
    std::filesystem::create_directories(folder);
    write(folder / "manifest.ttl", manifestText(content));
    write(folder / "varno-s.ttl", pluginsText(content));
    write(folder / "presets.ttl", presetsText(content));
    if (content.hasWindow) {
        write(folder / "ui.ttl", windowText(content));
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fputs("usage: varno_lv2_ttl FOLDER [--window] [PRESET.txt ...]\n", stderr);
        return 2;
    }
    try {
        writeAll(argv[1], {argv + 2, argv + argc});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "varno_lv2_ttl: %s\n", error.what());
        return 1;
    }
    return 0;
}
