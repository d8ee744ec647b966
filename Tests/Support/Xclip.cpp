#include "Tests/Support/Xclip.h"

#include <cerrno>
#include <system_error>

namespace varno::test {

namespace {

NamelessFile makeFile(const std::string& content) {
    NamelessFile file(std::tmpfile());
    if (file == nullptr || std::fwrite(content.data(), 1, content.size(), file.get()) != content.size() ||
        std::fflush(file.get()) != 0) {
        throw std::system_error(errno, std::generic_category(), "temporary file");
    }
    std::rewind(file.get());
    return file;
}

} // namespace

XclipSource::XclipSource(const std::string& text, const std::string& target)
    : mText(makeFile(text)),
      // Quiet: it stays in the foreground, and tells of every request.
      mProcess({"sh", "-c", "exec xclip -in -quiet -selection clipboard -target \"$0\" 2>/dev/null", target},
               {.input = fileno(mText.get())}) {
}

XclipReader::XclipReader()
    : mText(makeFile({})),
      mProcess({"xclip", "-out", "-selection", "clipboard"}, {.output = fileno(mText.get())}) {
}

std::string XclipReader::text() const {
    std::string text;
    std::rewind(mText.get());
    for (int character = std::fgetc(mText.get()); character != EOF; character = std::fgetc(mText.get())) {
        text += static_cast<char>(character);
    }
    return text;
}

} // namespace varno::test
