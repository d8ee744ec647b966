/// The system's clipboard, for plain text.
#ifndef VARNO_SOURCE_PLATFORM_CLIPBOARD_H
#define VARNO_SOURCE_PLATFORM_CLIPBOARD_H

#include <memory>
#include <optional>
#include <string>

namespace varno {

/// Texts are UTF-8. Everything is [main].
class Clipboard {
public:
    /// The module's one clipboard, made by the first call. Every editor holds it: where a text stays with the
    /// program that set it (X11), other programs cannot get it after the last holder has gone, unless it was
    /// handed over.
    static std::shared_ptr<Clipboard> shared();

    virtual ~Clipboard() = default;

    /// Replaces the content of the clipboard. False where there is no clipboard; its content then stays.
    /// [main]
    virtual bool setText(const std::string& text) = 0;

    /// The text on the clipboard; empty where there is none, or where its owner does not send all of it
    /// within a second. [main]
    virtual std::optional<std::string> text() = 0;

    /// To be called when an editor's view closes: where a text stays with the program that set it and the
    /// desktop has a clipboard manager, the manager gets the text, so that it outlives the module. Waits 250
    /// ms at most, once for each text. [main]
    virtual void handOver() = 0;

protected:
    Clipboard() = default;
    Clipboard(const Clipboard&) = default;
    Clipboard& operator=(const Clipboard&) = default;
};

} // namespace varno

#endif
