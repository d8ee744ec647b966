#ifndef VARNO_APPS_VARNO_RENDER_PROGRESSBAR_H
#define VARNO_APPS_VARNO_RENDER_PROGRESSBAR_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace varno {

/// One line that shows how far a command is, how many times faster than real time it renders and how long it
/// will still take, as wide as the terminal allows. It is drawn only on a terminal and cleared at the end.
class ProgressBar {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Clock = std::function<TimePoint()>;
    using Columns = std::function<std::size_t()>;
    using Draw = std::function<void(std::string_view)>;

    /// @param draw puts characters and sequences on the terminal
    /// @param onTerminal false: nothing is ever written
    /// @param columns gives the terminal's width whenever the line is drawn
    /// @param clock gives the time; tests pass their own
    ProgressBar(Draw draw, bool onTerminal, Columns columns, Clock clock = std::chrono::steady_clock::now);

    /// Clears the line.
    ~ProgressBar();

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Adds what is done: seconds of audio, and their share of the whole. Redraws at most ten times a second.
    /// [any]
    void advance(double seconds, double share);

    /// Clears the line, runs `print` while no other thread draws, and draws again with the next advance().
    /// [any]
    void printAbove(const std::function<void()>& print);

    /// Clears the line; nothing is drawn from here on. [any]
    void finish();

private:
    std::string line(double elapsedS, std::size_t width) const;
    void draw(TimePoint now);
    void clear();

    Draw mDraw;
    bool mOnTerminal;
    Columns mColumns;
    Clock mClock;
    std::mutex mMutex;
    double mDoneS = 0.0;
    double mShare = 0.0; ///< Of the whole, 0 to 1.
    TimePoint mStart;
    TimePoint mNextDraw;
    bool mDrawn = false;
};

/// How far one of several files of equal share is. At its end the whole share is done, also after a failure.
/// One thread.
class FileProgress {
public:
    /// @param bar outlives this @param files of the command, at least 1
    FileProgress(ProgressBar& bar, std::size_t files)
        : mBar(bar),
          mShareOfFile(1.0 / static_cast<double>(files)) {}
    FileProgress(const FileProgress&) = delete;
    FileProgress& operator=(const FileProgress&) = delete;
    ~FileProgress();

    /// @param seconds of audio that were rendered @param ofSeconds length of the file; 0 where it is unknown
    void advance(double seconds, double ofSeconds);

private:
    ProgressBar& mBar;
    double mShareOfFile;
    double mDone = 0.0; ///< Of the file, 0 to 1.
};

} // namespace varno

#endif
