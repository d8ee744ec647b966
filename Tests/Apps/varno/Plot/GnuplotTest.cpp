#include "Plot/Gnuplot.h"

#include "CommandLine/CommandError.h"
#include "Tests/Support/EnvironmentVariable.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

// What gnuplot is given and what becomes of its answers: programs in its place that fail, and the real one.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

Plot plotOfOneLine(const std::string& title) {
    return {title, {{.x = {"x"}, .y = {"y"}, .series = {{"line", {{0.0, 1.0}, {2.5, -3.0}}}}}}};
}

class Gnuplot : public testing::Test {
protected:
    // A shell script that is found in place of gnuplot.
    std::string failureWith(const std::string& script) const {
        const auto program = mFolder.write("gnuplot", "#!/bin/sh\n" + script);
        fs::permissions(program, fs::perms::owner_all);
        return failure();
    }
    // With nothing but the test's folder to look for programs in.
    std::string failure() const {
        const EnvironmentVariable path("PATH", mFolder.path().string());
        try {
            drawPlot(plotOfOneLine("t"), PictureFormat::kSvg);
        } catch (const WorkError& error) {
            return error.what();
        }
        return "none";
    }

    TemporaryFolder mFolder;
};

TEST_F(Gnuplot, MissingIsSaidWithItsPackage) {
    EXPECT_EQ(failure(), "gnuplot is not installed, which draws plots; Debian's package gnuplot-nox has it");
}

TEST_F(Gnuplot, ThatCannotBeStartedIsSaidWithTheReason) {
    mFolder.write("gnuplot", "");
    EXPECT_EQ(failure(), "gnuplot cannot be started: Permission denied");
}

TEST_F(Gnuplot, ThatFailsIsSaidWithWhatItPrints) {
    EXPECT_EQ(failureWith("echo picture; (echo; echo no font; echo more) >&2; exit 1"),
              "gnuplot fails: no font");
    EXPECT_THAT(failureWith("exit 0"), StartsWith("gnuplot fails"));
    EXPECT_THAT(failureWith("echo picture; kill -9 $$"), StartsWith("gnuplot fails"));
}

TEST_F(Gnuplot, ReadsTheScriptAndItsOutputIsThePicture) {
    const auto program = mFolder.write("gnuplot", "#!/bin/sh\necho \"$@\"\nexec /bin/cat\n");
    fs::permissions(program, fs::perms::owner_all);
    const EnvironmentVariable path("PATH", mFolder.path().string());
    const Plot plot = plotOfOneLine("t");
    EXPECT_EQ(drawPlot(plot, PictureFormat::kPng),
              "--default-settings\n" + gnuplotScript(plot, PictureFormat::kPng));
}

TEST_F(Gnuplot, TextsOfUsersAreNoCommands) {
    const std::string script = gnuplotScript(plotOfOneLine("it's\n`id` \x1b[1m"), PictureFormat::kSvg);
    EXPECT_THAT(script, HasSubstr("title 'it''s\\n`id` \\u001b[1m'\n"));
    const std::string picture = drawPlot(plotOfOneLine("it's `id` $(id) %s <&>"), PictureFormat::kSvg);
    EXPECT_THAT(picture, HasSubstr("<text>it's `id` $(id) %s &lt;&amp;>"));
}

TEST_F(Gnuplot, HasTheNumbersInEveryLocale) {
    EXPECT_THAT(gnuplotScript(plotOfOneLine("t"), PictureFormat::kSvg), HasSubstr("\n0 1\n2.5 -3\nEND\n"));
}

TEST_F(Gnuplot, DrawsBothFormats) {
    EXPECT_THAT(drawPlot(plotOfOneLine("t"), PictureFormat::kSvg), StartsWith("<?xml"));
    EXPECT_THAT(drawPlot(plotOfOneLine("t"), PictureFormat::kPng), StartsWith("\x89PNG"));
}

TEST_F(Gnuplot, DrawsAMapWithItsNumbers) {
    const PlotMap map{
        .label = "dB", .xs = {0.0, 1.0}, .ys = {5.0, 6.0}, .values = {-11.4, -22.0, -33.0, -44.0}};
    const std::string picture = drawPlot({"t", {{.x = {"x"}, .y = {"y"}, .map = map}}}, PictureFormat::kSvg);
    for (const char* number : {">-11<", ">-22<", ">-33<", ">-44<"}) {
        EXPECT_THAT(picture, HasSubstr(number));
    }
}

} // namespace
} // namespace varno::test
