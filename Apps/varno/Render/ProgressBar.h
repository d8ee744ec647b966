#ifndef VARNO_APPS_VARNO_RENDER_PROGRESSBAR_H
#define VARNO_APPS_VARNO_RENDER_PROGRESSBAR_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <ostream>
#include <string>

namespace varno {

/// One line that shows how far a render is, how many times faster than real time it runs and how long it will
/// still take, as wide as the terminal allows. It is drawn only on a terminal and cleared at the end.
class ProgressBar {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;
    using Columns = std::function<std::size_t()>;

    /// @param out outlives the bar
    /// @param onTerminal false: nothing is ever written
    /// @param totalS length of all audio to be rendered, in seconds
    /// @param columns gives the terminal's width whenever the line is drawn
    /// @param clock gives the time; tests pass their own
    ProgressBar(std::ostream& out, bool onTerminal, double totalS, Columns columns,
                Clock clock = std::chrono::steady_clock::now);

    /// Clears the line.
    ~ProgressBar();

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Adds seconds of audio that are done. Redraws at most ten times a second. [any]
    void advance(double seconds);

    /// Clears the line; nothing is drawn from here on. [any]
    void finish();

private:
    std::string line(double elapsedS, std::size_t width) const;
    void draw(TimePoint now);

    std::ostream& mOut;
    bool mOnTerminal;
    double mTotalS;
    Columns mColumns;
    Clock mClock;
    std::mutex mMutex;
    double mDoneS = 0.0;
    TimePoint mStart;
    TimePoint mNextDraw;
    bool mDrawn = false;
};

} // namespace varno

#endif
