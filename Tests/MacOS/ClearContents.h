/// A method of macOS's pasteboard that GNUstep's lacks.
#ifndef VARNO_TESTS_MACOS_CLEARCONTENTS_H
#define VARNO_TESTS_MACOS_CLEARCONTENTS_H

#import <AppKit/NSPasteboard.h>

@interface NSPasteboard (ClearContents)
/// Empties it for new contents. GNUstep accepts only types that were declared: this declares plain text.
- (NSInteger)clearContents;
@end

#endif
