#include "TerminalSession.h"

#include "Console.h"
#include "MeterLine.h"
#include "ProgressBar.h"
#include "SettingsKeeping.h"

#include <array>
#include <string_view>
#include <unistd.h>

namespace varno {
namespace {

// The pace at which hosts call a data model's timer.
constexpr std::chrono::nanoseconds kHostTimer = std::chrono::nanoseconds(std::chrono::seconds(1)) / 30;
// The pace at which a person can read a number.
constexpr std::chrono::milliseconds kRedraw(100);
constexpr const char* kClearLine = "\r\033[K";
constexpr int kFarSteps = 10;

} // namespace

TerminalSession::TerminalSession(Instance& instance, SettingsKeeper& settings, const LiveWatch& watch)
    : mInstance(instance),
      mSettings(settings),
      mWatch(watch),
      mDial(instance) {
    if (takesKeys(STDIN_FILENO)) {
        mMode.emplace(STDIN_FILENO);
    }
    mHasLine = mMode && isTerminal(STDERR_FILENO);
}

TerminalSession::~TerminalSession() {
    clearLine();
}

void TerminalSession::run() {
    mLoop.startTimer(kHostTimer, this, [this] { tick(); });
    if (mMode) {
        mLoop.watch(STDIN_FILENO, this, [this] { readKeys(); });
    }
    if (mHasLine) {
        mLoop.startTimer(kRedraw, &mLine, [this] { drawLine(); });
        drawLine();
    }
    mLoop.run();
}

void TerminalSession::tick() {
    mInstance.timer();
    mInstance.idle();
}

// A terminal that has gone ends the program as its signal would.
void TerminalSession::readKeys() {
    std::array<char, 256> bytes{};
    const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (count <= 0) {
        mLoop.quit();
        return;
    }
    mKeys.add({bytes.data(), static_cast<std::size_t>(count)});
    while (const auto action = mKeys.next()) {
        act(*action);
    }
    if (mHasLine) {
        drawLine();
    }
}

void TerminalSession::act(LiveAction action) {
    switch (action) {
    case LiveAction::kQuit:
        mLoop.quit();
        break;
    case LiveAction::kBypass:
        mDial.toggleBypass();
        break;
    case LiveAction::kPrevious:
        mDial.choose(-1);
        break;
    case LiveAction::kNext:
        mDial.choose(1);
        break;
    case LiveAction::kDown:
        mDial.turn(-1);
        break;
    case LiveAction::kUp:
        mDial.turn(1);
        break;
    case LiveAction::kFarDown:
        mDial.turn(-kFarSteps);
        break;
    case LiveAction::kFarUp:
        mDial.turn(kFarSteps);
        break;
    case LiveAction::kDefault:
        mDial.reset();
        break;
    case LiveAction::kSave:
        clearLine();
        saveAndTell(mSettings);
        break;
    case LiveAction::kHelp:
        clearLine();
        printErr(terminalKeysHelp());
        break;
    }
}

void TerminalSession::drawLine() {
    const MeterLine line{meterLevels(mInstance), mDial.text(), mDial.isBypassed(), mWatch.overruns()};
    // A line that fills the last column would move on to the next.
    std::string text = line.text(terminalColumns(STDERR_FILENO) - 1);
    if (text != mLine) {
        printErr(kClearLine + text);
        mLine = std::move(text);
    }
}

void TerminalSession::clearLine() {
    if (!mLine.empty()) {
        printErr(kClearLine);
        mLine.clear();
    }
}

} // namespace varno
