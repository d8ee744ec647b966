#include "Session/EditorSession.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "Session/SettingsKeeper.h"
#include "Window/WindowProperties.h"
#include "Window/XConnection.h"

#include <X11/keysym.h>

#include <chrono>

namespace varno {
namespace {

// How long a screenshot waits for an editor that has not been drawn yet.
constexpr std::chrono::seconds kLongestDrawing(20);

// How long after Escape has asked, a second one closes.
constexpr std::chrono::seconds kAnswerTime(10);

// The longest of the effect's names, and the subject.
std::string titleFor(const WindowOptions& options, const Instance& instance) {
    std::string title;
    for (const auto& name : instance.effect().names) {
        title = name.size() > title.size() ? name : title;
    }
    if (!options.subject.empty()) {
        title += " - " + options.subject;
    }
    return title;
}

// The user's choice for one program; nothing where it is not set.
std::optional<std::string> gdkScale() {
    std::string text = environmentVariable("GDK_SCALE");
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

} // namespace

EditorSession::EditorSession(const WindowOptions& options, XConnection& connection,
                             const EditorSubject& subject)
    : mOptions(options),
      mConnection(connection),
      mSubject(subject),
      mSystem(connection, gdkScale()),
      mWindow(connection, options.screenshot ? EditorWindow::Kind::kUnmanaged : EditorWindow::Kind::kManaged,
              {titleFor(options, subject.instance), windowIcon(subject.instance.module().resourcePath(""))}),
      mDesktop(mLoop, options.scale.value_or(mSystem.scale())),
      mSurround(
          connection, mWindow.id(), subject.instance, subject.slots, mDesktop, *this,
          {.hasBar = options.hasBar, .factoryPresets = subject.instance.module().resourcePath("presets")}) {
    if (options.screenshot) {
        planScreenshot(*options.screenshot);
    }
    openEditor();
    bindKeys();
    if (!options.scale) {
        mSystem.setScaleHandler([this](double scale) {
            mDesktop.setScale(scale);
            mSurround.desktopScaled();
        });
    }
}

void EditorSession::openEditor() {
    const PixelSize size = mSurround.open();
    if (!mSurround.hasEditor()) {
        throw WorkError("the module has no editor for effect \"" + mSubject.instance.effect().id + '"');
    }
    if (size.isEmpty()) {
        throw WorkError("the module's editor shows no view in an X11 window");
    }
}

void EditorSession::bindKeys() {
    mWindow.setCloseHandler([this] { mLoop.quit(); });
    mWindow.setFocusWindow(mSurround.focusWindow());
    mWindow.setBindings({{XK_Escape, 0, [this] { escape(); }},
                         {XK_q, XCB_MOD_MASK_CONTROL, [this] { mLoop.quit(); }},
                         {XK_s, XCB_MOD_MASK_CONTROL, [this] { save(); }}});
}

// Closing asks once where something would be lost; without a bar there is no place to ask.
void EditorSession::escape() {
    if (mSurround.escape()) {
        return;
    }
    const auto now = std::chrono::steady_clock::now();
    const bool hasAsked = mAskedAt && now - *mAskedAt < kAnswerTime;
    if (hasAsked || !mSurround.hasBar() || !mSubject.settings.unsavedOptions()) {
        mLoop.quit();
        return;
    }
    mAskedAt = now;
    mSurround.showMessage("not saved: Ctrl-S saves, Escape closes");
}

void EditorSession::save() {
    mSurround.showMessage(saveAndTell(mSubject.settings));
}

void EditorSession::planScreenshot(const std::string& path) {
    mScreenshot.emplace(path, mOptions.overwrite, throwIfInterrupted);
    mPicture.emplace(mConnection, mWindow.id());
    const auto after = std::chrono::duration<double>(mOptions.afterS);
    const auto latest = std::chrono::steady_clock::now() + after + kLongestDrawing;
    mLoop.startTimer(std::chrono::round<TimerQueue::Period>(after), &mScreenshot, [this, latest] {
        if (mSurround.showsWindows() && !mPicture->isDrawn() && std::chrono::steady_clock::now() < latest) {
            return; // a busy machine: checked again after the same time
        }
        mPicture->write(*mScreenshot);
        mScreenshot->commit();
        mLoop.quit();
    });
}

void EditorSession::run() {
    mLoop.watch(mConnection.descriptor(), this, [] {});
    mLoop.startTimer(kHostTimerPeriod, this, [this] { mSurround.timer(); });
    mLoop.setBeforeWait([this] {
        mWindow.handleEvents();
        // What the editor has requested since.
        mSurround.settle();
    });
    mWindow.show();
    mLoop.run();
}

} // namespace varno
