#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_ERRORTEXT_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_ERRORTEXT_H

#include "CommandLine/CommandError.h"

#include <gtest/gtest.h>
#include <string>

namespace varno::test {

/// The message of the error that `work` ends with; the test fails where it ends without one, with another
/// exit status, or with a message of more than one line.
template<typename Work>
std::string errorText(int exitStatus, Work work) {
    const auto judge = [exitStatus](const std::exception& error) {
        EXPECT_EQ(exitStatusOf(error), exitStatus) << error.what();
        std::string text = error.what();
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
        return text;
    };
    try {
        work();
    } catch (const CommandError& error) {
        return judge(error);
    } catch (const FileError& error) {
        return judge(error);
    }
    ADD_FAILURE() << "no error";
    return "";
}

} // namespace varno::test

#endif
