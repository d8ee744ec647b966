#include "Surround/BarLayout.h"
#include "Tests/Apps/varno/Support/EffectWindowTest.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/Picture.h"
#include "Window/EditorWindow.h"
#include "Window/WindowProperties.h"

#include <X11/keysym.h>
#include <nlohmann/json.hpp>

#include <chrono>
#include <cmath>
#include <sndfile.h>
#include <thread>

// The effect's own editor in the program's window.

namespace varno::test {
namespace {

constexpr Place kGainKnob = {55, BarLayout::kHeight + 90};
constexpr double kWheelStep = 2.0 / 130.0; // two pictures of a knob, normalized
constexpr Area kMeters = {180, BarLayout::kHeight + 275, 338, 45};

class EditEffect : public EffectWindowTest {
protected:
    void turnGain() {
        mPointer.move(kGainKnob);
        mPointer.press(Button::kWheelUp);
        mPointer.release(Button::kWheelUp);
    }
    void setDotsPerInch(const std::string& number) const {
        const std::string resources = "Xft.dpi:\t" + number + '\n';
        xcb_change_property(mPerson.connection(), XCB_PROP_MODE_REPLACE, mPerson.screen().root,
                            XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(resources.size()), resources.c_str());
        mPerson.synchronise();
    }
    double gainIn(const std::string& settings, const std::string& file) const {
        return nlohmann::json::parse(varnoOut({"params", settings, file, "--json", "Gain"}))["value"];
    }
};

TEST_F(EditEffect, OpensAndCloses) {
    const auto program = editEffect();
    EXPECT_EQ(text("_NET_WM_NAME"), "Varno-S");
    EXPECT_FALSE(text("_NET_WM_ICON").empty());
    close();
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(EditEffect, UnsavedChangesAreReported) {
    const auto program = editEffect();
    const auto before = picture();
    turnGain();
    EXPECT_TRUE(eventually([&] { return picture() != before; }));
    tap(XK_Escape); // asks
    tap(XK_Escape);
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "varno: warning: the settings are not saved; they come back with: varno edit "
                           "--set Gain=0.5153846\n"); // from 0.5
}

TEST_F(EditEffect, WhatWasTurnedIsSavedAndCopied) {
    const auto program = editEffect({"--set", "Gain=0.75"});
    const auto before = picture();
    turnGain();
    EXPECT_TRUE(eventually([&] { return picture() != before; }));
    tap(XK_c, {XK_Control_L});
    const std::string read = "DISPLAY=" + mServer.display() + " xclip -o -selection clipboard > '" +
                             path("preset.txt") + "' 2>/dev/null; cat '" + path("preset.txt") + '\'';
    EXPECT_TRUE(eventually([&] { return shell(read).starts_with("Varno-S "); }));
    tap(XK_s, {XK_Control_L});
    tap(XK_q, {XK_Control_L});
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.err, "saved varno-s.state\n");
    EXPECT_NEAR(gainIn("--state", "varno-s.state"), 0.75 + kWheelStep, 1e-6);
    EXPECT_NEAR(gainIn("--preset", "preset.txt"), 0.75 + kWheelStep, 1e-6);
}

TEST_F(EditEffect, ItsMetersFollowTheFile) {
    // A tone and a longer rest: the meters follow down and up again.
    Sound loud;
    loud.format = kWav16;
    for (int frame = 0; frame < loud.rateHz; ++frame) {
        loud.reals.push_back(0.5 * std::sin(0.05 * frame));
    }
    loud.reals.resize(3 * loud.reals.size());
    writeSound(path("loud.wav"), loud);
    auto program = editEffect();
    const auto silent = picture(kMeters);
    close();
    EXPECT_EQ(program->wait().err, "");
    program = editEffect({"--set", "Gain=1", "loud.wav"});
    EXPECT_TRUE(eventually([&] { return picture(kMeters) != silent; }));
    const auto once = picture(kMeters);
    EXPECT_TRUE(eventually([&] { return picture(kMeters) != once; })); // and they move
    close();
    EXPECT_EQ(program->wait().err, "");
}

TEST_F(EditEffect, IsEnlargedAsTheDesktopIs) {
    setDotsPerInch("144");
    for (const auto& [arguments, scale] : std::vector<std::pair<std::vector<std::string>, double>>{
             {{}, 1.5}, {{"--scale", "1"}, 1.0}, {{"--scale", "0.5"}, 0.5}}) {
        const auto program = editEffect(arguments);
        EXPECT_EQ(size().width, kWidth * scale);
        EXPECT_EQ(size().height, kHeight * scale);
        close();
        EXPECT_EQ(program->wait().err, "");
    }
}

TEST_F(EditEffect, FollowsAnotherScaleOfTheDesktop) {
    const auto program = editEffect();
    EXPECT_EQ(size().width, kWidth);
    setDotsPerInch("144");
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{1035, 681}; }));
    EXPECT_TRUE(eventually([&] { return showsView(); }));
    setDotsPerInch("96");
    EXPECT_TRUE(eventually([&] { return size() == WindowSize{kWidth, kHeight}; }));
    close();
    EXPECT_EQ(program->wait().err, "");
}

// Larger than the screen.
TEST_F(EditEffect, AScreenshotIsWholeAtEveryScale) {
    for (const double scale : {0.75, 1.0, 1.25, 2.0, 3.0}) {
        const auto outcome = runEdit({"--module", VARNO_MODULE_BUNDLE, "--scale", std::to_string(scale),
                                      "--screenshot", "editor.png", "--force"});
        EXPECT_EQ(outcome.err, "");
        const CairoSurface shown(cairo_image_surface_create_from_png(path("editor.png").c_str()));
        const int barHeight = static_cast<int>(BarLayout::kHeight * scale);
        const int width = static_cast<int>(kWidth * scale);
        const int height = barHeight + static_cast<int>((kHeight - BarLayout::kHeight) * scale);
        ASSERT_EQ(cairo_image_surface_get_width(shown.get()), width);
        ASSERT_EQ(cairo_image_surface_get_height(shown.get()), height);
        // Bar and panel reach each other and the far edges: no part of the window has stayed black.
        const auto isLit = [&](int x, int y) {
            const unsigned char* const pixel = cairo_image_surface_get_data(shown.get()) +
                                               y * cairo_image_surface_get_stride(shown.get()) + x * 4;
            return pixel[0] + pixel[1] + pixel[2] > 30;
        };
        EXPECT_TRUE(isLit(width - 1, height - 1)) << scale;
        EXPECT_TRUE(isLit(width - 1, barHeight / 2)) << scale;
        EXPECT_TRUE(isLit(width / 2, height - 1)) << scale;
        for (const int y : {barHeight - 1, barHeight}) {
            EXPECT_TRUE(isLit(width / 2, y)) << scale << ": " << y;
        }
    }
}

TEST_F(EditEffect, OutlivesTheServer) {
    makeMusic("in.wav", kWav16, 2, 4800);
    const auto program = editEffect({"in.wav"});
    mServer.stop();
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: the connection to the X server at DISPLAY \"" + mServer.display() + "\" is lost\n");
}

} // namespace
} // namespace varno::test
