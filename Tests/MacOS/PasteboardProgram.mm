// A program that uses the pasteboard: "set FILE" and "get" through the clipboard's own class; "copy TEXT",
// "paste" and "color", which copies something that is no text, as any other program does. Fails where there
// is no text.
#include "AAX_CAutoreleasePool.h"
#include "Platform/Clipboard.h"

#import <AppKit/AppKit.h>
#include <fstream>
#include <iostream>
#include <sstream>

namespace {

bool copy(NSString* type, NSData* data) {
    NSPasteboard* const pasteboard = [NSPasteboard generalPasteboard];
    [pasteboard declareTypes:[NSArray arrayWithObject:type] owner:nil];
    return [pasteboard setData:data forType:type];
}

// As bytes: macOS's pasteboard keeps a string as UTF-8, GNUstep's in a form of its own.
bool paste() {
    NSData* const data = [[NSPasteboard generalPasteboard] dataForType:NSPasteboardTypeString];
    const auto* const bytes = static_cast<const char*>([data bytes]);
    return data != nil && std::cout.write(bytes, static_cast<std::streamsize>([data length]));
}

bool get() {
    const auto clipboard = varno::Clipboard::shared();
    const auto text = clipboard->text();
    return text && varno::Clipboard::shared() == clipboard && std::cout << *text;
}

bool set(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return varno::Clipboard::shared()->setText(text.str());
}

} // namespace

int main(int count, char** words) {
    const AAX_CAutoreleasePool pool;
    const std::string command = count > 1 ? words[1] : "";
    const std::string argument = count > 2 ? words[2] : "";
    const bool done = command == "set"     ? set(argument)
                      : command == "get"   ? get()
                      : command == "paste" ? paste()
                      : command == "copy"
                          ? copy(NSPasteboardTypeString, [NSData dataWithBytes:argument.data()
                                                                        length:argument.size()])
                          : copy(NSPasteboardTypeColor, [NSData dataWithBytes:"red" length:3]);
    return done ? 0 : 1;
}
