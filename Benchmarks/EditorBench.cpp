// The editor on an X server of its own (Xvfb): how long a person waits for it, and what it costs to leave it
// open.
#include "DemoGain_Alg.h"
#include "Host/Module.h"
#include "Tests/Integration/Editor/EditorWindow.h"
#include "Tests/Integration/Editor/HostLoop.h"
#include "Tests/Integration/Editor/KnobGeometry.h"
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/XServer.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <numbers>
#include <stdexcept>
#include <thread>

using namespace varno;
using namespace varno::test;

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

// The host with the module and a screen.
struct Host {
    static const std::string& display() {
        static const XServer server;
        setenv("DISPLAY", server.display().c_str(), 1);
        return server.display();
    }

    const XClient client{display()};
    HostLoop loop{client};
    Pointer pointer{client};
    std::shared_ptr<Module> module = Module::open(std::filesystem::path(VARNO_BUNDLE));
    std::unique_ptr<Instance> instance = makeInstance(module);
};

// Turns the host's loop, without a pause, until the condition holds.
template<typename Condition>
void turnUntil(HostLoop& loop, Condition condition) {
    if (!loop.await(condition)) {
        throw std::runtime_error("the editor does not do what is waited for");
    }
}

bool isDrawn(const EditorWindow& window, const std::string& id) {
    return window.picture(id).countColours() > 2;
}

// From the host's wish to the picture of the last control on the screen.
void openToFirstPaint(benchmark::State& state) {
    Host host;
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        EditorWindow window({host.client, host.loop}, *host.instance);
        turnUntil(host.loop, [&] { return isDrawn(window, "METERGR2"); });
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
}
BENCHMARK(openToFirstPaint)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(15);

// From a step of the mouse to the knob's new picture on the screen.
void dragToRedraw(benchmark::State& state) {
    Host host;
    EditorWindow window({host.client, host.loop}, *host.instance);
    turnUntil(host.loop, [&] { return isDrawn(window, "Mix"); });
    const auto moveTo = [&](double change) {
        const Area knob = areaOf("Mix");
        host.pointer.move(window.onScreen(Place{knob.x, knob.y} + pullOf(change)));
    };
    moveTo(0.0);
    host.loop.turn();
    host.pointer.press();
    double change = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        constexpr double kStep = 0.1;
        constexpr double kMost = 0.85;
        const Picture before = window.picture("Mix");
        change = change < kMost ? change + kStep : kStep / 2;
        const auto start = Clock::now();
        moveTo(change);
        turnUntil(host.loop, [&] { return window.picture("Mix") != before; });
        state.SetIterationTime(Seconds(Clock::now() - start).count());
    }
    host.pointer.release();
    host.loop.turn();
}
BENCHMARK(dragToRedraw)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

double processorSeconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

void moveMeters(Instance& instance, int tick) {
    constexpr double kPerTick = 2.0 * std::numbers::pi / 20.0;
    const double value = 0.5 + 0.5 * std::sin(tick * kPerTick);
    for (const EMeterTap tap : {eMeterTap_GainReductionLeft, eMeterTap_GainReductionRight}) {
        const auto index = instance.meters().indexOf(cDemoGain_MeterID[tap]);
        instance.meters().taps()[index.value()] = static_cast<float>(value);
    }
    instance.meters().afterBuffer(0);
}

// An open editor whose meters move, with 30 turns of the host's loop a second. Only this process is counted,
// with what the host does in its loop.
void idleWithMovingMeters(benchmark::State& state) {
    Host host;
    EditorWindow window({host.client, host.loop}, *host.instance);
    turnUntil(host.loop, [&] { return isDrawn(window, "METERGR2"); });
    constexpr int kTicks = 150;
    constexpr std::chrono::microseconds kPeriod(33'333);
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        const double before = processorSeconds();
        for (int tick = 1; tick <= kTicks; ++tick) {
            moveMeters(*host.instance, tick);
            host.loop.turn();
            std::this_thread::sleep_until(start + tick * kPeriod);
        }
        const double passed = Seconds(Clock::now() - start).count();
        state.SetIterationTime(passed);
        state.counters["percent_of_a_core"] = 100.0 * (processorSeconds() - before) / passed;
    }
}
BENCHMARK(idleWithMovingMeters)->UseManualTime()->Unit(benchmark::kSecond)->Iterations(1);

} // namespace
