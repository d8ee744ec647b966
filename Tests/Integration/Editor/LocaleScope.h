/// Another country's way of writing numbers.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_LOCALESCOPE_H
#define VARNO_TESTS_INTEGRATION_EDITOR_LOCALESCOPE_H

#include <clocale>
#include <memory>
#include <string>

namespace varno::test {

class TemporaryFolder;

/// The program's locale for as long as this lives; compiled into a temporary folder, so that the system need
/// not have it.
class LocaleScope {
public:
    /// Throws std::runtime_error where the system has no source for the locale, such as "de_DE".
    explicit LocaleScope(const std::string& source);
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
    ~LocaleScope();

    const std::string& name() const { return mName; }
    std::string decimalPoint() const { return std::localeconv()->decimal_point; }

private:
    std::unique_ptr<TemporaryFolder> mFolder;
    std::string mName;
    std::string mBefore;
};

} // namespace varno::test

#endif
