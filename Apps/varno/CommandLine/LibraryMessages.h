#ifndef VARNO_APPS_VARNO_COMMANDLINE_LIBRARYMESSAGES_H
#define VARNO_APPS_VARNO_COMMANDLINE_LIBRARYMESSAGES_H

namespace varno {

/// While one exists, what libraries write to standard error is lost: decoders and sound systems print
/// messages of their own there, and the program reports the same in its own words. Its own messages, and what
/// sanitizers report, arrive. Several may exist at a time, on any threads. No other program may be started
/// meanwhile: it would inherit the lost stream.
class LibrariesSilenced {
public:
    LibrariesSilenced() noexcept;
    LibrariesSilenced(const LibrariesSilenced&) = delete;
    LibrariesSilenced& operator=(const LibrariesSilenced&) = delete;
    ~LibrariesSilenced();
};

/// The descriptor of standard error, for the program's own messages. [any]
int standardError() noexcept;

} // namespace varno

#endif
