#ifndef VARNO_TESTS_SUPPORT_ENVIRONMENTVARIABLE_H
#define VARNO_TESTS_SUPPORT_ENVIRONMENTVARIABLE_H

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace varno::test {

/// Sets a variable of the process's environment while it exists, and restores it afterwards: test cases of a
/// program run one after the other in one process.
class EnvironmentVariable {
public:
    EnvironmentVariable(std::string name, const std::string& value)
        : mName(std::move(name)) {
        if (const char* const before = std::getenv(mName.c_str())) {
            mBefore = before;
        }
        setenv(mName.c_str(), value.c_str(), 1);
    }
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    ~EnvironmentVariable() {
        if (mBefore) {
            setenv(mName.c_str(), mBefore->c_str(), 1);
        } else {
            unsetenv(mName.c_str());
        }
    }

private:
    std::string mName;
    std::optional<std::string> mBefore;
};

} // namespace varno::test

#endif
