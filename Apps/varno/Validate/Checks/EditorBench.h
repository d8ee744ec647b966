/// What the checks of editors share.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_EDITORBENCH_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_EDITORBENCH_H

#include "Validate/Checks/Effects.h"
#include "Validate/Editors/Screen.h"
#include "Validate/Silence.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace varno::validate {

inline constexpr std::size_t kAllEditors = std::numeric_limits<std::size_t>::max();

/// Calls the function for each effect that has an editor and can be run here, and reports what was done
/// against the rules of the format. At the quick level for two. Skips the check where there is none, with the
/// reason.
/// @param most the first of them
void forEachEditor(Context& context, const std::function<void(const Effect& effect, Screen& screen)>& check,
                   std::size_t most = kAllEditors);

/// An instance, a window of the host's, and the editor in it, one after the other as often as a check wants.
/// [main]
class EditorBench {
public:
    /// @param place of the window on the screen, from 0
    EditorBench(const Screen& screen, const Effect& effect, std::unique_ptr<PluginInstance> instance,
                int place = 0);
    EditorBench(const EditorBench&) = delete;
    EditorBench& operator=(const EditorBench&) = delete;
    ~EditorBench();

    PluginInstance& instance() { return *mInstance; }
    PluginEditor& editor() { return *mEditor; }
    std::uint32_t window() const { return mWindow; }

    /// Has the instance process a buffer of silence.
    void sound();
    /// Opens the editor and waits until it is visible, as far as it will be. @throws PluginError
    void open(double scale = 1.0);
    void close();
    /// Ends the instance, whether its editor is open or not.
    void endInstance() { mInstance.reset(); }
    /// Rounds of the host's event loop.
    void turn(int count = 1);
    /// The size of the editor on the screen.
    std::optional<EditorSize> visibleSize() const { return mScreen.sizeWithin(mWindow); }

    /// Whether all that came out of it are numbers.
    bool isFinite() const { return mSilence.isFinite(); }
    /// Called for each event of the editor, within its call. May close the editor where the format allows it.
    void setHandler(std::function<void(const EditorEvent&)> handler) { mHandler = std::move(handler); }
    /// Gestures that have begun, and values written, since the bench was made.
    int gestures() const { return mGestures; }
    int values() const { return mValues; }
    /// What was wrong with the events so far, and gestures that have not ended. Forgotten then.
    std::vector<std::string> takeFaults();

private:
    void happened(const EditorEvent& event);
    std::string nameOf(std::size_t parameter) const;

    const Screen& mScreen;
    Silence mSilence;
    std::vector<Parameter> mParameters;
    std::uint32_t mWindow;
    std::function<void(const EditorEvent&)> mHandler;
    std::map<std::size_t, int> mTouches;
    std::vector<std::string> mFaults;
    int mGestures = 0;
    int mValues = 0;
    std::unique_ptr<PluginInstance> mInstance;
    std::unique_ptr<PluginEditor> mEditor;
};

/// What a hand does with mouse and keys, at random. [main]
class RandomHand {
public:
    RandomHand(const Screen& screen, std::uint64_t seed)
        : mScreen(screen),
          mRandom(seed) {}
    RandomHand(const RandomHand&) = delete;
    RandomHand& operator=(const RandomHand&) = delete;
    ~RandomHand() { release(); }

    /// A click, a drag, a turn of the wheel or a key, somewhere in the editor.
    void act(EditorBench& bench);
    /// Presses the left button somewhere and drags it a little, without releasing it.
    void drag(EditorBench& bench);
    /// Releases the button.
    void release();

private:
    int below(int end) { return static_cast<int>(mRandom() % static_cast<std::uint64_t>(end)); }
    void moveAnywhere(const EditorBench& bench);
    void click(EditorBench& bench, int button);

    const Screen& mScreen;
    std::mt19937_64 mRandom;
    bool mIsPressed = false;
};

} // namespace varno::validate

#endif
