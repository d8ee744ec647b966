#include "AAX_CAutoreleasePool.h"

AAX_CAutoreleasePool::AAX_CAutoreleasePool()
    : mPool(nullptr) {
}

AAX_CAutoreleasePool::~AAX_CAutoreleasePool() {
    static_cast<void>(mPool);
}
