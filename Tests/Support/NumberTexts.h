/// Texts that are numbers, nearly numbers or far from it, to compare readers of numbers with.
#ifndef VARNO_TESTS_SUPPORT_NUMBERTEXTS_H
#define VARNO_TESTS_SUPPORT_NUMBERTEXTS_H

#include <cstdint>
#include <cstdio>
#include <iterator>
#include <random>
#include <string>

namespace varno::test {

/// The same texts on every system, with every compiler and standard library: no expression draws twice.
class NumberTexts {
public:
    /// How many texts a test compares.
    static constexpr int kCount = 100'000;

    std::string next() {
        switch (pick(4)) {
        case 0:
            return written();
        case 1:
            return digits();
        default:
            return pieces();
        }
    }

private:
    std::size_t pick(std::size_t count) { return mRandom() % count; }

    template<std::size_t kSize>
    const char* oneOf(const char* const (&choices)[kSize]) {
        return choices[pick(kSize)];
    }

    // A number in one of the forms that printf has, of any size, and something behind it.
    std::string written() {
        static constexpr const char* kForms[] = {"%f", "%.10f", "%g", "%.17g", "%e", "%a", "%.40e", "%+G"};
        static constexpr double kScales[] = {1.0, 1e-3, 1e7, 1e38, 1e-38, 1e-45, 1e300, 1e-300, 1e-310};
        static constexpr const char* kEnds[] = {"", "", " ", "dB", "e", "E+", ".", "x"};
        const char* const form = oneOf(kForms);
        const double scale = kScales[pick(std::size(kScales))];
        char text[512];
        std::snprintf(text, sizeof text, form, static_cast<double>(mRandom()) / std::mt19937::max() * scale);
        return text + std::string(oneOf(kEnds));
    }

    // Many digits around a point, with an exponent: rounding, overflow, underflow.
    std::string digits() {
        std::string text = oneOf({"", "-", "+", " ", "0"});
        const std::size_t longest = pick(20) == 0 ? 900 : 25;
        const std::size_t count = 1 + pick(longest);
        const std::size_t point = pick(count + 1);
        for (std::size_t i = 0; i < count; ++i) {
            text += i == point ? "." : "";
            const std::size_t range = pick(3) == 0 ? 1 : 10;
            text += static_cast<char>('0' + pick(range));
        }
        if (pick(2) == 0) {
            return text;
        }
        text.append("e").append(oneOf({"", "-", "+"}));
        return text.append(std::to_string(pick(400)));
    }

    // What numbers are made of, in any order.
    std::string pieces() {
        static constexpr const char* kPieces[] = {
            "0",  "1",   "9",   "00",    "25",  ".",    ".",    "-",   "+",     "e",     "E",
            "e1", "e-1", "e+",  "p",     "P1",  "0x",   "0X1",  "x.8", "f",     "a",     ",",
            "i",  "n",   "inf", "inity", "nan", "NaN(", "1e99", "_",   " ",     "\t",    "\n",
            "\v", "\f",  "\r",  "999",   "'",   "d",    "l",    "0e",  "1e400", "e-999", "\xA0"};
        std::string text;
        for (std::size_t i = 0, count = pick(7); i < count; ++i) {
            text += oneOf(kPieces);
        }
        return text;
    }

    std::mt19937 mRandom{20260301};
};

/// One number for many results, to compare runs that cannot see each other, as those with another standard
/// library.
class Fingerprint {
public:
    void add(std::uint64_t bits) {
        constexpr std::uint64_t kPrime = 0x100000001B3;
        mValue = (mValue ^ (bits >> 32U)) * kPrime;
        mValue = (mValue ^ (bits & 0xFFFFFFFFU)) * kPrime;
    }
    std::uint64_t value() const { return mValue; }

private:
    std::uint64_t mValue = 0xCBF29CE484222325;
};

} // namespace varno::test

#endif
