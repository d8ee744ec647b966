/// What GNUstep's pasteboard lacks of that of macOS.
#ifndef VARNO_TESTS_MACOS_CLEARCONTENTS_H
#define VARNO_TESTS_MACOS_CLEARCONTENTS_H

#import <AppKit/NSPasteboard.h>

@interface NSPasteboard (ClearContents)
/// Empties it for new contents. GNUstep takes only such types as were declared, so plain text is.
- (NSInteger)clearContents;
@end

#endif
