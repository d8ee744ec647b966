#include "AAX_CAutoreleasePool.h"

#import <Foundation/Foundation.h>

// Built without automatic reference counting, under which this class of the system's cannot be used.

AAX_CAutoreleasePool::AAX_CAutoreleasePool()
    : mPool([[NSAutoreleasePool alloc] init]) {
}

AAX_CAutoreleasePool::~AAX_CAutoreleasePool() {
    [static_cast<NSAutoreleasePool*>(mPool) release];
}
