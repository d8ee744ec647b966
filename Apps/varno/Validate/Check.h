/// A check of a plug-in, and what it reports.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECK_H
#define VARNO_APPS_VARNO_VALIDATE_CHECK_H

#include "Validate/Plugin.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace varno::validate {

/// How much is checked. The full level has the checks of the quick one, with more rounds, and more.
enum class Level { kQuick, kFull };

/// What a run of checks was asked for.
struct CheckSetup {
    std::filesystem::path path; ///< Of the bundle or binary.
    PluginSelection selection{};
    Format format{};
    Level level = Level::kQuick;
    std::uint64_t seed = 0;
    int timeLimitS = 0; ///< Of every check; 0 for that of each.
};

/// One statement of a check.
struct Finding {
    enum class Kind : char { kFail = 'F', kNote = 'N', kSkip = 'S' };

    Kind kind = Kind::kNote;
    std::string seen;     ///< What was seen; of a note or a skip, the whole text.
    std::string expected; ///< Of a failure.
    bool operator==(const Finding&) const = default;
};

/// Ends a check that cannot be made. Thrown by Context::skip().
struct SkippedCheck {
    std::string reason;
};

/// What a check works with, in a process of its own. [main]
class Context {
public:
    /// Takes what is stated, as soon as it is.
    using Sink = std::function<void(const Finding&)>;
    /// Takes what the check does now, which is reported where it crashes or hangs.
    using StepSink = std::function<void(std::string_view)>;

    /// A check that fails again and again reports the first of its failures, and how many more there were.
    static constexpr int kMostFailures = 10;

    Context(CheckSetup setup, Sink sink, StepSink stepSink);
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;
    ~Context();

    const std::filesystem::path& path() const { return mSetup.path; }
    Format format() const { return mSetup.format; }
    bool isFull() const { return mSetup.level == Level::kFull; }
    /// The beginning of every random choice: a check gives the same results for the same seed.
    std::uint64_t seed() const { return mSetup.seed; }

    /// What of the bundle is checked.
    const PluginSelection& selection() const { return mSetup.selection; }
    /// openPlugin() of path() and selection().
    std::unique_ptr<Plugin> open() const { return openPlugin(path(), selection()); }

    /// The check fails; it may go on. Both texts are parts of one line: "seen A, expected B".
    void fail(const std::string& seen, const std::string& expected);
    /// Fails unless the condition holds. @return the condition
    bool expect(bool condition, const std::string& seen, const std::string& expected);
    /// Something that is not against the rules, and that people should know.
    void note(const std::string& text);
    /// Ends the check, which then has not been made.
    [[noreturn]] void skip(const std::string& reason) const;
    /// What the check does from now on.
    void step(std::string_view what) { mStepSink(what); }

private:
    CheckSetup mSetup;
    Sink mSink;
    StepSink mStepSink;
    int mFailures = 0;
};

inline constexpr int kUsualTimeLimitS = 30;

/// One row of the table of checks.
struct Check {
    std::string_view id;    ///< "binary-symbols": its group and what it checks. Unique.
    std::string_view title; ///< A sentence without its full stop: what holds for a good plug-in.
    Formats formats = kAllFormats;
    Level level = Level::kQuick; ///< The lowest level that has it.
    int timeLimitS =
        kUsualTimeLimitS; ///< It fails where it takes longer. At the full level ten times as long.
    void (*run)(Context& context) = nullptr;

    /// "binary".
    std::string_view group() const { return id.substr(0, id.find('-')); }
};

/// Every check, group by group, in the order in which they run.
std::span<const Check> allChecks();

/// Whether a run makes this check.
bool applies(const Check& check, Format format, Level level);

// The groups, each in Checks/.
std::span<const Check> binaryChecks();
std::span<const Check> descriptionChecks();
std::span<const Check> lifeChecks();
std::span<const Check> parameterChecks();
std::span<const Check> stateChecks();
std::span<const Check> audioChecks();
std::span<const Check> stressChecks();
std::span<const Check> automationChecks();
std::span<const Check> bypassChecks();
std::span<const Check> editorChecks();

} // namespace varno::validate

#endif
