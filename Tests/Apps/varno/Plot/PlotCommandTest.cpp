#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/Eventually.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

// What varno plot draws and refuses.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class PlotCommand : public ProgramTest {
protected:
    std::string picture(const std::string& kind, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"plot", "--force", kind});
        options.emplace_back("out.svg");
        EXPECT_EQ(varnoOut(options), "");
        return content("out.svg").content;
    }
    // The numbers of a picture.
    json numbers(const std::string& kind, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"plot", "--force", "--json", kind});
        options.emplace_back("out.svg");
        return json::parse(varnoOut(options));
    }
    json measured(const std::string& figure, std::vector<std::string> options = {}) const {
        options.insert(options.begin(), {"measure", "--json", figure});
        return json::parse(varnoOut(options)).at("figures").at(0).at("rows");
    }
    // The value of a line at an x that is one of its points.
    static double valueAt(const json& series, double x) {
        const auto xs = series.at("x").get<std::vector<double>>();
        const auto found = std::ranges::find_if(xs, [&](double point) { return std::abs(point - x) < 1e-9; });
        EXPECT_NE(found, xs.end()) << x;
        return found == xs.end()
                   ? 0.0
                   : series.at("y").at(static_cast<std::size_t>(found - xs.begin())).get<double>();
    }
};

TEST_F(PlotCommand, CurvesAreTheMeasuredOnesAddedToTheLevel) {
    const json panel = numbers("curves").at("panels").at(0);
    ASSERT_EQ(panel.at("series").size(), 9U);
    EXPECT_EQ(panel.at("series").at(0).at("name"), "unchanged");
    for (const json& row : measured("curves")) {
        const double level = row.at("level_db");
        EXPECT_EQ(valueAt(panel.at("series").at(0), level), level);
        EXPECT_EQ(valueAt(panel.at("series").at(3), level), level + row.at("curve_3").get<double>());
    }
    EXPECT_THAT(content("out.svg").content, HasSubstr(">curve 8<"));
    EXPECT_THAT(content("out.svg").content, HasSubstr(">Input level, peak dBFS<"));
}

TEST_F(PlotCommand, BurstHasAttackAndRelease) {
    const json panels = numbers("burst").at("panels");
    ASSERT_EQ(panels.size(), 2U);
    const json rows = measured("burst");
    const auto atEnd = std::ranges::find_if(rows, [](const json& row) { return row.at("time_ms") == 300.0; });
    ASSERT_NE(atEnd, rows.end());
    const json& slowest = panels.at(0).at("series").at(4);
    EXPECT_EQ(slowest.at("name"), "knobs at 1");
    EXPECT_NEAR(valueAt(slowest, 300.0), atEnd->at("knobs_1").get<double>(), 1e-6);
    EXPECT_EQ(slowest.at("x").at(0), 0.0);
    EXPECT_GT(panels.at(1).at("series").at(4).at("x").back(), 2600.0);
}

TEST_F(PlotCommand, HarmonicsAndDriveAgree) {
    const json panels = numbers("harmonics").at("panels");
    for (const json& row : measured("drive")) {
        if (row.at("level_db") == -12.0 && row.at("hot") >= 0.1) {
            const double percent = row.at("harmonics_percent");
            const double all = valueAt(panels.at(0).at("series").at(0), row.at("hot"));
            EXPECT_NEAR(all, 20.0 * std::log10(percent / 100.0), 1e-6) << row;
        }
    }
    // Even harmonics come with Harmonic Select alone.
    EXPECT_TRUE(panels.at(0).at("series").at(1).at("x").empty());
    EXPECT_GT(valueAt(panels.at(1).at("series").at(1), 0.4), -45.0);
}

TEST_F(PlotCommand, TransferIsAStraightLineWithoutDrive) {
    const json rows = measured("transfer");
    const auto largest =
        std::ranges::max_element(rows, {}, [](const json& row) { return row.at("input").get<double>(); });
    const double slope = largest->at("hot_0").get<double>() / largest->at("input").get<double>();
    EXPECT_GT(slope, 0.05);
    for (const json& row : rows) {
        // The DC blocker turns the phase a little.
        EXPECT_NEAR(row.at("hot_0").get<double>(), slope * row.at("input").get<double>(), 0.04 * slope)
            << row;
    }
    // With all drive, half the input has nearly the whole output.
    const auto half =
        std::ranges::find_if(rows, [](const json& row) { return row.at("input").get<double>() > 0.5; });
    EXPECT_GT(half->at("hot_1").get<double>(), 0.8 * largest->at("hot_1").get<double>());
}

TEST_F(PlotCommand, AliasingHasEveryQualityThatFits) {
    const json series = numbers("aliasing").at("panels").at(0).at("series");
    ASSERT_EQ(series.size(), 4U);
    EXPECT_EQ(series.at(1).at("name"), "2x");
    // The third harmonic folds back with all of its power.
    EXPECT_NEAR(valueAt(series.at(0), 14983.0), -13.7, 0.3);
    for (std::size_t quality = 1; quality < series.size(); ++quality) {
        EXPECT_LT(valueAt(series.at(quality), 14983.0), valueAt(series.at(quality - 1), 14983.0) - 5.0);
    }
    EXPECT_EQ(numbers("aliasing", {"--rate", "96000"}).at("panels").at(0).at("series").size(), 3U);
}

