/// Tests of the window on a screen, which use the mouse as a person does.
#ifndef VARNO_TESTS_FORMATS_CLAP_WINDOW_CLAPWINDOWTEST_H
#define VARNO_TESTS_FORMATS_CLAP_WINDOW_CLAPWINDOWTEST_H

#include "Surround/BarLayout.h"
#include "Tests/Formats/CLAP/Window/ClapWindowHost.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/OwnUserFolders.h"

#include <gtest/gtest.h>
#include <string>

namespace varno::test {

/// On an X server that all tests of the program share.
class ClapWindowTest : public testing::Test {
protected:
    ClapWindowTest();

    /// Rounds of the host until the condition holds; false where it still does not at a generous deadline.
    template<class Condition>
    static bool await(ClapWindowHost& host, Condition condition) {
        return eventually([&] {
            host.turn();
            return condition();
        });
    }
    /// Waits until the editor is drawn.
    void expectShown(ClapWindowHost& host);
    /// What a control of the editor looks like.
    Picture pictureOf(ClapWindowHost& host, const std::string& id) const;

    // The mouse. Each returns when the window has received its events.

    void point(ClapWindowHost& host, const std::string& id, Place inControl);
    void pointAt(ClapWindowHost& host, Place inWindow);
    void press(ClapWindowHost& host);
    void release(ClapWindowHost& host);
    void click(ClapWindowHost& host, const std::string& id);
    void clickBar(ClapWindowHost& host, BarLayout::Button button);

    const OwnUserFolders folders;
    const XClient client;
    Pointer pointer{client};
};

} // namespace varno::test

#endif
