#ifndef VARNO_TESTS_SUPPORT_COMMALOCALE_H
#define VARNO_TESTS_SUPPORT_COMMALOCALE_H

#include <locale>

namespace varno::test {

/// While it lives, the program's C++ locale has a decimal comma and groups digits with points.
class CommaLocale {
public:
    CommaLocale()
        : mBefore(std::locale::global(std::locale(std::locale(), new Comma))) {}
    ~CommaLocale() { std::locale::global(mBefore); }

    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale mBefore;
};

} // namespace varno::test

#endif
