#ifndef VARNO_APPS_VARNO_COMMANDLINE_COMMANDTABLE_H
#define VARNO_APPS_VARNO_COMMANDLINE_COMMANDTABLE_H

#include <optional>
#include <span>
#include <string_view>

namespace varno {

class CommandLine;

/// The kind of a value; shells complete it accordingly.
enum class ValueKind {
    kNone,      ///< A switch, which takes no value.
    kText,      ///< Free text.
    kNumber,    ///< One of `numbers`.
    kFile,      ///< A path of a file.
    kDirectory, ///< A path of a folder.
    kChoice,    ///< One of the words in `choices`.
    kParameter, ///< An identifier of a parameter.
    kSetting,   ///< ID=VALUE.
    kPreset,    ///< The name of a factory preset, or a file.
};

/// The numbers that an option takes, both ends included. The help states them.
struct NumberRange {
    double least = 0.0;
    double most = 0.0;
    std::optional<double> usual = {}; ///< Without the option; nothing: `help` states it.
};

/// One option of a command.
struct OptionEntry {
    std::string_view name = {};      ///< "--block".
    std::string_view shortName = {}; ///< "-q"; empty for none.
    std::string_view value = {};     ///< What the help calls the value ("N"); empty for a switch.
    ValueKind kind = ValueKind::kNone;
    std::string_view choices = {};  ///< Words separated by blanks, for kChoice.
    NumberRange numbers = {};       ///< For kNumber.
    std::string_view excludes = {}; ///< An option of the same command that cannot be given as well.
    std::string_view group = {};    ///< Heading in the help.
    std::string_view help = {};     ///< Sentences.
};

/// One place for arguments of a command.
struct ArgumentEntry {
    std::string_view name = {}; ///< "INPUT".
    ValueKind kind = ValueKind::kText;
    std::string_view choices = {}; ///< Words separated by blanks, for kChoice.
    std::string_view help = {};
};

/// An example of a command line, and what it does.
struct ExampleEntry {
    std::string_view line = {};
    std::string_view help = {};
};

/// Does what a command line asks for. Returns the exit status; throws CommandError or HostError.
using RunCommand = int (*)(const CommandLine& line);

/// One command of the program.
struct CommandEntry {
    std::string_view name = {};
    std::string_view summary = {};                      ///< One line.
    std::span<const std::string_view> usage = {};       ///< What may follow the name, one form per line.
    std::span<const std::string_view> description = {}; ///< Paragraphs.
    std::span<const ArgumentEntry> arguments = {};
    int leastArguments = 0;
    int mostArguments = 0; ///< kAnyNumber for no limit.
    std::span<const OptionEntry> options = {};
    std::span<const ExampleEntry> examples = {};
    RunCommand run = nullptr;
};

inline constexpr int kAnyNumber = -1;

/// Something that holds for every command: an exit status, an environment variable.
struct NoteEntry {
    std::string_view term = {};
    std::string_view help = {};
};

/// The whole program.
struct ProgramEntry {
    std::string_view summary = {};                      ///< One line.
    std::span<const std::string_view> description = {}; ///< Paragraphs.
    std::span<const OptionEntry> options = {};          ///< Of the program itself, before any command.
    std::span<const CommandEntry> commands = {};
    std::span<const NoteEntry> exitStatuses = {};
    std::span<const NoteEntry> environment = {};
};

inline constexpr std::string_view kProgramName = "varno";

// Options that commands of every kind take. Others stand beside the code that reads them.

inline constexpr OptionEntry kHelpOption = {
    .name = "--help", .shortName = "-h", .group = "General", .help = "Print this help and exit."};

inline constexpr OptionEntry kJsonOption = {
    .name = "--json", .group = "Reports", .help = "Print the same as JSON, for scripts."};

} // namespace varno

#endif