TEST_F(PlotCommand, LevelsAreThoseOfTheFile) {
    // A second of silence, then one of a tone at -6.02 dBFS.
    shell("sox -D -n -r 48000 -b 16 -c 2 '" + path("in.wav") + "' synth 1 sine 1000 gain -6.0206 pad 1 0");
    const json panels = numbers("levels", {"in.wav"}).at("panels");
    const json& input = panels.at(0).at("series").at(0);
    EXPECT_EQ(valueAt(input, 0.5), -96.0);
    EXPECT_NEAR(valueAt(input, 1.5), -6.02, 0.01);
    const json report = json::parse(varnoOut({"render", "--json", "in.wav", "out.wav"}));
    const auto reduction = panels.at(1).at("series").at(0).at("y").get<std::vector<double>>();
    EXPECT_LT(reduction.front(), 1e-5);
    EXPECT_NEAR(*std::ranges::max_element(reduction), report.at("gain_reduction_db").get<double>(), 1e-5);
    const auto output = panels.at(0).at("series").at(1).at("y").get<std::vector<double>>();
    EXPECT_NEAR(*std::ranges::max_element(output), report.at("peak_out_dbfs").get<double>(), 0.01);
    EXPECT_THAT(content("out.svg").content, HasSubstr(">in.wav<"));
}

TEST_F(PlotCommand, LongFilesKeepTheirPeaks) {
    shell("sox -n -r 8000 -b 16 -c 1 '" + path("in.wav") + "' synth 60 sine 100 gain -40");
    shell("sox -n -r 8000 -b 16 -c 1 '" + path("click.wav") + "' synth 0.001 square 2000 gain -1");
    shell("cd '" + mFolder.path().string() + "' && sox in.wav click.wav in.wav long.wav rate 16000");
    const json input = numbers("levels", {"long.wav"}).at("panels").at(0).at("series").at(0);
    const auto levels = input.at("y").get<std::vector<double>>();
    EXPECT_LE(levels.size(), 1000U);
    EXPECT_GT(*std::ranges::max_element(levels), -6.0);
}

TEST_F(PlotCommand, DrawsPng) {
    EXPECT_EQ(varnoOut({"plot", "burst", "out.png"}), "");
    EXPECT_THAT(content("out.png").content, StartsWith("\x89PNG"));
}

TEST_F(PlotCommand, SettingsApply) {
    EXPECT_NE(picture("transfer"), picture("transfer", {"--set", "Mix=0.5"}));
}

TEST_F(PlotCommand, KeepsWhatIsThere) {
    writeFile(path("out.svg"), "mine");
    EXPECT_THAT(refusal(1, {"plot", "burst", "out.svg"}), HasSubstr("out.svg"));
    EXPECT_EQ(content("out.svg").content, "mine");
    EXPECT_THAT(picture("burst"), StartsWith("<?xml"));
}

TEST_F(PlotCommand, RefusesWhatItCannotDraw) {
    makeMusic("in.wav", kWav16, 2, 1000);
    EXPECT_EQ(refusal(2, {"plot", "burst", "out.jpg"}),
              "out.jpg: expected a name that ends with .svg or .png");
    EXPECT_THAT(refusal(2, {"plot", "loudness", "out.svg"}), HasSubstr("loudness"));
    EXPECT_EQ(refusal(2, {"plot", "levels", "out.svg"}), "levels: expected INPUT and OUT, found one file");
    EXPECT_EQ(refusal(2, {"plot", "burst", "in.wav", "out.svg"}), "burst: expected one file, OUT; found two");
    EXPECT_THAT(refusal(2, {"plot", "levels", "--rate", "44100", "in.wav", "out.svg"}), HasSubstr("--rate"));
    EXPECT_THAT(refusal(1, {"plot", "levels", "none.wav", "out.svg"}), HasSubstr("none.wav"));
    EXPECT_THAT(refusal(1, {"plot", "burst", "none/out.svg"}), HasSubstr("none/out.svg"));
    EXPECT_THAT(refusal(2, {"plot", "map", "--quality", "8x", "--rate", "96000", "out.svg"}),
                HasSubstr("768000 Hz"));
    writeFile(path("p.svg"), content("in.wav").content);
    EXPECT_THAT(refusal(2, {"plot", "--force", "levels", "p.svg", "p.svg"}), HasSubstr("p.svg"));
    EXPECT_EQ(mFolder.listing(), "in.wav p.svg");
}

TEST_F(PlotCommand, LeavesNothingWhereGnuplotIsMissing) {
    const Outcome outcome =
        runVarno({"plot", "burst", path("out.svg")}, {.environment = {"PATH=" + mFolder.path().string()}});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("gnuplot-nox"));
    EXPECT_EQ(mFolder.listing(), "");
}

// Measuring all would take minutes.
TEST_F(PlotCommand, EndsAtASignalWhileItMeasures) {
    Subprocess process(varnoWords({"plot", "map", "--quality", "8x", path("out.svg")}));
    // Until it has caught the signals, which its opened output shows.
    const std::string descriptors = "/proc/" + std::to_string(process.pid()) + "/fd";
    const auto hasOutput = [&] {
        std::error_code error;
        for (const auto& entry : std::filesystem::directory_iterator(descriptors, error)) {
            if (std::filesystem::read_symlink(entry.path(), error)
                    .string()
                    .starts_with(mFolder.path().string())) {
                return true;
            }
        }
        return false;
    };
    ASSERT_TRUE(eventually(hasOutput));
    process.signal(SIGINT);
    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    const Outcome outcome = process.wait();
    EXPECT_EQ(outcome.status, 130);
    EXPECT_THAT(outcome.err, HasSubstr("interrupted"));
    EXPECT_EQ(mFolder.listing(), "");
}

} // namespace
} // namespace varno::test
