// Files of `varno render --automate`: their lines, and what their values mean.
#include "CommandLine/CommandError.h"
#include "Render/CsvFiles.h"
#include "Settings/ParameterValue.h"
#include "Surround/Settings/NumberText.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"
#include "Tests/Fuzz/MemoryFile.h"

#include <algorithm>

namespace varno::fuzz {
namespace {

using AutomationPoints = std::vector<AutomationPoint>;

constexpr double kAutomationRatesHz[] = {16000.0, 44100.0, 384000.0};
constexpr double kMostFrames = 9007199254740992.0; // 2^53

// What of the product a planted fault replaces.
struct AutomationCalls {
    std::function<AutomationPoints(const std::string&, double)> read = readAutomationFile;
    std::function<double(const Instance&, const ParameterText&)> valueOf = [](const Instance& instance,
                                                                              const ParameterText& text) {
        return normalizedFromText(instance, text, unitSettings(instance), "fuzz", kExitWorkFailed);
    };
};

// Lines that are neither blank nor a comment.
std::ptrdiff_t countedLines(std::string_view text) {
    std::ptrdiff_t lines = 0;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        const std::size_t first = line.find_first_not_of(" \t\r");
        lines += first != std::string_view::npos && line[first] != '#' ? 1 : 0;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

// An error of the program is one line.
void requireLine(const CommandError& error) {
    require(std::string_view(error.what()).find('\n') == std::string_view::npos,
            "a message has several lines");
}

class AutomationTarget : public FuzzTarget {
public:
    explicit AutomationTarget(AutomationCalls calls = {})
        : mCalls(std::move(calls)) {}

    void run(std::string_view input) override {
        FuzzInput parts(input);
        const double rateHz = kAutomationRatesHz[parts.choose(std::size(kAutomationRatesHz))];
        mFile.set(parts.rest());
        try {
            const AutomationPoints points = mCalls.read(mFile.path(), rateHz);
            checkPoints(points, parts.rest());
            std::ranges::for_each(points, [this](const AutomationPoint& point) { checkValue(point); });
        } catch (const CommandError& error) {
            requireLine(error);
        }
        require(mEffect.isAtStart(), "reading a file has changed a value");
    }

private:
    static void checkPoints(const AutomationPoints& points, std::string_view text) {
        const std::ptrdiff_t lines = countedLines(text);
        require(std::ssize(points) == lines || std::ssize(points) == lines - 1,
                "a line is missing that is no heading");
        require(std::ranges::is_sorted(points, {}, &AutomationPoint::frame), "points are not in their order");
        for (const AutomationPoint& point : points) {
            require(point.frame >= 0 && static_cast<double>(point.frame) <= kMostFrames,
                    "a frame is out of range");
            for (const std::string& field : {point.parameter, point.value}) {
                require(!field.empty() && field.find_first_of(",\n") == std::string::npos,
                        "a field is empty or several");
            }
        }
    }

    void checkValue(const AutomationPoint& point) {
        try {
            const double value = mCalls.valueOf(mEffect.get(), {point.parameter, point.value});
            require(value >= 0.0 && value <= 1.0, "a value is out of its range");
        } catch (const CommandError& error) {
            requireLine(error);
        }
    }

    AutomationCalls mCalls;
    MemoryFile mFile;
    FuzzedInstance mEffect;
};

std::vector<std::string> automationSeeds() {
    const auto rate = [](char number) { return std::string(1, number); };
    return {rate(1) +
                "time_s,parameter,value\n0,Gain,-3 dB\n0.5,Hot,0.25\n# a comment\n\n1e-3, Atk , 2.4 ms\n",
            rate(0) + "\xEF\xBB\xBF"
                      "0.25,Ratio,#5\r\n0.125,UK,on\r\n0.125,MasterBypassID,bypass\r\n",
            rate(2) + "3600,Mix,40%\n0,Rls,1.2 s\n0,Volume,+3.5 dB\n",
            rate(1) + "1,Gain,2\n",
            rate(1) + "-1,Gain,0\n",
            rate(1) + "1,Gian,0\n",
            rate(1) + "nan,Gain,0\n"};
}

// The planted faults.

AutomationPoints readUnsorted(const std::string& path, double rateHz) {
    AutomationPoints points = readAutomationFile(path, rateHz);
    std::ranges::stable_sort(points, {}, &AutomationPoint::line);
    return points;
}

AutomationPoints readFromTheStart(const std::string& path, double rateHz) {
    AutomationPoints points = readAutomationFile(path, -rateHz);
    std::ranges::stable_sort(points, {}, &AutomationPoint::frame);
    return points;
}

AutomationPoints readAllButTwo(const std::string& path, double rateHz) {
    AutomationPoints points = readAutomationFile(path, rateHz);
    points.resize(points.size() - std::min<std::size_t>(points.size(), 2));
    return points;
}

double valueUnlimited(const Instance& instance, const ParameterText& text) {
    const auto number = numberFromText<double>(text.value);
    return number ? *number : AutomationCalls().valueOf(instance, text);
}

} // namespace

FuzzSubject automationSubject() {
    return {
        "automation",
        makerOf<AutomationTarget>(),
        automationSeeds(),
        {{"points keep the order of their lines", makerOf<AutomationTarget>(AutomationCalls{readUnsorted})},
         {"frames may be negative", makerOf<AutomationTarget>(AutomationCalls{readFromTheStart})},
         {"the last points are lost", makerOf<AutomationTarget>(AutomationCalls{readAllButTwo})},
         {"numbers are not limited", makerOf<AutomationTarget>(AutomationCalls{.valueOf = valueUnlimited})}},
        {"Apps/varno/Render/CsvFiles.cpp", "Apps/varno/Settings/ParameterValue.cpp",
         "Surround/Settings/WrittenValue.cpp"}};
}

} // namespace varno::fuzz
