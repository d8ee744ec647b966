#include "Tests/Integration/Editor/LocaleScope.h"

#include "Tests/Source/Platform/TemporaryFolder.h"
#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Eventually.h"

#include <cstdlib>
#include <stdexcept>

namespace varno::test {

LocaleScope::LocaleScope(const std::string& source)
    : mFolder(std::make_unique<TemporaryFolder>()),
      mName(source + ".UTF-8"),
      mBefore(std::setlocale(LC_ALL, nullptr)) {
    ChildProcess compiler(
        {"localedef", "--no-archive", "-i", source, "-f", "UTF-8", mFolder->path() / mName});
    eventually([&] { return compiler.status().has_value(); });
    setenv("LOCPATH", mFolder->path().c_str(), 1);
    if (std::setlocale(LC_ALL, mName.c_str()) == nullptr) {
        unsetenv("LOCPATH");
        throw std::runtime_error("the system cannot make the locale " + mName);
    }
}

LocaleScope::~LocaleScope() {
    std::setlocale(LC_ALL, mBefore.c_str());
    unsetenv("LOCPATH");
}

} // namespace varno::test
