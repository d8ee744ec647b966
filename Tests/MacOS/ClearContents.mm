#import "ClearContents.h"

#import <Foundation/NSArray.h>

@implementation NSPasteboard (ClearContents)
- (NSInteger)clearContents {
    return [self declareTypes:[NSArray arrayWithObject:NSPasteboardTypeString] owner:nil];
}
@end
