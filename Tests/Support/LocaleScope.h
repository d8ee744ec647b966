/// Another country's locale of the C library, as a host may set it.
#ifndef VARNO_TESTS_SUPPORT_LOCALESCOPE_H
#define VARNO_TESTS_SUPPORT_LOCALESCOPE_H

#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace varno::test {

/// The C locale of another country for as long as this lives. Compiled into a temporary folder, so that the
/// system need not have it.
class LocaleScope {
public:
    /// Throws std::runtime_error where the system has no source for the locale, such as "de_DE".
    explicit LocaleScope(const std::string& source)
        : mName(source + ".UTF-8"),
          mBefore(std::setlocale(LC_ALL, nullptr)) {
        run({"localedef", "--no-archive", "-i", source, "-f", "UTF-8", mFolder / mName});
        setenv("LOCPATH", mFolder.path().c_str(), 1);
        if (std::setlocale(LC_ALL, mName.c_str()) == nullptr) {
            unsetenv("LOCPATH");
            throw std::runtime_error("the system cannot make the locale " + mName);
        }
    }
    LocaleScope(const LocaleScope&) = delete;
    LocaleScope& operator=(const LocaleScope&) = delete;
    ~LocaleScope() {
        std::setlocale(LC_ALL, mBefore.c_str());
        unsetenv("LOCPATH");
    }

    const std::string& name() const { return mName; }
    static std::string decimalPoint() { return std::localeconv()->decimal_point; }

private:
    TemporaryFolder mFolder;
    std::string mName;
    std::string mBefore;
};

} // namespace varno::test

#endif
