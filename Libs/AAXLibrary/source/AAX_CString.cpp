#include "AAX_CString.h"

#include "AAX_NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <string_view>

namespace {

using Double = std::numeric_limits<double>;

// Decimals of the smallest double, the longest there are; behind them are zeros.
constexpr int32_t kMostDecimals = Double::digits - Double::min_exponent;
// Characters of the largest double, with a sign, a point and the decimals of the smallest.
constexpr std::size_t kMostDigits = 1 + (Double::max_exponent10 + 1) + 1 + kMostDecimals;

// Takes one character off the front of `rest` if it is one of `accepted`.
bool TakeOne(std::string_view& rest, std::string_view accepted) {
    const bool isFound = !rest.empty() && accepted.find(rest.front()) != std::string_view::npos;
    rest.remove_prefix(isFound ? 1 : 0);
    return isFound;
}

// Takes digits off the front of `rest`. Returns whether there are any.
bool TakeDigits(std::string_view& rest) {
    const std::size_t count = std::min(rest.find_first_not_of("0123456789"), rest.size());
    rest.remove_prefix(count);
    return count > 0;
}

// What an input stream takes of a text as a decimal number: white space is skipped, and everything that could
// continue a number belongs to it. Empty where that is no number, as "1e" is none.
std::string_view NumberAtStart(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    std::string_view rest = text;
    TakeOne(rest, "+-");
    const bool hasWhole = TakeDigits(rest);
    const bool hasDecimals = TakeOne(rest, ".") && TakeDigits(rest);
    bool isNumber = hasWhole || hasDecimals;
    if (isNumber && TakeOne(rest, "eE")) {
        TakeOne(rest, "+-");
        isNumber = TakeDigits(rest);
    }
    return isNumber ? text.substr(0, text.size() - rest.size()) : std::string_view();
}

} // namespace

AAX_CString::AAX_CString(const char* text)
    : mText(text != nullptr ? text : "") {
}

AAX_CString::AAX_CString(const AAX_IString& other)
    : mText(other.Get()) {
}

uint32_t AAX_CString::Length() const {
    return static_cast<uint32_t>(mText.size());
}

uint32_t AAX_CString::MaxLength() const {
    return kMaxLength;
}

const char* AAX_CString::Get() const {
    return mText.c_str();
}

void AAX_CString::Set(const char* text) {
    mText = text;
}

AAX_CString& AAX_CString::operator=(const AAX_IString& other) {
    Set(other.Get());
    return *this;
}

AAX_CString& AAX_CString::operator=(const char* text) {
    Set(text);
    return *this;
}

AAX_CString& AAX_CString::operator=(AAX_CString&& other) noexcept {
    mText.swap(other.mText);
    return *this;
}

void AAX_CString::Erase(uint32_t pos, uint32_t n) {
    // Intentionally not the smaller of the two. Beyond the end the difference wraps, and erase throws.
    const uint32_t remaining = Length() - pos;
    mText.erase(pos, remaining < n ? n - remaining : n);
}

// A host may have set the process's locale to one with a decimal comma; texts that are saved, exchanged and
// compared must not change with it, hence std::to_chars, which uses no locale.

void AAX_CString::AppendNumber(double number, int32_t precision) {
    const int32_t decimals = std::min(precision, kMostDecimals);
    std::array<char, kMostDigits> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                       std::chars_format::fixed, decimals);
    mText.append(digits.data(), written.ptr);
    if (std::isfinite(number)) {
        mText.append(static_cast<std::size_t>(precision - decimals), '0');
    }
}

bool AAX_CString::ToDouble(double* outNumber) const {
    const std::string_view number = NumberAtStart(mText);
    const double value = number.empty() ? 0.0 : AAX_NearestDouble(number);
    const bool isNumber = !number.empty() && std::isfinite(value);
    *outNumber = isNumber ? value : 0.0;
    return isNumber;
}

void AAX_CString::SubString(uint32_t pos, uint32_t n, AAX_IString* out) const {
    out->Set(mText.substr(pos, n).c_str());
}

bool AAX_CString::operator==(const AAX_CString& other) const {
    return std::strcmp(Get(), other.Get()) == 0;
}
