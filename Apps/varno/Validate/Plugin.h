/// What the checks know of a plug-in, whatever its format.
#ifndef VARNO_APPS_VARNO_VALIDATE_PLUGIN_H
#define VARNO_APPS_VARNO_VALIDATE_PLUGIN_H

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace varno::validate {

/// The formats of plug-ins, as bits of a set.
enum class Format : unsigned {
    kModule = 1U, ///< A bundle folder NAME.aaxplugin.
    kLv2 = 2U,    ///< A bundle folder NAME.lv2.
    kClap = 4U,   ///< A binary NAME.clap.
};

/// Formats together: those that a check applies to.
using Formats = unsigned;

constexpr Formats operator|(Format left, Format right) {
    return static_cast<Formats>(left) | static_cast<Formats>(right);
}
constexpr Formats operator|(Formats left, Format right) {
    return left | static_cast<Formats>(right);
}
constexpr bool contains(Formats formats, Format format) {
    return (formats & static_cast<Formats>(format)) != 0;
}

inline constexpr Formats kAllFormats = Format::kModule | Format::kLv2 | Format::kClap;

/// "module", "lv2" or "clap".
std::string_view formatName(Format format);

/// The plug-in cannot be opened, an instance cannot be made, or a call that must succeed failed. what() is
/// one line.
class PluginError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A bundle lacks a plug-in that was selected.
class UnknownPlugin : public PluginError {
public:
    using PluginError::PluginError;
};

/// What an opened plug-in that takes no audio states as its obstacle.
inline constexpr std::string_view kNoInputs = "it has no audio inputs";

/// One effect of a bundle. A module's variants for several numbers of channels are one of these each.
struct PluginInfo {
    std::string id;   ///< What the format identifies it by.
    std::string name; ///< What people see.
    int inputs = 0;   ///< Channels of audio.
    int outputs = 0;
    /// Why no instance of it is made: "it has no audio inputs". Empty where they are.
    std::string obstacle{};
};

/// Which plug-ins of a bundle are looked at, by their identifiers.
class PluginSelection {
public:
    /// All of them.
    PluginSelection() = default;
    /// @param ids none for all
    explicit PluginSelection(std::vector<std::string> ids)
        : mIds(std::move(ids)) {}

    /// Empty for all.
    const std::vector<std::string>& ids() const { return mIds; }
    bool has(const std::string& id) const;
    /// @throws UnknownPlugin unless all that are selected are among those of the bundle
    void requireAmong(const std::vector<std::string>& bundle) const;

private:
    std::vector<std::string> mIds;
};

/// One parameter that a host may set. Values are plain: those of the format, not 0 to 1.
struct Parameter {
    std::string id;
    std::string name;
    double minimum = 0.0;
    double maximum = 1.0;
    double defaultValue = 0.0;
    int steps = 0;             ///< Values that it takes, 2 for a switch; 0 for any between both ends.
    bool isBypass = false;     ///< The plug-in's own bypass, as the format defines one.
    bool isAutomatable = true; ///< May change while audio runs.
};

/// What an instance offers. A check that needs more calls Context::skip().
struct Capabilities {
    bool hasValueTexts = false;                   ///< text() answers.
    bool readsTexts = false;                      ///< value() answers.
    bool hasState = false;                        ///< saveState(), restoreState().
    bool hasReset = false;                        ///< reset().
    bool hasLatency = false;                      ///< latencyFrames().
    std::string editorObstacle = "has no editor"; ///< Why openEditor() cannot be called; empty where it can.
    bool closesWithinCalls = false;  ///< The format lets a host close an editor within the editor's own call.
    bool mayEndWithEditor = false;   ///< The format lets an instance end before its open editor.
    bool hasUnalignedBuffers = true; ///< The format lets buffers lie at any address of a float.
    bool runsInPlace = true;         ///< An output may be an input's memory.
};

/// What an editor has its host do.
struct EditorEvent {
    enum class Kind {
        kResize,  ///< The host's window is to have this width and height.
        kTouch,   ///< A gesture on a parameter begins.
        kValue,   ///< A parameter is to have this value.
        kRelease, ///< The gesture ends.
        kOffer,   ///< The host may handle what the mouse does.
    };

    Kind kind = Kind::kOffer;
    std::size_t parameter = 0; ///< In PluginInstance::parameters().
    double value = 0.0;        ///< Plain.
    int width = 0;             ///< Pixels.
    int height = 0;
};

/// How an editor is opened.
struct EditorSetup {
    std::uint32_t window = 0; ///< The number of an X11 window of the caller's.
    double scale = 1.0;       ///< 2 is twice the plain size.
    /// Takes the editor's requests; outlives the instance. It is called on the thread of the window, within
    /// a call of the editor's, where Capabilities::closesWithinCalls lets it close the editor.
    std::function<void(const EditorEvent& event)> onEvent;
};

/// In pixels.
struct EditorSize {
    int width = 0;
    int height = 0;
    bool operator==(const EditorSize&) const = default;
};

/// An open editor; closed when destroyed. Where its instance ends before, it has ended with it or, where the
/// format has editors that live alone, goes on without. [main]
class PluginEditor {
public:
    PluginEditor() = default;
    PluginEditor(const PluginEditor&) = delete;
    PluginEditor& operator=(const PluginEditor&) = delete;
    virtual ~PluginEditor() = default;

    /// What a host's event loop does for it: timers, descriptors, requests. Called about 30 times a second.
    virtual void idle() = 0;
    /// The size that it has stated last; nothing where it has stated none.
    virtual std::optional<EditorSize> size() const = 0;
    /// Closes it. Every later call does nothing.
    virtual void close() = 0;
};

/// Something that a host may do at any time and that must do no harm.
struct Attempt {
    std::string name; ///< What is done: "SetChunk with another chunk's identifier".
    /// Does it. @return what was wrong with the answer: "success"; empty where nothing was
    std::function<std::string()> make;
};

enum class AttemptKind {
    kUnknownIdentifiers, ///< Calls with identifiers that the plug-in does not know, or with none.
    kForeignStates,      ///< States of other plug-ins, in the container of the format.
    kCallsFromWithin,    ///< Uses of the plug-in in which the host calls it while it calls the host.
};

/// A running instance: made, prepared and ready for its first buffer. Everything but process() and set() is
/// for one thread, that of the host's window; process() may run on another one beside it. Where a format
/// allows less, its adapter arranges it. An exception of the plug-in's is passed on.
class PluginInstance {
public:
    PluginInstance() = default;
    PluginInstance(const PluginInstance&) = delete;
    PluginInstance& operator=(const PluginInstance&) = delete;
    virtual ~PluginInstance() = default;

    virtual Capabilities capabilities() const = 0;
    /// The same as long as the instance lives.
    virtual const std::vector<Parameter>& parameters() const = 0;

    /// Has a value in force from the next buffer on, from the thread that processes or while none does.
    /// @param index in parameters() @param value plain
    virtual void set(std::size_t index, double value) = 0;
    /// The plain value now.
    virtual double get(std::size_t index) = 0;
    /// What people see for a plain value; nothing where the plug-in refuses.
    virtual std::optional<std::string> text(std::size_t index, double value) = 0;
    /// The plain value of a text; nothing where the plug-in refuses.
    virtual std::optional<double> value(std::size_t index, const std::string& text) = 0;

    /// Processes `frames` frames, 0 to the most given to create(): one pointer per channel, as many as
    /// PluginInfo states.
    virtual void process(const float* const* inputs, float* const* outputs, std::int32_t frames) = 0;

    /// The state as a host saves it; nothing where the plug-in fails.
    virtual std::optional<std::vector<std::byte>> saveState() = 0;
    /// False where the plug-in refuses these bytes.
    virtual bool restoreState(std::span<const std::byte> state) = 0;
    /// Puts audio back to its start; values stay. While nothing processes.
    virtual void reset() = 0;
    /// The latency reported now, in frames.
    virtual std::int32_t latencyFrames() = 0;

    /// What can be tried with this instance, as long as it lives. [main]
    virtual std::vector<Attempt> attempts(AttemptKind kind) = 0;

    /// Opens the editor in a window. One at a time. @throws PluginError where it does not open
    virtual std::unique_ptr<PluginEditor> openEditor(const EditorSetup& setup) = 0;
};

/// An opened binary or bundle; closed, and unloaded where the format has it so, when destroyed, after its
/// instances. [main]
class Plugin {
public:
    Plugin() = default;
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    virtual ~Plugin() = default;

    virtual Format format() const = 0;
    virtual const std::filesystem::path& path() const = 0;
    /// Those that are selected, in the order of the bundle. The references stay valid.
    virtual const std::vector<PluginInfo>& plugins() const = 0;
    /// @param info one of plugins() @param mostFrames the longest buffer that process() will be given
    /// @throws PluginError where no instance can be made
    virtual std::unique_ptr<PluginInstance> create(const PluginInfo& info, double rateHz,
                                                   std::int32_t mostFrames) = 0;
    /// The same without what prepares it for sound, where the format has that as a call: of this instance the
    /// editor alone may be opened. Nothing in other formats.
    virtual std::unique_ptr<PluginInstance> createUnprepared(const PluginInfo& info, double rateHz,
                                                             std::int32_t mostFrames) = 0;
    /// What the plug-in has done so far against the rules of its format, as the host's side saw it, one line
    /// each. Those that were returned are forgotten.
    virtual std::vector<std::string> takeComplaints() = 0;
};

/// Why none of the plug-ins can be used, one clause for each of the first few.
std::string obstaclesOf(const Plugin& plugin);

/// The format by a path's name, whether it exists or not; nothing for another name.
std::optional<Format> formatOf(const std::filesystem::path& path);

/// Opens a plug-in of any format in this process. Of a bundle, those that are selected alone are looked at.
/// @throws UnknownPlugin where the bundle lacks one of them @throws PluginError where it cannot
std::unique_ptr<Plugin> openPlugin(const std::filesystem::path& path, const PluginSelection& selection = {});

/// The same of each format. openPlugin() chooses.
std::unique_ptr<Plugin> openModulePlugin(const std::filesystem::path& path, const PluginSelection& selection);
std::unique_ptr<Plugin> openLv2Plugin(const std::filesystem::path& path, const PluginSelection& selection);
std::unique_ptr<Plugin> openClapPlugin(const std::filesystem::path& path, const PluginSelection& selection);

} // namespace varno::validate

#endif
