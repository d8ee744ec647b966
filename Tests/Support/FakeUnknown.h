/// Host objects for tests: they offer what a test passes to them, count their references and record their
/// calls.
#ifndef VARNO_TESTS_SUPPORT_FAKEUNKNOWN_H
#define VARNO_TESTS_SUPPORT_FAKEUNKNOWN_H

#include "AAX_Errors.h"
#include "ACF/IACFUnknown.h"

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace varno {

/// Implements the component part of `Interface`, which derives from IACFUnknown. The test owns it:
/// the references that others hold are counted, and nothing happens when none is left.
template<class Interface>
class FakeUnknown : public Interface {
public:
    virtual ~FakeUnknown() = default;

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        *outObject = nullptr;
        for (const auto& [offered, object] : mOffers) {
            if (offered == iid && object != nullptr) {
                object->AddRef();
                *outObject = object;
                return ACF_OK;
            }
        }
        return ACF_E_NOINTERFACE;
    }
    std::uint32_t AddRef() override { return static_cast<std::uint32_t>(++mReferences); }
    std::uint32_t Release() override { return static_cast<std::uint32_t>(--mReferences); }

    /// Answers queries for `iid` with `object` (borrowed); null withholds the interface again.
    void offer(const acfIID& iid, IACFUnknown* object) {
        std::erase_if(mOffers, [&](const auto& entry) { return entry.first == iid; });
        mOffers.emplace_back(iid, object);
    }

    /// References that others hold now.
    std::int32_t references() const { return mReferences; }

private:
    std::vector<std::pair<acfIID, IACFUnknown*>> mOffers;
    std::int32_t mReferences = 0;
};

/// A host object that only offers others.
using FakeHost = FakeUnknown<IACFUnknown>;

/// A host object that records the interfaces that it is asked for.
class AskedHost : public FakeHost {
public:
    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        asked.push_back(iid);
        return FakeHost::QueryInterface(iid, outObject);
    }

    std::vector<acfIID> asked; ///< In the order of the queries.
};

/// What a recording host object returns by default: a code that the library layer itself never returns.
inline constexpr AAX_Result kHostResult = -4321;

/// One argument as text: numbers by value, pointers and references by address.
template<class T>
std::string argumentText(const T& argument) {
    std::ostringstream text;
    if constexpr (std::is_same_v<T, std::nullptr_t>) {
        text << "at 0";
    } else if constexpr (std::is_pointer_v<T>) {
        text << "at " << std::hex << reinterpret_cast<std::uintptr_t>(argument);
    } else if constexpr (std::is_enum_v<T>) {
        text << static_cast<std::int64_t>(argument);
    } else {
        text << +argument;
    }
    return text.str();
}

template<class T>
std::string argumentText(const std::reference_wrapper<T>& argument) {
    return argumentText(&argument.get());
}

/// One call as text.
template<class... Arguments>
std::string callText(const std::string& name, const Arguments&... arguments) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + argumentText(arguments)), ...);
    return name + "(" + list + ")";
}

/// Base of a host object whose operations record their arguments and return `result`.
template<class Interface>
class Recording : public FakeUnknown<Interface> {
public:
    /// The calls so far, as callText has them.
    mutable std::vector<std::string> calls;
    /// What the operations return.
    AAX_Result result = kHostResult;
    /// The object that operations return which make one, whatever their result (borrowed; each adds a
    /// reference).
    IACFUnknown* made = nullptr;

protected:
    AAX_Result handOut(AAX_Result answer, IACFUnknown** outObject) const {
        if (made != nullptr) {
            made->AddRef();
        }
        *outObject = made;
        return answer;
    }

    template<class... Arguments>
    AAX_Result note(const char* name, const Arguments&... arguments) const {
        calls.push_back(callText(name, arguments...));
        return result;
    }
};

} // namespace varno

#endif
