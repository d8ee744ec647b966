#include "Platform/Clipboard.h"

#include "Platform/SharedInstance.h"

#import <AppKit/AppKit.h>

// Built without automatic reference counting.

namespace varno {

namespace {

class Pasteboard final : public Clipboard {
public:
    bool setText(const std::string& text) override {
        NSPasteboard* const pasteboard = [NSPasteboard generalPasteboard];
        [pasteboard clearContents];
        NSData* const data = [[NSData alloc] initWithBytes:text.data() length:text.size()];
        const bool taken = [pasteboard setData:data forType:NSPasteboardTypeString];
        [data release];
        return taken;
    }

    std::optional<std::string> text() override {
        NSData* const data = [[NSPasteboard generalPasteboard] dataForType:NSPasteboardTypeString];
        if (data == nil) {
            return std::nullopt;
        }
        return std::string(static_cast<const char*>([data bytes]), [data length]);
    }

    // The system keeps the text.
    void handOver() override {}
};

} // namespace

std::shared_ptr<Clipboard> Clipboard::shared() {
    static std::weak_ptr<Clipboard> instance;
    return sharedInstance(instance, [] { return std::make_shared<Pasteboard>(); });
}

} // namespace varno
