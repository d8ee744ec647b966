#include "Render/CsvFiles.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Files/Transfer.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>

namespace varno {
namespace {

using Fields = std::array<std::string_view, 3>;

constexpr Fields kHeading = {"time_s", "parameter", "value"};
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // some editors begin UTF-8 files with it
constexpr double kMostExactFrames = 9007199254740992.0;     // 2^53: beyond, a double skips frames

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<Fields> split(std::string_view text) {
    if (std::count(text.begin(), text.end(), ',') != std::ssize(Fields{}) - 1) {
        return std::nullopt;
    }
    Fields fields;
    for (std::string_view& field : fields) {
        const std::size_t end = std::min(text.find(','), text.size());
        field = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return fields;
}

// One line of the file, with the path and number that messages about it begin with.
class Line {
public:
    Line(const std::string& path, int number, std::string_view text)
        : mPath(path),
          mNumber(number),
          mText(text) {}

    AutomationPoint parse(double rateHz) const {
        const std::optional<Fields> fields = split(mText);
        if (!fields) {
            fail("found \"" + std::string(mText) + "\"; expected three fields time_s,parameter,value");
        }
        const auto& [time, parameter, value] = *fields;
        if (parameter.empty()) {
            fail("no parameter found; expected its identifier in the second field");
        }
        if (value.empty()) {
            fail("no value found for " + std::string(parameter) + "; expected one in the third field");
        }
        return {frameAt(time, rateHz), std::string(parameter), std::string(value), mNumber};
    }

private:
    std::int64_t frameAt(std::string_view time, double rateHz) const {
        const std::optional<double> seconds = numberFromText<double>(time);
        if (!seconds || !std::isfinite(*seconds) || *seconds < 0.0 || *seconds * rateHz > kMostExactFrames) {
            fail("time \"" + std::string(time) + "\" found; expected seconds from the start, 0 or more");
        }
        return static_cast<std::int64_t>(std::floor(*seconds * rateHz + 0.5));
    }

    [[noreturn]] void fail(const std::string& problem) const {
        throw WorkError(mPath + ", line " + std::to_string(mNumber) + ": " + problem);
    }

    const std::string& mPath;
    int mNumber;
    std::string_view mText;
};

// Room for an hour of moves at every millisecond.
constexpr std::size_t kMostAutomationBytes = std::size_t{64} * 1024 * 1024;

constexpr int kTimeDecimals = 6;                 // microseconds: distinct for frames up to 384 kHz
constexpr std::size_t kPendingBytes = 64 * 1024; // handed to the system at once

} // namespace

std::vector<AutomationPoint> readAutomationFile(const std::string& path, double rateHz) {
    const std::optional<std::string> content = readWhole(path, kMostAutomationBytes, throwIfInterrupted);
    if (!content) {
        throw WorkError(path + ": has more than 64 MiB; expected a shorter automation file");
    }
    std::string_view text = *content;
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(kByteOrderMark.size());
    }
    std::vector<AutomationPoint> points;
    bool headingMayFollow = true;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        line = trimmed(line);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const bool isHeading = headingMayFollow && split(line) == kHeading;
        headingMayFollow = false;
        if (!isHeading) {
            points.push_back(Line(path, number, line).parse(rateHz));
        }
    }
    std::stable_sort(
        points.begin(), points.end(),
        [](const AutomationPoint& left, const AutomationPoint& right) { return left.frame < right.frame; });
    return points;
}

MeterFile::MeterFile(const std::string& path, Overwrite overwrite, double rateHz,
                     const std::vector<std::string>& meters)
    : mFile(path, overwrite, throwIfInterrupted),
      mRateHz(rateHz),
      mPending("time_s") {
    for (const std::string& meter : meters) {
        mPending += "," + meter;
    }
    mPending += '\n';
}

void MeterFile::addRow(std::int64_t frame, std::span<const float> values) {
    mPending += textFromNumber(static_cast<double>(frame) / mRateHz, std::chars_format::fixed, kTimeDecimals);
    for (const float value : values) {
        mPending += ',';
        mPending += textFromNumber(value);
    }
    mPending += '\n';
    if (mPending.size() >= kPendingBytes) {
        flush();
    }
}

void MeterFile::flush() {
    mFile.write(mPending);
    mPending.clear();
}

AtomicFile& MeterFile::finish() {
    flush();
    return mFile;
}

} // namespace varno
