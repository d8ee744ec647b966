/// Checks that an interface declares its operations in order, and that a wrapper forwards each to the host.
#ifndef VARNO_TESTS_SUPPORT_FORWARDINGCHECK_H
#define VARNO_TESTS_SUPPORT_FORWARDINGCHECK_H

#include "Tests/Support/FakeUnknown.h"

#include <cstddef>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

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

/// What operations of a wrapper return where it has no host object, and where the host lacks the version of
/// the interface that carries them.
inline constexpr AAX_Result kWithoutHost = AAX_ERROR_NULL_OBJECT;
inline constexpr AAX_Result kWithoutVersion = AAX_ERROR_UNIMPLEMENTED;

/// A text to pass as an argument. Its address is the same in all of a program's files.
inline constexpr char kTextCharacters[] = "text";
inline constexpr const char* kText = kTextCharacters;

/// Some object of type T that lives as long as the program; another one for each number.
template<class T, int kNumber = 0>
T* somewhere() {
    static T object{};
    return &object;
}

/// One operation of `Interface` with the arguments of a test.
template<class Interface>
struct Operation {
    std::string name;
    int version = 0;                            ///< The host's interface that carries it, from 1.
    AAX_Result whenAbsent = AAX_SUCCESS;        ///< The result when the host lacks that version.
    std::ptrdiff_t slot = 0;                    ///< Its place in the interface's virtual table.
    std::function<AAX_Result(Interface&)> call; ///< Calls it.
    std::string hostCall;                       ///< What then reaches the host, as callText has it.
};

/// The operation `method`, which is expected to reach the host under `name` with the same arguments; an
/// argument taken by reference is given as std::ref and reaches the host as a pointer.
template<class Interface, class Method, class... Arguments>
Operation<Interface> operation(const std::string& name, int version, AAX_Result whenAbsent, Method method,
                               Arguments... arguments) {
    return {name,
            version,
            whenAbsent,
            slotOf(method),
            [=](Interface& wrapper) -> AAX_Result { return std::invoke(method, wrapper, arguments...); },
            callText(name, arguments...)};
}

/// The same operation, expected to reach the host as `hostCall`.
template<class Interface>
Operation<Interface> reaching(Operation<Interface> operation, const std::string& hostCall) {
    operation.hostCall = hostCall;
    return operation;
}

template<class Interface>
std::vector<std::ptrdiff_t> slotsOf(const std::vector<Operation<Interface>>& operations) {
    std::vector<std::ptrdiff_t> slots;
    for (const auto& operation : operations) {
        slots.push_back(operation.slot);
    }
    return slots;
}

/// Expects the slots to follow the destructor's without gaps.
inline void expectConsecutive(const std::vector<std::ptrdiff_t>& slots) {
    for (std::size_t i = 0; i < slots.size(); ++i) {
        EXPECT_EQ(slots[i], kDestructorSlots + static_cast<std::ptrdiff_t>(i)) << "operation " << i;
    }
}

/// A host object that offers versions of one interface, each by a Fake of its own, so that it shows which is
/// called.
template<class Fake>
class VersionedHost {
public:
    /// `versions` are the interfaces' identifiers from version 1 on; `withheld` is one of 1 to their number,
    /// or 0.
    VersionedHost(const std::vector<acfIID>& versions, int withheld) {
        for (std::size_t i = 0; i < versions.size(); ++i) {
            mFakes.push_back(std::make_unique<Fake>());
            if (static_cast<int>(i) + 1 != withheld) {
                mHost.offer(versions[i], mFakes.back().get());
            }
        }
    }

    FakeHost* object() { return &mHost; }
    Fake& version(int number) { return *mFakes[static_cast<std::size_t>(number - 1)]; }

    /// The calls that have reached the host since this was last called, each with its version: "2.Name(...)".
    std::vector<std::string> takeCalls() {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < mFakes.size(); ++i) {
            for (const std::string& call : mFakes[i]->calls) {
                all.push_back(std::to_string(i + 1) + "." + call);
            }
            mFakes[i]->calls.clear();
        }
        return all;
    }

    std::int32_t references() const {
        std::int32_t sum = mHost.references();
        for (const auto& fake : mFakes) {
            sum += fake->references();
        }
        return sum;
    }

private:
    FakeHost mHost;
    std::vector<std::unique_ptr<Fake>> mFakes;
};

/// Calls all operations of a wrapper that `make` builds on a host object: with every version, with each one
/// withheld in turn, and with no host at all. Expects each to reach its version unchanged and to return the
/// host's result, or to return its code and reach nothing; and the host's references to be released.
template<class Fake, class Interface, class Make>
void expectForwarding(const std::vector<acfIID>& versions,
                      const std::vector<Operation<Interface>>& operations, Make make) {
    for (int withheld = 0; withheld <= static_cast<int>(versions.size()); ++withheld) {
        SCOPED_TRACE("without version " + std::to_string(withheld));
        VersionedHost<Fake> host(versions, withheld);
        {
            const std::unique_ptr<Interface> wrapper = make(host.object());
            EXPECT_TRUE(host.takeCalls().empty());
            for (const auto& operation : operations) {
                SCOPED_TRACE(operation.name);
                const AAX_Result result = operation.call(*wrapper);
                if (operation.version == withheld) {
                    EXPECT_EQ(result, operation.whenAbsent);
                    EXPECT_EQ(host.takeCalls(), std::vector<std::string>{});
                } else {
                    EXPECT_EQ(result, kHostResult);
                    EXPECT_EQ(host.takeCalls(), std::vector<std::string>{std::to_string(operation.version) +
                                                                         "." + operation.hostCall});
                }
            }
        }
        EXPECT_EQ(host.references(), 0);
    }
    const std::unique_ptr<Interface> alone = make(nullptr);
    for (const auto& operation : operations) {
        EXPECT_EQ(operation.call(*alone), operation.whenAbsent) << operation.name;
    }
}

/// A host that throws whenever it is released.
class HostThrowingAtRelease : public FakeHost {
public:
    std::uint32_t Release() override {
        FakeHost::Release();
        throw std::runtime_error("released");
    }
};

/// Expects the ReleaseHost of a Wrapper, which holds each of these interfaces of its host, to release them
/// all and to throw what the host throws.
template<class Wrapper>
void expectReleaseOfAll(const std::vector<acfIID>& interfaces) {
    HostThrowingAtRelease host;
    for (const acfIID& offered : interfaces) {
        host.offer(offered, &host);
    }
    Wrapper wrapper(&host);
    EXPECT_EQ(host.references(), static_cast<std::int32_t>(interfaces.size()));
    EXPECT_THROW(wrapper.ReleaseHost(), std::runtime_error);
    EXPECT_EQ(host.references(), 0);
    EXPECT_NO_THROW(wrapper.ReleaseHost());
}

} // namespace varno

#endif
