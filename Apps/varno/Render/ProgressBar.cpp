#include "Render/ProgressBar.h"

#include "CommandLine/Console.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace varno {
namespace {

constexpr std::chrono::milliseconds kRedrawEvery{100};
// Characters of the bar between its brackets. One that is smaller shows nothing.
constexpr std::size_t kLargestBar = 30;
constexpr std::size_t kSmallestBar = 5;

double inSeconds(std::chrono::steady_clock::duration duration) {
    return std::chrono::duration<double>(duration).count();
}

// "1:02:03", "2:03", "0:03"
std::string clockText(double seconds) {
    const auto total = static_cast<long long>(std::ceil(seconds));
    char text[32];
    if (total >= 3600) {
        std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", total / 3600, total / 60 % 60, total % 60);
    } else {
        std::snprintf(text, sizeof text, "%lld:%02lld", total / 60, total % 60);
    }
    return text;
}

} // namespace

ProgressBar::ProgressBar(Draw draw, bool onTerminal, Columns columns, Clock clock)
    : mDraw(std::move(draw)),
      mOnTerminal(onTerminal),
      mColumns(std::move(columns)),
      mClock(std::move(clock)),
      mStart(mClock()),
      mNextDraw(mStart + kRedrawEvery) {
}

ProgressBar::~ProgressBar() {
    finish();
}

void ProgressBar::advance(double seconds, double share) {
    const std::lock_guard lock(mMutex);
    mDoneS += seconds;
    mShare = std::clamp(mShare + share, 0.0, 1.0);
    if (!mOnTerminal) {
        return;
    }
    const TimePoint now = mClock();
    if (now >= mNextDraw) {
        draw(now);
    }
}

void ProgressBar::printAbove(const std::function<void()>& print) {
    const std::lock_guard lock(mMutex);
    clear();
    print();
}

void ProgressBar::finish() {
    const std::lock_guard lock(mMutex);
    clear();
    mOnTerminal = false;
}

void ProgressBar::clear() {
    if (mDrawn) {
        mDraw(kClearLine);
    }
    mDrawn = false;
}

void ProgressBar::draw(TimePoint now) {
    // A line that fills the last column would move on to the next.
    mDraw(kClearLine + line(inSeconds(now - mStart), mColumns() - 1));
    mNextDraw = now + kRedrawEvery;
    mDrawn = true;
}

std::string ProgressBar::line(double elapsedS, std::size_t width) const {
    constexpr double kRounding = 1e-9; // the shares of many files add up to a little less than 1
    const double share = std::min(mShare + kRounding, 1.0);
    const double speed = elapsedS > 0.0 ? mDoneS / elapsedS : 0.0;
    std::string text = std::to_string(static_cast<int>(share * 100.0)) + " %, ";
    text += std::to_string(std::llround(speed)) + " x real time";
    if (mShare > 0.0) {
        text += ", " + clockText(elapsedS * (1.0 - share) / share) + " left";
    }
    constexpr std::size_t kAround = 3; // brackets and a blank
    const std::size_t besideText = text.size() + kAround;
    if (width >= besideText + kSmallestBar) {
        const std::size_t size = std::min(width - besideText, kLargestBar);
        const auto filled = static_cast<std::size_t>(share * static_cast<double>(size));
        text.insert(0, '[' + std::string(filled, '#') + std::string(size - filled, ' ') + "] ");
    }
    return text.substr(0, width);
}

FileProgress::~FileProgress() {
    mBar.advance(0.0, (1.0 - mDone) * mShareOfFile);
}

void FileProgress::advance(double seconds, double ofSeconds) {
    const double step = ofSeconds > 0.0 ? std::min(seconds / ofSeconds, 1.0 - mDone) : 0.0;
    mDone += step;
    mBar.advance(seconds, step * mShareOfFile);
}

} // namespace varno
