#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_COMMALOCALE_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_COMMALOCALE_H

#include <locale>

namespace varno::test {

/// Makes the decimal comma and the grouping point the program's locale as long as it lives.
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
