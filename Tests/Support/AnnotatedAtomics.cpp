// Atomic operations that helgrind understands.
//
// Helgrind sees instructions, of which it cannot tell whether a program means them to be atomic. In a build
// with VARNO_ANNOTATED_ATOMICS the compiler calls a function for each atomic operation, as it does for the
// thread sanitizer, and for nothing else. These are the functions: they tell helgrind what an operation
// orders, by the order that the program asks for, so that a relaxed one orders nothing. The operation itself
// is one of the processor's locked instructions or a load, all of which helgrind takes for reads, so that no
// two of them are a race.

#include <cstdint>
#include <valgrind/helgrind.h>

// The names and types are the compiler's, which would warn of those of other functions.
// NOLINTBEGIN(bugprone-reserved-identifier)
namespace {

// The order of an operation, as the compiler passes it.
constexpr bool isAcquire(int order) {
    return order == __ATOMIC_CONSUME || order == __ATOMIC_ACQUIRE || order == __ATOMIC_ACQ_REL ||
           order == __ATOMIC_SEQ_CST;
}
constexpr bool isRelease(int order) {
    return order == __ATOMIC_RELEASE || order == __ATOMIC_ACQ_REL || order == __ATOMIC_SEQ_CST;
}

// All that this thread has done so far happens before what a thread does that acquires there later.
[[gnu::always_inline]] inline void beforeOperation(const volatile void* place, int order) {
    if (isRelease(order)) {
        ANNOTATE_HAPPENS_BEFORE(place);
    }
}
[[gnu::always_inline]] inline void afterOperation(const volatile void* place, int order) {
    if (isAcquire(order)) {
        ANNOTATE_HAPPENS_AFTER(place);
    }
}

// One that fails counts as a release too: it cannot be known before.
template<class Value>
[[gnu::always_inline]] inline bool exchangeIf(volatile Value* place, Value* ioExpected, Value desired,
                                              int order, int orderOfFailure) {
    beforeOperation(place, order);
    const bool isDone =
        __atomic_compare_exchange_n(place, ioExpected, desired, false, __ATOMIC_SEQ_CST, __ATOMIC_SEQ_CST);
    afterOperation(place, isDone ? order : orderOfFailure);
    return isDone;
}

} // namespace

#define VARNO_READ_AND_WRITE(bits, name, operation)                                                          \
    std::uint##bits##_t __tsan_atomic##bits##_##name(volatile std::uint##bits##_t* place,                    \
                                                     std::uint##bits##_t value, int order) {                 \
        beforeOperation(place, order);                                                                       \
        const std::uint##bits##_t before = operation(place, value, __ATOMIC_SEQ_CST);                        \
        afterOperation(place, order);                                                                        \
        return before;                                                                                       \
    }

#define VARNO_OPERATIONS(bits)                                                                               \
    std::uint##bits##_t __tsan_atomic##bits##_load(const volatile std::uint##bits##_t* place, int order) {   \
        const std::uint##bits##_t value = __atomic_load_n(place, __ATOMIC_SEQ_CST);                          \
        afterOperation(place, order);                                                                        \
        return value;                                                                                        \
    }                                                                                                        \
    void __tsan_atomic##bits##_store(volatile std::uint##bits##_t* place, std::uint##bits##_t value,         \
                                     int order) {                                                            \
        beforeOperation(place, order);                                                                       \
        __atomic_store_n(place, value, __ATOMIC_SEQ_CST);                                                    \
    }                                                                                                        \
    VARNO_READ_AND_WRITE(bits, exchange, __atomic_exchange_n)                                                \
    VARNO_READ_AND_WRITE(bits, fetch_add, __atomic_fetch_add)                                                \
    VARNO_READ_AND_WRITE(bits, fetch_sub, __atomic_fetch_sub)                                                \
    VARNO_READ_AND_WRITE(bits, fetch_and, __atomic_fetch_and)                                                \
    VARNO_READ_AND_WRITE(bits, fetch_or, __atomic_fetch_or)                                                  \
    VARNO_READ_AND_WRITE(bits, fetch_xor, __atomic_fetch_xor)                                                \
    std::uint##bits##_t __tsan_atomic##bits##_compare_exchange_val(                                          \
        volatile std::uint##bits##_t* place, std::uint##bits##_t expected, std::uint##bits##_t desired,      \
        int order, int orderOfFailure) {                                                                     \
        exchangeIf(place, &expected, desired, order, orderOfFailure);                                        \
        return expected;                                                                                     \
    }

extern "C" {
VARNO_OPERATIONS(8)
VARNO_OPERATIONS(16)
VARNO_OPERATIONS(32)
VARNO_OPERATIONS(64)

void __tsan_atomic_thread_fence(int) {
    __atomic_thread_fence(__ATOMIC_SEQ_CST);
}
void __tsan_atomic_signal_fence(int) {
}
// Called as each binary is loaded.
void __tsan_init() {
}
}
// NOLINTEND(bugprone-reserved-identifier)
