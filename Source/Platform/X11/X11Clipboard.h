/// The clipboard of an X display.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11CLIPBOARD_H
#define VARNO_SOURCE_PLATFORM_X11_X11CLIPBOARD_H

#include "Platform/Clipboard.h"
#include "Platform/RunLoop.h"

#include <memory>
#include <optional>
#include <string>

namespace varno {

/// Has a connection of its own, made at the first use and again after it was lost. Other programs can get the
/// text while the run loop is driven. [main]
class X11Clipboard final : public Clipboard {
public:
    /// @param display its name; empty takes that of the environment
    explicit X11Clipboard(std::shared_ptr<RunLoop> loop, std::string display = {});
    X11Clipboard(const X11Clipboard&) = delete;
    X11Clipboard& operator=(const X11Clipboard&) = delete;
    ~X11Clipboard() override;

    bool setText(const std::string& text) override;
    std::optional<std::string> text() override;
    void handOver() override;

private:
    struct Session;

    /// Handles pending events; false where no connection can be made.
    bool connected();
    void pump();

    std::shared_ptr<RunLoop> mLoop;
    std::string mDisplay;
    std::unique_ptr<Session> mSession;
    bool mIsOffered = false; ///< The present text, to the clipboard manager.
};

} // namespace varno

#endif
