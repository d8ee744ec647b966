#include "Validate/Checks/EditorUseChecks.h"

#include "Validate/Checks/EditorBench.h"

#include <atomic>
#include <exception>
#include <set>
#include <thread>

namespace varno::validate {
namespace {

void reportFaults(Context& context, EditorBench& bench) {
    for (const std::string& fault : bench.takeFaults()) {
        context.fail(fault, "whole gestures, and values in range");
    }
}

// Sound and random values on a thread of their own, from now until stop().
class RunningSound {
public:
    RunningSound(EditorBench& bench, std::uint64_t seed)
        : mThread([this, &bench, seed] { run(bench, seed); }) {}
    RunningSound(const RunningSound&) = delete;
    RunningSound& operator=(const RunningSound&) = delete;
    ~RunningSound() { (void)stop(); }

    // @return what went wrong; empty for nothing
    std::string stop() {
        mIsOver = true;
        if (mThread.joinable()) {
            mThread.join();
        }
        return mError;
    }

private:
    void run(EditorBench& bench, std::uint64_t seed) {
        std::mt19937_64 random(seed);
        const std::vector<Parameter>& parameters = bench.instance().parameters();
        try {
            while (!mIsOver) {
                if (!parameters.empty()) {
                    const std::size_t index = random() % parameters.size();
                    if (parameters[index].isAutomatable) {
                        bench.instance().set(index, randomValue(parameters[index], random));
                    }
                }
                bench.sound();
                // As a sound system waits for its next period.
                std::this_thread::sleep_for(std::chrono::milliseconds(1));
            }
        } catch (const std::exception& error) {
            mError = error.what();
        }
    }

    std::atomic<bool> mIsOver{false};
    std::string mError;
    std::thread mThread;
};

} // namespace

void checkEditorBeforeSound(Context& context) {
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.open();
        for (int round = 0; round < 5; ++round) {
            bench.sound();
            bench.turn();
        }
        bench.close();
        bench.sound();
        context.expect(bench.isFinite(), "no numbers once the editor was opened before the first buffer",
                       "numbers");
    });
}

void checkEditorBeforePreparing(Context& context) {
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect,
                          effect.plugin.createUnprepared(effect.info, kCheckedRateHz, kLongestBuffer));
        bench.open();
        bench.turn(5);
        bench.close();
    });
}

void checkEditorRunning(Context& context) {
    const int rounds = context.isFull() ? 1000 : 100;
    const int openings = context.isFull() ? 20 : 3;
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        // An LV2 plug-in need not take a state while it runs.
        const auto saved = bench.instance().saveState();
        const bool isRestored = saved && context.format() != Format::kLv2;
        int restored = 0;
        bench.sound();
        RunningSound sound(bench, context.seed());
        for (int opening = 0; opening < openings; ++opening) {
            bench.open();
            for (int round = 0; round < rounds / openings; ++round) {
                bench.turn();
                if (isRestored && round % 10 == 0) {
                    const int before = bench.values();
                    bench.instance().restoreState(*saved);
                    restored += bench.values() - before;
                }
            }
            bench.close();
        }
        const std::string error = sound.stop();
        context.expect(error.empty(), error, "sound beside the editor");
        context.expect(bench.isFinite(), "no numbers beside an open editor", "numbers");
        if (const int written = bench.values() - restored; written > 0) {
            context.note("an editor that nobody used has written " + std::to_string(written) +
                         " values beside automation");
        }
    });
}

void checkEditorInput(Context& context) {
    const int actions = context.isFull() ? 1000 : 60;
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        bench.open();
        RandomHand hand(screen, context.seed());
        for (int action = 0; action < actions; ++action) {
            context.step(effect.info.id + ", action " + std::to_string(action + 1));
            hand.act(bench);
            bench.sound();
        }
        bench.turn(5);
        context.expect(bench.visibleSize().has_value(),
                       "no editor after " + std::to_string(actions) + " actions", "it to stay open");
        bench.close();
        reportFaults(context, bench);
        context.expect(bench.isFinite(), "no numbers after mouse and keys at random", "numbers");
        if (bench.gestures() == 0 && bench.values() == 0) {
            context.note("no gesture and no value came of " + std::to_string(actions) + " actions");
        }
    });
}

namespace {

// Opens the editor and drags in it until it calls the host with such an event; it is closed then, within the
// call where the format allows it, else right after it. @return whether the event came
bool closeAt(EditorBench& bench, RandomHand& hand, EditorEvent::Kind kind) {
    constexpr int kMostDrags = 12;
    const bool closesWithin = bench.instance().capabilities().closesWithinCalls;
    bool hasCome = false;
    bench.open();
    bench.setHandler([&](const EditorEvent& event) {
        if (event.kind == kind && !hasCome) {
            hasCome = true;
            if (closesWithin) {
                bench.editor().close();
            }
        }
    });
    for (int drag = 0; drag < kMostDrags && !hasCome; ++drag) {
        hand.drag(bench);
        // What a plug-in hands over with its buffers.
        bench.sound();
        bench.turn();
        if (!hasCome) {
            hand.release();
            bench.turn();
        }
    }
    bench.close();
    hand.release();
    bench.setHandler({});
    return hasCome;
}

} // namespace

void checkEditorClosing(Context& context) {
    using Kind = EditorEvent::Kind;
    constexpr std::pair<Kind, const char*> kKinds[] = {{Kind::kOffer, "an offer of the mouse"},
                                                       {Kind::kTouch, "the beginning of a gesture"},
                                                       {Kind::kValue, "a value"},
                                                       {Kind::kRelease, "the end of a gesture"},
                                                       {Kind::kResize, "a request for a size"}};
    const int rounds = context.isFull() ? 20 : 2;
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        RandomHand hand(screen, context.seed());
        int came = 0;
        for (const auto& [kind, name] : kKinds) {
            bool hasCome = true;
            for (int round = 0; round < rounds && hasCome; ++round) {
                context.step(effect.info.id + ", closed at " + name);
                hasCome = closeAt(bench, hand, kind);
                came += hasCome ? 1 : 0;
                bench.sound();
                reportFaults(context, bench);
            }
        }
        context.step(effect.info.id + ", closed with the button down");
        bench.open();
        hand.drag(bench);
        bench.close();
        hand.release();
        reportFaults(context, bench);
        if (came == 0) {
            context.note("the editor has never called its host");
        }
    });
}

void checkEditorInstanceEnds(Context& context) {
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        auto instance = effect.create();
        if (!instance->capabilities().mayEndWithEditor) {
            context.skip("the editor reaches for its instance, which a host then keeps longer");
        }
        EditorBench bench(screen, effect, std::move(instance));
        bench.sound();
        bench.open();
        bench.endInstance();
        bench.turn(5);
        bench.close();
        context.step("another instance of " + effect.info.id);
        EditorBench next(screen, effect, effect.create(), 1);
        next.sound();
        next.open();
        context.expect(next.visibleSize().has_value(), "no editor of the next instance", "it");
        next.close();
    });
}

void checkEditorLostServer(Context& context) {
    const auto check = [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        bench.open();
        screen.lose();
        context.step(effect.info.id + " without its X server");
        bench.turn(10);
        bench.sound();
        bench.close();
        context.step(effect.info.id + ", opened without an X server");
        try {
            bench.open();
            bench.close();
        } catch (const PluginError&) {
            // As it should.
        }
        bench.sound();
        context.expect(bench.isFinite(), "no numbers after the X server has ended", "numbers");
    };
    // The server is lost once.
    forEachEditor(context, check, 1);
}

} // namespace varno::validate
