#ifndef VARNO_TESTS_SUPPORT_OWNUSERFOLDERS_H
#define VARNO_TESTS_SUPPORT_OWNUSERFOLDERS_H

#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

namespace varno::test {

/// While it exists, what a user has chosen and saved is neither read nor written: the folders for both are
/// empty ones of this test. A folder that is not there would not do, since the superuser can make any.
class OwnUserFolders {
private:
    TemporaryFolder mFolder;
    EnvironmentVariable mConfig{"XDG_CONFIG_HOME", mFolder / "config"};
    EnvironmentVariable mData{"XDG_DATA_HOME", mFolder / "data"};
};

} // namespace varno::test

#endif
