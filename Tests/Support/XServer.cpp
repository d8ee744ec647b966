#include "Tests/Support/XServer.h"

#include "Tests/Support/Eventually.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>

namespace varno::test {

namespace {

// The pipe on which the server names its display. The writing end is let through to it and closed here once
// it runs, so that the reading end finishes where the server dies.
class NamePipe {
public:
    NamePipe() {
        if (pipe(mEnds.data()) != 0) {
            throw std::system_error(errno, std::generic_category(), "pipe");
        }
    }
    NamePipe(const NamePipe&) = delete;
    NamePipe& operator=(const NamePipe&) = delete;
    ~NamePipe() {
        closeWriting();
        close(mEnds[0]);
    }

    int writing() const { return mEnds[1]; }

    void closeWriting() {
        if (mEnds[1] >= 0) {
            close(mEnds[1]);
            mEnds[1] = -1;
        }
    }

    // The line that the server writes, without its end; what there is where none comes.
    std::string line() const {
        std::string text;
        char character = 0;
        while (readable() && read(mEnds[0], &character, 1) == 1 && character != '\n') {
            text += character;
        }
        return text;
    }

private:
    bool readable() const {
        pollfd wait{mEnds[0], POLLIN, 0};
        return poll(&wait, 1, static_cast<int>(std::chrono::milliseconds(kGenerousDeadline).count())) == 1;
    }

    std::array<int, 2> mEnds{-1, -1};
};

std::string sizeOf(XServer::Screen screen) {
    return std::to_string(screen.width) + "x" + std::to_string(screen.height) + "x24";
}

} // namespace

XServer::XServer(Screen screen, const std::vector<std::string>& more) {
    NamePipe name;
    // Without -noreset the server starts afresh whenever its last client leaves, and may refuse the next
    // meanwhile.
    std::vector<std::string> words = {"Xvfb",     "-displayfd", std::to_string(name.writing()),
                                      "-screen",  "0",          sizeOf(screen),
                                      "-noreset", "-nolisten",  "tcp"};
    words.insert(words.end(), more.begin(), more.end());
    mProcess.emplace(words);
    name.closeWriting();
    const std::string number = name.line();
    if (number.empty()) {
        throw std::runtime_error("Xvfb did not come up");
    }
    mDisplay = ":" + number;
}

} // namespace varno::test
