/// Another program that shares the clipboard: xclip.
#ifndef VARNO_TESTS_SUPPORT_XCLIP_H
#define VARNO_TESTS_SUPPORT_XCLIP_H

#include "Tests/Support/ChildProcess.h"

#include <cstdio>
#include <memory>
#include <string>

namespace varno::test {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
/// A file without a name, gone when closed.
using NamelessFile = std::unique_ptr<std::FILE, CloseFile>;

/// Has a text for others from shortly after its making until its end.
class XclipSource {
public:
    /// `target` names the kind of what is offered.
    explicit XclipSource(const std::string& text, const std::string& target = "UTF8_STRING");

    bool isRunning() { return !mProcess.status(); }

private:
    NamelessFile mText;
    ChildProcess mProcess;
};

/// Asks whoever has a text for it.
class XclipReader {
public:
    XclipReader();

    /// Whether it has been answered.
    bool isDone() { return mProcess.status().has_value(); }
    /// What it was given once it is done; empty where there was no text.
    std::string text() const;

private:
    NamelessFile mText;
    ChildProcess mProcess;
};

} // namespace varno::test

#endif
