#include "Plot/Gnuplot.h"

#include "CommandLine/ChildProgram.h"
#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "CommandLine/VisibleText.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

constexpr const char* kGnuplot = "gnuplot";
// Longer than any picture takes on a busy machine.
constexpr std::chrono::seconds kPatience(120);
constexpr int kWidth = 1000;
constexpr int kPanelHeight = 480;
constexpr int kTitleHeight = 60;

// A string of gnuplot's in which nothing but its quote has a meaning.
std::string quoted(const std::string& text) {
    std::string result = "'";
    for (const char c : visibleLine(text)) {
        result += c;
        if (c == '\'') {
            result += c;
        }
    }
    return result + "'";
}

std::string numberOrStar(const std::optional<double>& number) {
    return number ? textFromNumber(*number) : "*";
}

std::string axisCommands(const std::string& name, const PlotAxis& axis) {
    std::string script = "set " + name + "label " + quoted(axis.label) + "\nset " + name + "range [" +
                         numberOrStar(axis.least) + ":" + numberOrStar(axis.most) + "]\n";
    script += (axis.isLogarithmic ? "set logscale " : "unset logscale ") + name + "\n";
    if (axis.isLogarithmic) {
        // 20, 50, 100, ... as usual for frequencies.
        script += "set " + name +
                  "tics add ('20' 20, '50' 50, '100' 100, '200' 200, '500' 500, '1k' 1000, "
                  "'2k' 2000, '5k' 5000, '10k' 10000, '20k' 20000)\n";
    } else {
        script += "set " + name + "tics autofreq\n";
    }
    return script;
}

// Dark enough on white; those who see no difference of hues see the dashes.
constexpr const char* kLineColours[] = {"#0072b2", "#d55e00", "#009e73", "#aa4499",
                                        "#000000", "#44aadd", "#b07800", "#7a5195"};

// Two lines are told apart without dashes, between which much of a signal's level would be lost.
std::string lineStyle(const PlotPanel& panel, std::size_t index) {
    if (panel.series[index].isBehind) {
        return "linecolor rgb '#c8c8c8' linewidth 4";
    }
    const std::string dashes = panel.series.size() > 2 ? " dashtype " + std::to_string(index + 1) : "";
    return std::string("linecolor rgb '") + kLineColours[index % std::size(kLineColours)] + "'" + dashes +
           " linewidth 2";
}

std::string seriesCommands(const PlotPanel& panel, const std::string& prefix) {
    std::string data;
    std::string plot;
    for (std::size_t i = 0; i < panel.series.size(); ++i) {
        const PlotSeries& series = panel.series[i];
        const std::string number = std::to_string(i + 1);
        const std::string block = std::string(prefix).append("s").append(number);
        data += block + " << END\n";
        for (const PlotPoint& point : series.points) {
            data += textFromNumber(point.x) + " " + textFromNumber(point.y) + "\n";
        }
        data += "END\n";
        plot += (i == 0 ? "plot " : ", ") + block + " with lines " + lineStyle(panel, i) + " title " +
                quoted(series.name);
    }
    return data + plot + "\n";
}

// From dark to light in even steps, and to be told apart by those who see no difference of hues.
constexpr const char* kPalette = "set palette defined (0 '#440154', 1 '#414487', 2 '#2a788e', 3 '#22a884', "
                                 "4 '#7ad151', 5 '#fde725')\n";

std::string mapCommands(const PlotMap& map, const std::string& prefix) {
    const std::string block = prefix + "map";
    std::string script = block + " << END\n";
    for (std::size_t y = 0; y < map.ys.size(); ++y) {
        for (std::size_t x = 0; x < map.xs.size(); ++x) {
            script += textFromNumber(map.xs[x]) + " " + textFromNumber(map.ys[y]) + " " +
                      textFromNumber(map.values[y * map.xs.size() + x]) + "\n";
        }
    }
    const auto [least, most] = std::ranges::minmax(map.values);
    // White numbers on dark colours, black ones on light colours.
    const std::string textColour =
        "($3 > " + textFromNumber((least + most) / 2.0) + " ? 0x000000 : 0xffffff)";
    return script + "END\nset cblabel " + quoted(map.label) + "\n" + kPalette + "set cbrange [" +
           textFromNumber(least) + ":" + textFromNumber(most) + "]\nplot " + block +
           " using 1:2:3 with image notitle, " + block + " using 1:2:(sprintf('%.0f', $3)):" + textColour +
           " with labels font ',9' textcolor rgb variable notitle\n";
}

// That says anything.
std::string firstLine(const std::string& text) {
    const auto start = std::min(text.find_first_not_of(" \n"), text.size());
    return visibleLine(text.substr(start, text.find('\n', start) - start));
}

} // namespace

std::string gnuplotScript(const Plot& plot, PictureFormat format) {
    const int height = kTitleHeight + kPanelHeight * static_cast<int>(plot.panels.size());
    const std::string size = std::to_string(kWidth) + "," + std::to_string(height);
    std::string script = "set encoding utf8\n";
    script += format == PictureFormat::kSvg
                  ? "set terminal svg noenhanced size " + size +
                        " dynamic font 'sans-serif,14' background 'white'\n"
                  : "set terminal pngcairo noenhanced size " + size + " font 'sans,11' background 'white'\n";
    script += "set grid\nset key outside right top\nset multiplot layout " +
              std::to_string(plot.panels.size()) + ",1 title " + quoted(plot.title) + "\n";
    for (std::size_t i = 0; i < plot.panels.size(); ++i) {
        const PlotPanel& panel = plot.panels[i];
        const std::string prefix = "$p" + std::to_string(i + 1);
        script += panel.title.empty() ? "unset title\n" : "set title " + quoted(panel.title) + "\n";
        script += axisCommands("x", panel.x) + axisCommands("y", panel.y);
        script += panel.map ? mapCommands(*panel.map, prefix) : seriesCommands(panel, prefix);
    }
    return script + "unset multiplot\n";
}

std::string drawPlot(const Plot& plot, PictureFormat format) {
    const FileDescriptor script = openUnnamedTemporary();
    writeAll(script.get(), gnuplotScript(plot, format), "the script for gnuplot", throwIfInterrupted);
    ::lseek(script.get(), 0, SEEK_SET);
    // Without the user's own settings.
    ChildProgram gnuplot(kGnuplot, {"--default-settings"}, script);
    if (gnuplot.error() == ENOENT) {
        throw WorkError("gnuplot is not installed, which draws plots; Debian's package gnuplot-nox has it");
    }
    if (gnuplot.error() != 0) {
        throw WorkError("gnuplot cannot be started: " + std::generic_category().message(gnuplot.error()));
    }
    if (!gnuplot.readAll(kPatience)) {
        throw WorkError("gnuplot does not end");
    }
    if (!gnuplot.succeeds() || gnuplot.out().empty()) {
        throw WorkError("gnuplot fails: " + firstLine(gnuplot.err()));
    }
    return gnuplot.out();
}

} // namespace varno
