// Making, using and ending instances in every order.
#include "Validate/Check.h"
#include "Validate/Checks/AttemptChecks.h"
#include "Validate/Checks/ModuleLifeChecks.h"
#include "Validate/ProcessTraces.h"
#include "Validate/Silence.h"

#include <algorithm>

namespace varno::validate {
namespace {

constexpr double kLifeRateHz = 48000.0;
constexpr std::int32_t kLifeFrames = 64;

// Those that this program can run; at the quick level the first two.
std::vector<PluginInfo> usablePlugins(const Context& context, const Plugin& plugin) {
    constexpr std::size_t kMostAtQuickLevel = 2;
    std::vector<PluginInfo> usable;
    for (const PluginInfo& info : plugin.plugins()) {
        if (info.obstacle.empty() && (context.isFull() || usable.size() < kMostAtQuickLevel)) {
            usable.push_back(info);
        }
    }
    if (usable.empty()) {
        context.skip(obstaclesOf(plugin));
    }
    return usable;
}

void reportComplaints(Context& context, Plugin& plugin) {
    for (const std::string& complaint : plugin.takeComplaints()) {
        context.fail(complaint, "nothing against the rules of the format");
    }
}

void checkInstance(Context& context) {
    const auto plugin = context.open();
    for (const PluginInfo& info : usablePlugins(context, *plugin)) {
        context.step("create " + info.id);
        const auto instance = plugin->create(info, kLifeRateHz, kLifeFrames);
        Silence silence(info, kLifeFrames);
        silence.through(*instance);
        context.expect(silence.isFinite(), "no numbers from " + info.id + " for silence", "numbers");
    }
    reportComplaints(context, *plugin);
}

// What an order of calls is made with.
struct Use {
    Plugin& plugin;
    const PluginInfo& info;
    PluginInstance& instance;
    Silence& silence;
    const std::vector<std::byte>& state; ///< As another instance has saved it; empty where there is none.
};

struct Call {
    const char* name;
    void (*call)(const Use& use);
};

void setFirst(const Use& use) {
    if (!use.instance.parameters().empty()) {
        use.instance.set(0, use.instance.parameters().front().maximum);
    }
}

void readTexts(const Use& use) {
    const Capabilities can = use.instance.capabilities();
    for (std::size_t index = 0; can.hasValueTexts && index < use.instance.parameters().size(); ++index) {
        (void)use.instance.text(index, use.instance.get(index));
    }
}

void saveState(const Use& use) {
    if (use.instance.capabilities().hasState) {
        (void)use.instance.saveState();
    }
}

void restoreState(const Use& use) {
    if (use.instance.capabilities().hasState && !use.state.empty()) {
        (void)use.instance.restoreState(use.state);
    }
}

void resetAudio(const Use& use) {
    if (use.instance.capabilities().hasReset) {
        use.instance.reset();
    }
}

constexpr Call kCalls[] = {
    {"process", [](const Use& use) { use.silence.through(use.instance); }},
    {"process no frames", [](const Use& use) { use.silence.through(use.instance, 0); }},
    {"set", setFirst},
    {"texts", readTexts},
    {"save", saveState},
    {"restore", restoreState},
    {"reset", resetAudio},
    {"another instance", [](const Use& use) { (void)use.plugin.create(use.info, kLifeRateHz, kLifeFrames); }},
};

void checkOrders(Context& context) {
    const auto plugin = context.open();
    const std::size_t longest = context.isFull() ? 4 : 3;
    for (const PluginInfo& info : usablePlugins(context, *plugin)) {
        context.step("save the state of " + info.id);
        Silence silence(info, kLifeFrames);
        std::vector<std::byte> state;
        if (const auto saved = plugin->create(info, kLifeRateHz, kLifeFrames)->saveState()) {
            state = *saved;
        }
        for (std::size_t length = 1, count = std::size(kCalls); length <= longest;
             ++length, count *= std::size(kCalls)) {
            for (std::size_t number = 0; number < count; ++number) {
                const auto instance = plugin->create(info, kLifeRateHz, kLifeFrames);
                std::string names = info.id;
                for (std::size_t rest = number, place = 0; place < length;
                     ++place, rest /= std::size(kCalls)) {
                    const Call& call = kCalls[rest % std::size(kCalls)];
                    names += std::string(place == 0 ? ": " : ", ") + call.name;
                    context.step(names);
                    call.call({*plugin, info, *instance, silence, state});
                }
                context.expect(silence.isFinite(), "no numbers after " + names, "numbers");
            }
        }
    }
    reportComplaints(context, *plugin);
}

void checkRecycling(Context& context) {
    constexpr int kQuickRounds = 500;
    constexpr int kFullRounds = 10'000;
    const int rounds = context.isFull() ? kFullRounds : kQuickRounds;
    const auto plugin = context.open();
    for (const PluginInfo& info : usablePlugins(context, *plugin)) {
        Silence silence(info, kLifeFrames);
        const auto useOnce = [&] {
            const auto instance = plugin->create(info, kLifeRateHz, kLifeFrames);
            silence.through(*instance);
        };
        // What the plug-in makes once for all of its instances is no loss.
        useOnce();
        const ProcessTraces before;
        MemoryGrowth growth(rounds);
        for (int round = 0; round < rounds; ++round) {
            context.step(info.id + ", instance " + std::to_string(round + 1));
            useOnce();
            growth.endRound();
        }
        for (const std::string& change : before.changes()) {
            context.fail(change + " after " + std::to_string(rounds) + " instances of " + info.id,
                         "the process as it was before");
        }
        if (const auto bytes = growth.bytesPerRound()) {
            context.fail(std::to_string(*bytes) + " bytes of memory lost by each instance of " + info.id,
                         "none");
        }
    }
    reportComplaints(context, *plugin);
}

constexpr Check kLifeChecks[] = {
    {.id = "life-instance", .title = "An instance is made, used and ended", .run = checkInstance},
    {.id = "life-orders",
     .title = "Calls succeed in every order, up to three of them (full level: four)",
     .timeLimitS = 60,
     .run = checkOrders},
    {.id = "life-recycling",
     .title = "500 instances one after the other leave nothing behind (full level: 10,000)",
     .timeLimitS = 60,
     .run = checkRecycling},
    {.id = "life-callbacks",
     .title = "A host may call the plug-in while the plug-in calls the host",
     .timeLimitS = 60,
     .run = checkCallsFromWithin},
    {.id = "life-raw-orders",
     .title = "A data model takes four calls in any order, before and after its life too",
     .formats = static_cast<Formats>(Format::kModule),
     .timeLimitS = 60,
     .run = checkCallOrders},
    {.id = "life-withheld",
     .title = "A host may lack each interface and each pair of them",
     .formats = static_cast<Formats>(Format::kModule),
     .timeLimitS = 60,
     .run = checkWithheldInterfaces},
    {.id = "life-throwing-host",
     .title = "What the host throws becomes a result code",
     .formats = static_cast<Formats>(Format::kModule),
     .timeLimitS = 60,
     .run = checkThrowingHost},
    {.id = "life-failing-memory",
     .title = "Each of the first 500 allocations of every call of a data model may fail",
     .formats = static_cast<Formats>(Format::kModule),
     .timeLimitS = 60,
     .run = checkFailingAllocations},
};

} // namespace

std::span<const Check> lifeChecks() {
    return kLifeChecks;
}

} // namespace varno::validate
