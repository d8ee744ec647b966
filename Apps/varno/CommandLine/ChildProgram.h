#ifndef VARNO_APPS_VARNO_COMMANDLINE_CHILDPROGRAM_H
#define VARNO_APPS_VARNO_COMMANDLINE_CHILDPROGRAM_H

#include "Files/Transfer.h"

#include <array>
#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace varno {

/// Another program as it runs, whose standard output and standard error are read. It is killed with this
/// object where it still runs then. One thread.
class ChildProgram {
public:
    /// Starts it. @param program a path, or a name that is searched for in PATH @param arguments after its
    /// name @param input what it reads as standard input; this program's own where it is not open
    /// @throws WorkError where the system makes no pipe
    ChildProgram(std::string program, std::vector<std::string> arguments, const FileDescriptor& input = {});
    ChildProgram(const ChildProgram&) = delete;
    ChildProgram& operator=(const ChildProgram&) = delete;
    ~ChildProgram();

    /// The system's error number where it was not started; 0 where it was.
    int error() const { return mError; }

    /// Reads both outputs until the program has closed them. @return whether they ended in time
    /// @throws Interrupted
    bool readAll(std::chrono::milliseconds patience);

    /// Waits for its end. @return whether it ended with exit status 0
    bool succeeds();

    const std::string& out() const { return mTexts[0]; }
    const std::string& err() const { return mTexts[1]; }

private:
    struct Pipe {
        FileDescriptor read;
        FileDescriptor written;
    };
    static Pipe makePipe();

    Pipe mOut;
    Pipe mErr;
    pid_t mPid = -1; ///< -1 where none is to be waited for
    int mError = 0;
    std::array<std::string, 2> mTexts;
};

} // namespace varno

#endif
