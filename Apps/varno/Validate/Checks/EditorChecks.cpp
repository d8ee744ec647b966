// Opening editors, again and again, beside each other, and their sizes.
#include "Validate/Checks/EditorBench.h"
#include "Validate/Checks/EditorUseChecks.h"
#include "Validate/ProcessTraces.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace varno::validate {
namespace {

std::string textOf(EditorSize size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

void expectSize(Context& context, EditorBench& bench) {
    const auto visible = bench.visibleSize();
    const auto stated = bench.editor().size();
    if (context.expect(visible.has_value(), "nothing visible in the host's window", "the editor") && stated) {
        context.expect(*visible == *stated, "an editor of " + textOf(*visible) + " pixels",
                       textOf(*stated) + " pixels, as it has stated");
    }
}

void checkWindow(Context& context) {
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        bench.open();
        expectSize(context, bench);
        context.step("close " + effect.info.id);
        bench.close();
        context.expect(!bench.visibleSize(), "a window in the host's after the editor was closed", "none");
        bench.sound();
    });
}

std::ptrdiff_t residentBytes() {
    std::ifstream file("/proc/self/statm");
    std::ptrdiff_t all = 0;
    std::ptrdiff_t resident = 0;
    file >> all >> resident;
    return resident * ::sysconf(_SC_PAGESIZE);
}

// Counts that have not come back at the latest when the server has noticed all that was closed.
std::string resourcesLeft(EditorBench& bench, const Screen& screen, const ServerResources& before) {
    constexpr int kMostRounds = 100;
    std::string left;
    for (int round = 0; round < kMostRounds; ++round) {
        left.clear();
        for (const auto& [kind, count] : screen.resources()) {
            const auto found = before.find(kind);
            const std::uint32_t was = found == before.end() ? 0 : found->second;
            if (count > was) {
                left += (left.empty() ? "" : ", ") + std::to_string(count - was) + " of " + kind;
            }
        }
        if (left.empty()) {
            break;
        }
        bench.turn();
    }
    return left;
}

// What openings leave. What is made once, or fills a table, comes with the first half of them.
void openAgainAndAgain(Context& context, EditorBench& bench, const Screen& screen, int rounds) {
    constexpr int kFirst = 3;
    constexpr std::ptrdiff_t kMostResident = 1 << 20;
    const auto openOnce = [&](int round) {
        context.step("opening " + std::to_string(round + 1));
        bench.open();
        bench.close();
    };
    for (int round = 0; round < kFirst; ++round) {
        openOnce(round);
    }
    const ProcessTraces before;
    MemoryGrowth growth(rounds);
    ServerResources half;
    std::array<std::ptrdiff_t, 3> resident = {residentBytes()};
    for (int round = 0; round < rounds; ++round) {
        openOnce(kFirst + round);
        growth.endRound();
        if (round == rounds / 2) {
            half = screen.resources();
            resident[1] = residentBytes();
        }
    }
    resident[2] = residentBytes();
    const std::string left = resourcesLeft(bench, screen, half);
    const std::string openings = " after " + std::to_string(rounds) + " openings";
    context.expect(left.empty(), "the X server holding " + left + " more" + openings, "no more");
    for (const std::string& change : before.changes()) {
        context.fail(change + openings, "the process as it was before");
    }
    const auto bytes = growth.bytesPerRound();
    context.expect(!bytes, std::to_string(bytes.value_or(0)) + " bytes of memory lost by each opening",
                   "none");
    const std::ptrdiff_t more = std::min(resident[1] - resident[0], resident[2] - resident[1]);
    context.expect(more < kMostResident,
                   "resident memory growing by " + std::to_string(more) + " bytes in each half of " +
                       std::to_string(rounds) + " openings",
                   "less than 1 MiB");
}

void checkReopening(Context& context) {
    constexpr int kQuickRounds = 24;
    constexpr int kFullRounds = 500;
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        openAgainAndAgain(context, bench, screen, context.isFull() ? kFullRounds : kQuickRounds);
    });
}

