#include "Play/TerminalSession.h"

#include "CommandLine/Console.h"
#include "CommandLine/LibraryMessages.h"
#include "Play/MeterLine.h"
#include "Session/SettingsKeeper.h"
#include "Settings/ParameterValue.h"
#include "Settings/Quality.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <unistd.h>

namespace varno {
namespace {

// How often the line is drawn: numbers that change faster cannot be read.
constexpr std::chrono::milliseconds kRedraw(100);
constexpr int kFarSteps = 10;

} // namespace

ParameterDial::ParameterDial(LiveEffect& effect)
    : mEffect(effect) {
    if (chosen().isMasterBypass) {
        choose(1);
    }
}

void ParameterDial::choose(int by) {
    const auto count = static_cast<int>(instance().parameters().size());
    const auto move = [&](int step) {
        mChosen = static_cast<std::size_t>((static_cast<int>(mChosen) + step % count + count) % count);
    };
    move(by);
    if (chosen().isMasterBypass) {
        move(by < 0 ? -1 : 1);
    }
}

void ParameterDial::turn(int steps) {
    const int last = chosen().steps - 1;
    if (last < 1) {
        return;
    }
    const auto step = static_cast<int>(std::lround(instance().normalized(chosen().id) * last)) + steps;
    set(normalizedOfStep(std::clamp(step, 0, last), chosen().steps));
}

void ParameterDial::reset() {
    set(chosen().defaultNormalized);
}

void ParameterDial::set(double normalized) {
    instance().setNormalized(chosen().id, normalized);
}

const ParameterInfo* ParameterDial::masterBypass() const {
    const auto found = std::ranges::find(instance().parameters(), true, &ParameterInfo::isMasterBypass);
    return found == instance().parameters().end() ? nullptr : &*found;
}

bool ParameterDial::isMasterBypassed() const {
    const auto* parameter = masterBypass();
    return parameter != nullptr && instance().normalized(parameter->id) >= 0.5;
}

bool ParameterDial::isBypassed() const {
    return mEffect.isBypassed() || isMasterBypassed();
}

void ParameterDial::toggleBypass() {
    const bool shallBypass = !isBypassed();
    if (isMasterBypassed()) {
        instance().setNormalized(masterBypass()->id, 0.0);
    }
    mEffect.setBypassed(shallBypass);
}

std::string ParameterDial::text() const {
    return chosen().name + ' ' + instance().text(chosen().id);
}

TerminalSession::TerminalSession(LiveEffect& effect, SettingsKeeper& settings, const LiveWatch& watch)
    : mEffect(effect),
      mSettings(settings),
      mWatch(watch),
      mDial(effect) {
    if (takesKeys(STDIN_FILENO)) {
        mMode.emplace(STDIN_FILENO);
    }
    mHasLine = mMode && isTerminal(standardError());
}

TerminalSession::~TerminalSession() {
    clearLine();
}

void TerminalSession::run() {
    mLoop.startTimer(kHostTimerPeriod, this, [this] { tick(); });
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
    mEffect.instance().timer();
    mEffect.instance().idle();
}

// The end of the terminal ends the program, as its signal would.
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
    case LiveAction::kQuality:
        chooseNextQuality();
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

void TerminalSession::chooseNextQuality() {
    Oversampling& effect = mEffect.oversampling();
    const std::int32_t highest = kOversamplingFactors.back();
    effect.setFactor(effect.wish() == highest ? 1 : 2 * effect.wish());
    clearLine();
    printErr(qualityText(effect) + '\n');
}

void TerminalSession::drawLine() {
    const MeterLine line{meterLevels(mEffect.instance()), mDial.text(), mDial.isBypassed(),
                         mWatch.overruns()};
    // A line that fills the last column would move on to the next.
    std::string text = line.text(terminalColumns(standardError()) - 1);
    if (text != mLine) {
        drawOnTerminal(kClearLine + text);
        mLine = std::move(text);
    }
}

void TerminalSession::clearLine() {
    if (!mLine.empty()) {
        drawOnTerminal(kClearLine);
        mLine.clear();
    }
}

} // namespace varno
