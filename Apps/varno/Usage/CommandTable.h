#ifndef VARNO_APPS_VARNO_USAGE_COMMANDTABLE_H
#define VARNO_APPS_VARNO_USAGE_COMMANDTABLE_H

#include <span>
#include <string_view>

namespace varno {

/// What stands in the place of a value; shells complete it accordingly.
enum class ValueKind {
    kNone,      // a switch, which takes no value
    kText,      // free text or a number
    kFile,      // a path of a file
    kDirectory, // a path of a folder
    kChoice,    // one of the words in `choices`
    kParameter, // an identifier of a parameter
    kSetting,   // ID=VALUE
    kPreset,    // the name of a factory preset, or a file
};

/// One option of a command.
struct OptionEntry {
    std::string_view name = {};      // "--block"
    std::string_view shortName = {}; // "-q"; empty for none
    std::string_view value = {};     // what the help calls the value ("N"); empty for a switch
    ValueKind kind = ValueKind::kNone;
    std::string_view choices = {}; // words separated by blanks, for kChoice
    bool repeatable = false;       // every value counts; of all other options the last one does
    std::string_view group = {};   // heading in the help
    std::string_view help = {};    // sentences
};

/// One place for arguments of a command.
struct ArgumentEntry {
    std::string_view name = {}; // "INPUT"
    ValueKind kind = ValueKind::kText;
    std::string_view choices = {}; // words separated by blanks, for kChoice
    std::string_view help = {};
};

/// A command line worth showing, and what it does.
struct ExampleEntry {
    std::string_view line = {};
    std::string_view help = {};
};

/// One command of the program.
struct CommandEntry {
    std::string_view name = {};
    std::string_view summary = {};                      // one line
    std::span<const std::string_view> usage = {};       // what may follow the name, one form per line
    std::span<const std::string_view> description = {}; // paragraphs
    std::span<const ArgumentEntry> arguments = {};
    int leastArguments = 0;
    int mostArguments = 0; // kAnyNumber for no limit
    std::span<const OptionEntry> options = {};
    std::span<const ExampleEntry> examples = {};
};

inline constexpr int kAnyNumber = -1;

inline constexpr std::string_view kProgramName = "varno";
inline constexpr std::string_view kProgramSummary = "saturation and dynamics for audio files and live sound";

/// Environment variable with the module to use where --module is not given.
inline constexpr const char* kModuleVariable = "VARNO_MODULE";

/// Every command of the program: the one source of parsing, help, shell completion and manual page.
std::span<const CommandEntry> commands();

/// The options that the program itself takes, before any command.
std::span<const OptionEntry> programOptions();

/// What the program is, in paragraphs.
std::span<const std::string_view> programDescription();

/// What holds for every command: exit statuses, environment.
struct NoteEntry {
    std::string_view term = {};
    std::string_view help = {};
};
std::span<const NoteEntry> exitStatusNotes();
std::span<const NoteEntry> environmentNotes();

/// The command of that name, null if there is none.
const CommandEntry* findCommand(std::string_view name);

} // namespace varno

#endif