void checkTwo(Context& context) {
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench one(screen, effect, effect.create());
        EditorBench other(screen, effect, effect.create(), 1);
        one.sound();
        other.sound();
        const int rounds = context.isFull() ? 50 : 1;
        for (int round = 0; round < 4 * rounds; ++round) {
            context.step("two editors, order " + std::to_string(round % 4 + 1));
            EditorBench& first = round % 2 == 0 ? one : other;
            EditorBench& second = round % 2 == 0 ? other : one;
            first.open();
            second.open();
            first.turn();
            context.expect(one.visibleSize() && other.visibleSize(), "not both of two editors",
                           "both to be visible");
            const bool isFirstClosed = round / 2 % 2 == 0;
            (isFirstClosed ? first : second).close();
            EditorBench& left = isFirstClosed ? second : first;
            left.turn(2);
            context.expect(left.visibleSize().has_value(),
                           "no editor once that of another instance is closed", "it to stay");
            left.close();
        }
    });
}

bool isScaled(EditorSize size, EditorSize plain, double scale) {
    constexpr double kSlack = 2.0;
    return std::abs(size.width - plain.width * scale) <= kSlack &&
           std::abs(size.height - plain.height * scale) <= kSlack;
}

// As of an editor that does not scale, or of one of which some parts do not, or are rounded.
bool isWithin(EditorSize size, EditorSize plain, double scale) {
    constexpr double kRounding = 1.02;
    const double most = scale * kRounding;
    return size.width >= plain.width && size.height >= plain.height && size.width <= plain.width * most &&
           size.height <= plain.height * most;
}

void checkScale(Context& context) {
    constexpr std::array kScales = {1.25, 1.5, 2.0, 3.0, 1.0};
    forEachEditor(context, [&](const Effect& effect, Screen& screen) {
        EditorBench bench(screen, effect, effect.create());
        bench.sound();
        bench.open();
        const EditorSize plain = bench.visibleSize().value_or(EditorSize{});
        bench.close();
        for (const double scale : kScales) {
            const std::string at = " at a scale of " + std::to_string(scale).substr(0, 4);
            context.step(effect.info.id + at);
            bench.open(scale);
            const EditorSize size = bench.visibleSize().value_or(EditorSize{});
            bench.close();
            if (isScaled(size, plain, scale)) {
                continue;
            }
            const bool isOfAnother =
                std::ranges::any_of(kScales, [&](double other) { return isScaled(size, plain, other); });
            if (isOfAnother || isWithin(size, plain, scale)) {
                context.note(textOf(size) + " pixels" + at + ", " + textOf(plain) + " at 1");
            } else {
                context.fail(textOf(size) + " pixels" + at,
                             textOf(plain) + " pixels, times at most the scale, or times another one");
            }
        }
    });
}

constexpr Check kEditorChecks[] = {
    {.id = "editor-window",
     .title = "An editor opens in a window of X11 and is as large as it says",
     .run = checkWindow},
    {.id = "editor-reopening",
     .title = "24 openings leave nothing behind (full level: 500)",
     .timeLimitS = 180,
     .run = checkReopening},
    {.id = "editor-two",
     .title = "Editors of two instances open and close in any order",
     .timeLimitS = 60,
     .run = checkTwo},
    {.id = "editor-scale",
     .title = "It follows the scale that the host states",
     .timeLimitS = 60,
     .run = checkScale},
    {.id = "editor-before-sound",
     .title = "It may be opened before the first buffer",
     .run = checkEditorBeforeSound},
    {.id = "editor-before-preparing",
     .title = "It may be opened before the instance is prepared for sound",
     .formats = Format::kLv2 | Format::kClap,
     .run = checkEditorBeforePreparing},
    {.id = "editor-running",
     .title = "It is open while sound and automation run",
     .timeLimitS = 60,
     .run = checkEditorRunning},
    {.id = "editor-input",
     .title = "Mouse and keys at random give whole gestures and values in range",
     .timeLimitS = 60,
     .run = checkEditorInput},
    {.id = "editor-closing",
     .title = "It may be closed whenever it calls its host",
     .timeLimitS = 60,
     .run = checkEditorClosing},
    {.id = "editor-instance-ends",
     .title = "An instance may end while its editor is open",
     .formats = Format::kLv2 | Format::kClap,
     .run = checkEditorInstanceEnds},
    {.id = "editor-lost-server",
     .title = "The host goes on when the X server ends",
     .run = checkEditorLostServer},
};

} // namespace

std::span<const Check> editorChecks() {
    return kEditorChecks;
}

} // namespace varno::validate
