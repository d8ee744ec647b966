/// `varno edit`, run on an X server of its own, with a module whose editor shows an empty view.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_EDITTEST_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_EDITTEST_H

#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/XServer.h"

#include <memory>

namespace varno::test {

/// The view of the fixture module's editor, in pixels.
inline constexpr int kFixtureWidth = 320;
inline constexpr int kFixtureHeight = 240;

class EditTest : public ProgramTest {
protected:
    /// Starts the program in the test's folder; returns when its window is on the screen.
    std::unique_ptr<Subprocess> edit(const std::vector<std::string>& arguments) const;
    /// Runs it to its end.
    Outcome runEdit(const std::vector<std::string>& arguments) const;
    /// Runs it and expects that it prints one line on standard error and nothing else.
    /// @return the line without its start "varno: " and its end
    std::string refusedEdit(int status, const std::vector<std::string>& arguments) const;

    /// The program's window; none where it has none on the screen.
    xcb_window_t window() const;
    /// Where its upper left corner is on the screen, within the frame of a window manager.
    Place corner() const;
    /// The bytes of a property of a window; empty where it has none.
    std::string property(xcb_window_t window, const std::string& name) const;
    /// A text property of the program's window.
    std::string text(const std::string& name) const { return property(window(), name); }
    xcb_atom_t atom(const std::string& name) const;
    /// Requests that the window closes, as a window manager does.
    void close() const;
    /// Gives the program's window the keyboard focus and taps a key while others are held.
    void tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held = {}) const;

    static std::string bundle(const std::string& name);

    XServer mServer;
    XClient mPerson{mServer.display()};
    Keyboard mKeyboard{mPerson};

private:
    std::vector<std::string> words(const std::vector<std::string>& arguments) const;
    Surroundings surroundings() const;
    xcb_window_t windowIn(xcb_window_t parent) const;
};

} // namespace varno::test

#endif
