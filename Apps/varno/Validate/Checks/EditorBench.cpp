#include "Validate/Checks/EditorBench.h"

#include "Validate/Binaries.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <thread>
#include <utility>

namespace varno::validate {
namespace {

constexpr std::int32_t kBenchFrames = 64;
constexpr int kMostTurns = 100;
constexpr std::chrono::milliseconds kTurn(3);

// The effects that have an editor, and why the last other one has none.
std::vector<PluginInfo> infosWithEditor(Context& context, Plugin& plugin, std::size_t most,
                                        std::string& obstacle) {
    std::vector<PluginInfo> found;
    for (const PluginInfo& info : plugin.plugins()) {
        if (!info.obstacle.empty()) {
            obstacle = info.obstacle;
        } else if (found.size() < most) {
            context.step("create " + info.id);
            const std::string why =
                plugin.create(info, kCheckedRateHz, kLongestBuffer)->capabilities().editorObstacle;
            if (why.empty()) {
                found.push_back(info);
            } else {
                obstacle = why;
            }
        }
    }
    return found;
}

std::unique_ptr<Screen> openScreen(Context& context) {
    try {
        return std::make_unique<Screen>();
    } catch (const PluginError& error) {
        context.skip(error.what());
    }
}

} // namespace

void forEachEditor(Context& context, const std::function<void(const Effect& effect, Screen& screen)>& check,
                   std::size_t most) {
    constexpr std::size_t kMostAtQuickLevel = 2;
    const auto plugin = context.open();
    keepLibrariesLoaded(context.path(), context.format());
    std::string obstacle = "there is no plug-in";
    const std::vector<PluginInfo> infos = infosWithEditor(
        context, *plugin, context.isFull() ? most : std::min(most, kMostAtQuickLevel), obstacle);
    if (infos.empty()) {
        context.skip(obstacle);
    }
    // One server: libraries of windows keep for good what they have asked the first one.
    const auto screen = openScreen(context);
    for (const PluginInfo& info : infos) {
        context.step(info.id);
        check({*plugin, info}, *screen);
    }
    for (const std::string& complaint : plugin->takeComplaints()) {
        context.fail(complaint, "nothing against the rules of the format");
    }
}

EditorBench::EditorBench(const Screen& screen, const Effect& effect, std::unique_ptr<PluginInstance> instance,
                         int place)
    : mScreen(screen),
      mSilence(effect.info, kBenchFrames),
      mParameters(instance->parameters()),
      mWindow(screen.makeWindow(place)),
      mInstance(std::move(instance)) {
}

EditorBench::~EditorBench() {
    mEditor.reset();
    mInstance.reset();
    mScreen.destroy(mWindow);
}

void EditorBench::sound() {
    mSilence.through(*mInstance);
}

void EditorBench::open(double scale) {
    mEditor = mInstance->openEditor({.window = mWindow,
                                     .scale = scale,
                                     .onEvent = [this](const EditorEvent& event) { happened(event); }});
    if (const auto size = mEditor->size()) {
        mScreen.resize(mWindow, *size);
    }
    for (int turns = 0; turns < kMostTurns && !visibleSize(); ++turns) {
        turn();
    }
    turn(2);
}

void EditorBench::close() {
    if (mEditor != nullptr) {
        mEditor->close();
        mEditor.reset();
    }
    // The server notices it some time later.
    for (int turns = 0; turns < kMostTurns && visibleSize(); ++turns) {
        turn();
    }
}

void EditorBench::turn(int count) {
    for (int round = 0; round < count; ++round) {
        mScreen.sync();
        if (mEditor != nullptr) {
            mEditor->idle();
        }
        std::this_thread::sleep_for(kTurn);
    }
}

std::string EditorBench::nameOf(std::size_t parameter) const {
    return parameter < mParameters.size() ? mParameters[parameter].name
                                          : "number " + std::to_string(parameter);
}

void EditorBench::happened(const EditorEvent& event) {
    using Kind = EditorEvent::Kind;
    if (event.kind == Kind::kResize) {
        mScreen.resize(mWindow, {event.width, event.height});
    } else if (event.kind == Kind::kTouch) {
        ++mGestures;
        ++mTouches[event.parameter];
    } else if (event.kind == Kind::kRelease && --mTouches[event.parameter] < 0) {
        mTouches[event.parameter] = 0;
        mFaults.push_back("a gesture on " + nameOf(event.parameter) + " that ends without a beginning");
    } else if (event.kind == Kind::kValue && event.parameter < mParameters.size()) {
        ++mValues;
        const Parameter& parameter = mParameters[event.parameter];
        // As far as single precision may round a bound.
        const double slack = 1e-6 * std::max(std::fabs(parameter.minimum), std::fabs(parameter.maximum));
        if (!(event.value >= parameter.minimum - slack && event.value <= parameter.maximum + slack)) {
            mFaults.push_back("the value " + std::to_string(event.value) + " for " + parameter.name);
        }
    }
    if (mHandler) {
        mHandler(event);
    }
}

std::vector<std::string> EditorBench::takeFaults() {
    for (const auto& [parameter, count] : std::exchange(mTouches, {})) {
        if (count > 0) {
            mFaults.push_back("a gesture on " + nameOf(parameter) + " that has not ended");
        }
    }
    return std::exchange(mFaults, {});
}

void RandomHand::moveAnywhere(const EditorBench& bench) {
    const EditorSize size = bench.visibleSize().value_or(EditorSize{1, 1});
    mScreen.move(bench.window(), below(std::max(size.width, 1)), below(std::max(size.height, 1)));
}

void RandomHand::click(EditorBench& bench, int button) {
    mScreen.press(button);
    bench.turn();
    mScreen.release(button);
    bench.turn();
}

void RandomHand::drag(EditorBench& bench) {
    release();
    moveAnywhere(bench);
    bench.turn();
    mScreen.press(1);
    mIsPressed = true;
    bench.turn(2);
    moveAnywhere(bench);
    bench.turn();
}

void RandomHand::release() {
    if (std::exchange(mIsPressed, false)) {
        mScreen.release(1);
    }
}

void RandomHand::act(EditorBench& bench) {
    constexpr int kLeft = 1;
    constexpr int kRight = 3;
    constexpr int kWheel = 4;
    // From Escape to the keys of the cursor and above.
    constexpr int kFirstKey = 9;
    constexpr int kKeys = 110;
    switch (below(6)) {
    case 0:
    case 1:
        drag(bench);
        release();
        bench.turn();
        break;
    case 2:
        moveAnywhere(bench);
        click(bench, kLeft);
        click(bench, kLeft);
        break;
    case 3:
        moveAnywhere(bench);
        click(bench, kRight);
        mScreen.tap(kFirstKey);
        bench.turn();
        break;
    case 4:
        moveAnywhere(bench);
        click(bench, kWheel + below(2));
        break;
    default:
        mScreen.tap(kFirstKey + below(kKeys));
        bench.turn();
    }
}

} // namespace varno::validate
