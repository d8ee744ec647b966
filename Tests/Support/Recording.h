/// Fakes that write down how they are called.
#ifndef VARNO_TESTS_SUPPORT_RECORDING_H
#define VARNO_TESTS_SUPPORT_RECORDING_H

#include "AAX_Errors.h"
#include "Tests/Support/FakeUnknown.h"

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace varno {

/// What a recording host object answers unless it is told otherwise: no code that the library layer knows.
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

/// Base of a host object whose operations only note their arguments and answer `result`.
template<class Interface>
class Recording : public FakeUnknown<Interface> {
public:
    /// The calls so far, as callText has them.
    mutable std::vector<std::string> calls;
    /// What the operations answer.
    AAX_Result result = kHostResult;
    /// What the operations that make an object hand out, whatever they answer (borrowed; a reference goes
    /// with it).
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
