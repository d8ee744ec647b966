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
    /// The module's one clipboard, made by the first who asks. It is held by every editor: where the system
    /// leaves a text with the program that set it (X11), it is lost to others with the last holder.
    static std::shared_ptr<Clipboard> shared();

    virtual ~Clipboard() = default;

    /// Puts the text in the place of whatever the clipboard holds. False where there is no clipboard to be
    /// had; what it held then stays. [main]
    virtual bool setText(const std::string& text) = 0;

    /// The text that the clipboard holds; empty where it holds none, or where whoever has it does not give
    /// it, or not all of it within a second. [main]
    virtual std::optional<std::string> text() = 0;

protected:
    Clipboard() = default;
    Clipboard(const Clipboard&) = default;
    Clipboard& operator=(const Clipboard&) = default;
};

} // namespace varno

#endif
