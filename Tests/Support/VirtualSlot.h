/// Slots of virtual tables, for tests of the order in which an interface declares its operations.
#ifndef VARNO_TESTS_SUPPORT_VIRTUALSLOT_H
#define VARNO_TESTS_SUPPORT_VIRTUALSLOT_H

#include <cstddef>
#include <cstring>

namespace varno {

/// The slot of a virtual method in its class's table, from 0. A virtual destructor takes two slots (complete
/// and deleting). Read from the pointer to member, whose form the Itanium C++ ABI (2.3) fixes: the offset of
/// the slot in bytes, marked as virtual by a 1 added to it or, on 64-bit ARM, by the lowest bit of its second
/// word.
template<class Method>
std::ptrdiff_t slotOf(Method method) {
    std::ptrdiff_t words[2];
    static_assert(sizeof(method) == sizeof(words));
    std::memcpy(words, &method, sizeof(words));
    constexpr std::ptrdiff_t kSlotBytes = sizeof(void*);
#if defined(__aarch64__)
    return words[0] / kSlotBytes;
#else
    return (words[0] - 1) / kSlotBytes;
#endif
}

/// Slots that a virtual destructor takes at the start of a class that declares it first.
inline constexpr std::ptrdiff_t kDestructorSlots = 2;

} // namespace varno

#endif
