/// The message of a failure of a window.
#ifndef VARNO_TESTS_WINDOW_WINDOWERRORTEXT_H
#define VARNO_TESTS_WINDOW_WINDOWERRORTEXT_H

#include "Window/XConnection.h"

#include <gtest/gtest.h>
#include <string>

namespace varno::test {

/// The message of the error that `work` ends with; the test fails where it ends without one, or with a
/// message of more than one line.
template<typename Work>
std::string windowError(Work work) {
    try {
        work();
    } catch (const WindowError& error) {
        std::string text = error.what();
        EXPECT_EQ(text.find('\n'), std::string::npos) << text;
        return text;
    }
    ADD_FAILURE() << "no error";
    return "";
}

} // namespace varno::test

#endif
