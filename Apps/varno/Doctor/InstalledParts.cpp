#include "Doctor/InstalledParts.h"

#include "CommandLine/CommandError.h"
#include "Host/HostError.h"
#include "Host/Instance.h"
#include "Host/Oversampling/HalfBandKernels.h"
#include "Settings/FactoryPresets.h"
#include "Settings/ModuleLoading.h"
#include "Surround/Settings/EffectHost.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

namespace fs = std::filesystem;

constexpr const char* kEditorPackage = "varno-editor";
constexpr const char* kProgramPackage = "varno";
constexpr const char* kLv2Package = "varno-s-lv2";
constexpr const char* kLv2Bundle = "varno-s.lv2";
constexpr const char* kClapPackage = "varno-s-clap";
constexpr const char* kClapFolder = "varno-s";

// Folders with a colon between them.
std::vector<fs::path> foldersOf(const std::string& text) {
    std::vector<fs::path> folders;
    std::istringstream path(text);
    for (std::string folder; std::getline(path, folder, ':');) {
        if (!folder.empty()) {
            folders.emplace_back(folder);
        }
    }
    return folders;
}

// A folder of plug-ins, which a file in it shows to be there.
struct PluginFolder {
    const char* name;
    const char* file;
};

Finding pluginFinding(const char* part, const char* package, const std::vector<fs::path>& folders,
                      const PluginFolder& plugins) {
    std::string searched;
    for (const auto& folder : folders) {
        std::error_code error;
        if (fs::exists(folder / plugins.name / plugins.file, error)) {
            return {.part = part, .detail = (folder / plugins.name).string()};
        }
        searched += (searched.empty() ? "" : ", ") + folder.string();
    }
    return {part, PartState::kMissing, std::string(plugins.name) + " is not in " + searched, package};
}

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// Whether a tone leaves an instance as a sound.
bool processes(const std::shared_ptr<Module>& module, const VariantDescription& variant) {
    constexpr int kFrames = 4800;
    constexpr double kToneHz = 1000.0;
    constexpr double kPeak = 0.5;
    InstanceSetup setup;
    setup.channels = variant.inputChannels();
    Instance instance(module, setup);
    std::vector<float> tone(kFrames);
    for (std::size_t i = 0; i < tone.size(); ++i) {
        const double phase = 2.0 * std::numbers::pi * kToneHz * static_cast<double>(i) / kDefaultSampleRateHz;
        tone[i] = static_cast<float>(kPeak * std::sin(phase));
    }
    std::vector<std::vector<float>> out(static_cast<std::size_t>(setup.channels),
                                        std::vector<float>(kFrames));
    const std::vector<const float*> inputs(out.size(), tone.data());
    std::vector<float*> outputs;
    for (auto& channel : out) {
        outputs.push_back(channel.data());
    }
    instance.process(inputs.data(), outputs.data(), kFrames);
    return std::ranges::all_of(out, [](const auto& channel) {
        const bool isFinite = std::ranges::all_of(channel, [](float x) { return std::isfinite(x); });
        return isFinite && std::ranges::any_of(channel, [](float x) { return x != 0.0F; });
    });
}

// What a bundle for hosts holds: the program of this processor, besides the presets that varno alone has.
bool hasBinary(const fs::path& bundle) {
    std::error_code error;
    return std::ranges::any_of(fs::directory_iterator(bundle / "Contents", error), [](const auto& entry) {
        return entry.path().filename().string().ends_with("-linux");
    });
}

// As the bundle's Info.plist states it; empty where it does not.
std::string versionOf(const fs::path& bundle) {
    constexpr std::string_view kStart = "<string>";
    const std::string text = contentOf(bundle / "Contents" / "Info.plist");
    const auto start = text.find(kStart, std::min(text.find("CFBundleShortVersionString"), text.size()));
    const auto end = text.find('<', start == std::string::npos ? start : start + kStart.size());
    return end == std::string::npos ? "" : text.substr(start + kStart.size(), end - start - kStart.size());
}

} // namespace

