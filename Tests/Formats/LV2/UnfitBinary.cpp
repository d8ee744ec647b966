// A binary that hosts should not load: it exports too much, starts processes and needs the C++ library.
#include <string>
#include <unistd.h>

extern "C" [[gnu::visibility("default"), gnu::used]] int leakedFunction(const char* text) {
    const std::string copy(text);
    return copy.empty() ? static_cast<int>(vfork()) : static_cast<int>(copy.size());
}
