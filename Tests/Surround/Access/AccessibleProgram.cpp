// A program with a window for screen readers. What one does to it is a line on standard output; a line on
// standard input changes it, and the end of that ends the program.
#include "Surround/Access/AccessBridge.h"
#include "Tests/Surround/Access/TestWindow.h"

#include <array>
#include <cstdio>
#include <iostream>
#include <poll.h>
#include <sstream>
#include <unistd.h>

namespace varno::test {
namespace {

constexpr int kTickMs = 33;

// "value Gain 6.0 6.0 dB", "name message saved", "focus Gain 1"
void change(TestWindow& window, const std::string& line) {
    std::istringstream words(line);
    std::string what;
    std::string id;
    words >> what >> id;
    AccessNode& part = window.part(id);
    if (what == "value") {
        words >> part.range->current >> std::ws;
        std::getline(words, part.valueText);
    } else if (what == "name") {
        words >> std::ws;
        std::getline(words, part.name);
    } else {
        words >> part.states.isFocused;
    }
}

void serve() {
    TestWindow window;
    AccessBridge bridge("Accessible program", window);
    std::array<pollfd, 2> watched{{{STDIN_FILENO, POLLIN, 0}, {bridge.descriptor(), POLLIN, 0}}};
    for (;;) {
        poll(watched.data(), watched.size(), kTickMs);
        std::string line;
        if (watched.front().revents != 0) {
            if (!std::getline(std::cin, line)) {
                return;
            }
            change(window, line);
        }
        bridge.tick();
        for (const std::string& note : window.notes) {
            std::cout << note << std::endl;
        }
        window.notes.clear();
    }
}

} // namespace
} // namespace varno::test

int main() {
    varno::test::serve();
    return 0;
}
