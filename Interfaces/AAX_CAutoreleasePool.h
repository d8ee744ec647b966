/// A scope for objects of the system that are released later.
#ifndef VARNO_INTERFACES_AAX_CAUTORELEASEPOOL_H
#define VARNO_INTERFACES_AAX_CAUTORELEASEPOOL_H

/// On macOS it releases everything that was autoreleased during its lifetime when it is destroyed; elsewhere
/// it does nothing. It lives on the stack of one function, on the thread that made it. [main]
class AAX_CAutoreleasePool {
public:
    AAX_CAutoreleasePool();
    AAX_CAutoreleasePool(const AAX_CAutoreleasePool&) = delete;
    AAX_CAutoreleasePool& operator=(const AAX_CAutoreleasePool&) = delete;
    ~AAX_CAutoreleasePool();

private:
    void* mPool; ///< The system's pool, owned; null where there is no such thing.
};

#endif
