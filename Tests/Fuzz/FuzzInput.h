/// Parts of a fuzzer's input.
#ifndef VARNO_TESTS_FUZZ_FUZZINPUT_H
#define VARNO_TESTS_FUZZ_FUZZINPUT_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace varno::fuzz {

/// Takes values off the front of an input; zeros when it is used up.
class FuzzInput {
public:
    explicit FuzzInput(std::string_view bytes)
        : mRest(bytes) {}

    /// A number with the bytes that come next.
    template<class Number>
    Number take() {
        static_assert(std::is_arithmetic_v<Number>);
        Number number{};
        const std::size_t count = std::min(sizeof number, mRest.size());
        std::memcpy(&number, mRest.data(), count);
        mRest.remove_prefix(count);
        return number;
    }

    /// A number below `count`, of one byte. @param count 1 to 256
    std::size_t choose(std::size_t count) { return take<unsigned char>() % count; }

    /// What has not been taken.
    std::string_view rest() const { return mRest; }

private:
    std::string_view mRest;
};

/// Text as bytes, and bytes as text.
inline std::span<const std::byte> bytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

inline std::string textOf(std::span<const std::byte> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The bytes of a number, as take() reads them.
template<class Number>
std::string textOfNumber(Number number) {
    return textOf(std::as_bytes(std::span(&number, 1)));
}

} // namespace varno::fuzz

#endif
