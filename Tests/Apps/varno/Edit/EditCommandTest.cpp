#include "Tests/Apps/varno/Support/EditTest.h"
#include "Tests/Support/Eventually.h"
#include "Window/WindowProperties.h"

#include <X11/keysym.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <sndfile.h>

// The editor's window as a user sees it.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

class EditCommand : public EditTest {
protected:
    // The value of the fixture's gain in a state file.
    double gainIn(const std::string& state) const {
        const std::string json =
            varnoOut({"params", "--module", bundle("Fixture"), "--state", state, "--json", "Gain"});
        return nlohmann::json::parse(json)["value"];
    }
    // Presses Ctrl-S and waits for the file.
    void saveTo(const std::string& name) const {
        tap(XK_s, {XK_Control_L});
        EXPECT_TRUE(eventually([&] { return fs::exists(path(name)); })) << name;
    }
    static void expectQuiet(const Outcome& outcome, const std::string& err = "") {
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, err);
    }
};

TEST_F(EditCommand, ShowsTheEditorInItsSize) {
    const auto program = edit({});
    const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        mPerson.connection(), xcb_get_geometry(mPerson.connection(), window()), nullptr));
    EXPECT_EQ(geometry->width, kFixtureWidth);
    EXPECT_EQ(geometry->height, kFixtureHeight);
    EXPECT_EQ(text("_NET_WM_NAME"), "Fixture Gain");
    EXPECT_EQ(text("WM_CLASS"), "varno\0Varno\0"s);
    close();
    expectQuiet(program->wait());
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(EditCommand, TheTitleNamesTheFile) {
    makeMusic("drums.wav", kWav16, 1, 4800);
    const auto program = edit({path("drums.wav")});
    EXPECT_EQ(text("_NET_WM_NAME"), "Fixture Gain - drums.wav");
    close();
    expectQuiet(program->wait());
}

TEST_F(EditCommand, EscapeAndControlQClose) {
    for (const std::vector<xcb_keysym_t>& held : {std::vector<xcb_keysym_t>{}, {XK_Control_L}}) {
        const auto program = edit({});
        tap(held.empty() ? XK_Escape : XK_q, held);
        expectQuiet(program->wait());
    }
}

TEST_F(EditCommand, ControlSSavesTheState) {
    const auto program = edit({"--set", "Gain=0.25"});
    saveTo("varno-s.state");
    tap(XK_s, {XK_Control_L}); // replaces the file that it has saved itself
    tap(XK_Escape);
    expectQuiet(program->wait(), "saved varno-s.state\nsaved varno-s.state\n");
    EXPECT_EQ(mFolder.listing(), "varno-s.state");
    EXPECT_EQ(gainIn("varno-s.state"), 0.25);
}

TEST_F(EditCommand, ControlSLeavesOtherFilesAlone) {
    writeFile(path("varno-s.state"), "mine");
    fs::create_symlink("nowhere", path("varno-s-2.state"));
    const auto program = edit({"--set", "Gain=0.75"});
    saveTo("varno-s-3.state");
    tap(XK_Escape);
    expectQuiet(program->wait(), "saved varno-s-3.state\n");
    EXPECT_EQ(readFile(path("varno-s.state")), "mine");
    EXPECT_EQ(gainIn("varno-s-3.state"), 0.75);
}

TEST_F(EditCommand, AStateIsSavedWhereItCameFrom) {
    auto program = edit({"--save-state", "my.state", "--set", "Gain=0.25"});
    saveTo("my.state");
    close();
    expectQuiet(program->wait(), "saved my.state\n");

    program = edit({"--state", "my.state", "--set", "Bypass=1"});
    const auto before = content("my.state");
    fs::remove(path("my.state"));
    saveTo("my.state");
    close();
    expectQuiet(program->wait(), "saved my.state\n");
    EXPECT_EQ(gainIn("my.state"), 0.25);
    EXPECT_EQ(content("my.state").content.size(), before.content.size());

    // The same file by name, and another one.
    program = edit({"--state", "my.state", "--save-state", "./my.state"});
    tap(XK_s, {XK_Control_L});
    tap(XK_Escape);
    expectQuiet(program->wait(), "saved ./my.state\n");
    program = edit({"--state", "my.state", "--save-state", "other.state"});
    saveTo("other.state");
    tap(XK_Escape);
    expectQuiet(program->wait(), "saved other.state\n");
    EXPECT_EQ(content("other.state"), content("my.state"));
}

TEST_F(EditCommand, AFailureToSaveLeavesTheWindow) {
    fs::create_directory(path("folder"));
    const auto program = edit({"--save-state", "folder/my.state"});
    fs::remove(path("folder"));
    tap(XK_s, {XK_Control_L});
    tap(XK_s, {XK_Control_L});
    tap(XK_Escape);
    const std::string line =
        "varno: folder/my.state: cannot be written: No such file or directory; expected a "
        "folder that exists and can be written to\n";
    expectQuiet(program->wait(), line + line);
}

class EditScreenshot : public EditCommand {
protected:
    void expectPicture(const std::string& name) const {
        const CairoSurface picture(cairo_image_surface_create_from_png(path(name).c_str()));
        EXPECT_EQ(cairo_image_surface_get_width(picture.get()), kFixtureWidth);
        EXPECT_EQ(cairo_image_surface_get_height(picture.get()), kFixtureHeight);
    }
};

TEST_F(EditScreenshot, IsThePictureOfTheView) {
    makeMusic("drums.wav", kWav16, 2, 4800);
    expectQuiet(runEdit({"--screenshot", "editor.png", "--after", "0", "drums.wav"}));
    expectPicture("editor.png");
    expectQuiet(
        runEdit({"--screenshot", "later.png", "--after", "0.1", "--rate", "44100", "--channels", "1"}));
    expectPicture("later.png");
    EXPECT_EQ(mFolder.listing(), "drums.wav editor.png later.png");
}

TEST_F(EditScreenshot, ReplacesOnlyOnRequest) {
    writeFile(path("editor.png"), "mine");
    EXPECT_EQ(refusedEdit(1, {"--screenshot", "editor.png"}),
              "editor.png: exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(readFile(path("editor.png")), "mine");
    expectQuiet(runEdit({"--screenshot", "editor.png", "--force", "--after", "0"}));
    expectPicture("editor.png");
}

TEST_F(EditScreenshot, GoesToStandardOutput) {
    const Outcome outcome = runEdit({"--screenshot", "-", "--after", "0"});
    EXPECT_EQ(outcome.err, "");
    EXPECT_TRUE(outcome.out.starts_with("\x89PNG\r\n"));
    EXPECT_EQ(mFolder.listing(), "");
}

} // namespace
} // namespace varno::test
