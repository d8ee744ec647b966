#include "Render/ProgressBar.h"

#include "CommandLine/Console.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace varno {
namespace {

constexpr std::chrono::milliseconds kRedrawEvery{100};
constexpr int kBarWidth = 30; // characters; the whole line stays below 80

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

ProgressBar::ProgressBar(std::ostream& out, bool onTerminal, double totalS, Clock clock)
    : mOut(out),
      mOnTerminal(onTerminal),
      mTotalS(totalS),
      mClock(std::move(clock)),
      mStart(mClock()),
      mNextDraw(mStart + kRedrawEvery) {
}

ProgressBar::~ProgressBar() {
    finish();
}

void ProgressBar::advance(double seconds) {
    const std::lock_guard lock(mMutex);
    mDoneS += seconds;
    if (!mOnTerminal) {
        return;
    }
    const TimePoint now = mClock();
    if (now >= mNextDraw) {
        draw(now);
    }
}

void ProgressBar::finish() {
    const std::lock_guard lock(mMutex);
    if (mDrawn) {
        mOut << kClearLine << std::flush;
    }
    mOnTerminal = false;
    mDrawn = false;
}

void ProgressBar::draw(TimePoint now) {
    mOut << kClearLine << line(inSeconds(now - mStart)) << std::flush;
    mNextDraw = now + kRedrawEvery;
    mDrawn = true;
}

std::string ProgressBar::line(double elapsedS) const {
    const double share = mTotalS > 0.0 ? std::clamp(mDoneS / mTotalS, 0.0, 1.0) : 1.0;
    const double speed = elapsedS > 0.0 ? mDoneS / elapsedS : 0.0;
    const int filled = static_cast<int>(share * kBarWidth);
    std::string text = "[";
    text.append(static_cast<std::size_t>(filled), '#');
    text.append(static_cast<std::size_t>(kBarWidth - filled), ' ');
    text += "] ";
    text += std::to_string(static_cast<int>(share * 100.0)) + " %, ";
    text += std::to_string(std::llround(speed)) + " x real time";
    if (speed > 0.0) {
        text += ", " + clockText(std::max(mTotalS - mDoneS, 0.0) / speed) + " left";
    }
    return text;
}

} // namespace varno