Finding effectFinding(const CommandLine& line) {
    Finding finding{.part = "effect"};
    try {
        const auto module = loadEffect(line);
        const auto* const effect = module->description().effect({});
        if (effect == nullptr) {
            throw HostError("the module describes no effect");
        }
        std::string channels;
        for (const auto& variant : effect->variants) {
            if (!processes(module, variant)) {
                throw HostError("no sound comes out of it");
            }
            channels += (channels.empty() ? "" : ", ") + std::to_string(variant.inputChannels());
        }
        finding.detail = "processes (channels: " + channels + ')';
    } catch (const std::exception& error) {
        finding.state = PartState::kFailing;
        finding.detail = error.what();
    }
    return finding;
}

Finding instructionSetFinding() {
    return {.part = "instruction set", .detail = std::string(chooseHalfBandKernels().name)};
}

Finding moduleFinding(const CommandLine& line) {
    Finding finding{.part = "module"};
    try {
        const auto bundle = moduleBundle(line);
        finding.detail = bundle.string();
        if (fs::is_directory(bundle) && !hasBinary(bundle)) {
            finding = {"module", PartState::kMissing, "no binary in " + bundle.string(), kEditorPackage};
            return finding;
        }
        (void)Module::open(bundle, effectHostOptions());
        if (const auto version = versionOf(bundle); version != VARNO_VERSION) {
            finding.state = PartState::kFailing;
            finding.detail +=
                ": is of version " + (version.empty() ? "unknown" : version) + ", expected " + VARNO_VERSION;
            finding.package = kEditorPackage;
        }
    } catch (const HostError& error) {
        finding = {"module", PartState::kFailing, error.what(), kEditorPackage};
    } catch (const CommandError& error) {
        finding = {"module", PartState::kMissing, error.what(), kEditorPackage};
    }
    return finding;
}

Finding presetsFinding(const CommandLine& line) {
    try {
        const auto bundle = moduleBundle(line);
        const auto count = factoryPresets(bundle).size();
        const auto folder = factoryPresetFolder(bundle).string();
        if (count == 0) {
            return {"presets", PartState::kMissing, "none in " + folder, kProgramPackage};
        }
        return {.part = "presets", .detail = std::to_string(count) + " in " + folder};
    } catch (const CommandError& error) {
        return {"presets", PartState::kMissing, error.what(), kProgramPackage};
    }
}

std::vector<fs::path> lv2Folders(const std::string& lv2Path, const std::string& home) {
    if (!lv2Path.empty()) {
        return foldersOf(lv2Path);
    }
    std::vector<fs::path> folders;
    if (!home.empty()) {
        folders.push_back(fs::path(home) / ".lv2");
    }
    for (const char* folder : {"/usr/lib/" VARNO_ARCHITECTURE "/lv2", "/usr/lib/lv2", "/usr/local/lib/lv2"}) {
        folders.emplace_back(folder);
    }
    return folders;
}

std::vector<fs::path> clapFolders(const std::string& clapPath, const std::string& home) {
    std::vector<fs::path> folders = foldersOf(clapPath);
    if (!home.empty()) {
        folders.push_back(fs::path(home) / ".clap");
    }
    folders.emplace_back("/usr/lib/clap");
    return folders;
}

Finding lv2Finding(const std::string& lv2Path, const std::string& home) {
    return pluginFinding("LV2 plug-ins", kLv2Package, lv2Folders(lv2Path, home),
                         {kLv2Bundle, "manifest.ttl"});
}

Finding clapFinding(const std::string& clapPath, const std::string& home) {
    return pluginFinding("CLAP plug-ins", kClapPackage, clapFolders(clapPath, home),
                         {kClapFolder, "varno-s.clap"});
}

Finding gnuplotFinding(const std::string& path) {
    for (const auto& folder : foldersOf(path)) {
        const std::string program = (folder / "gnuplot").string();
        if (::access(program.c_str(), X_OK) == 0) {
            return {.part = "gnuplot", .detail = program};
        }
    }
    return {"gnuplot", PartState::kMissing, "not in the folders of PATH; varno plot draws with it",
            "gnuplot-nox"};
}

} // namespace varno
