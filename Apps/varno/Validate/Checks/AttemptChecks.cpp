#include "Validate/Checks/AttemptChecks.h"

#include "Validate/Checks/Effects.h"
#include "Validate/ProcessTraces.h"

#include <cmath>

namespace varno::validate {
namespace {

constexpr std::size_t kAttemptFrames = 2048;

// What must remain: the values, and what is saved.
class Remaining {
public:
    Remaining(const Effect& effect, PluginInstance& instance)
        : mInstance(instance),
          mValues(allValues(instance)),
          mState(savedBy(instance)) {
        // A plug-in that finds nothing of its own in a state may fall back to its defaults.
        const auto fresh = effect.create();
        setAll(*fresh, mValues);
        // What a plug-in takes from its ports, it takes with a buffer.
        (void)render(effect, *fresh, signals::silence(static_cast<std::size_t>(effect.info.inputs), 64));
        mFreshState = savedBy(*fresh);
    }

    // What has changed; empty where nothing has.
    std::string change() const {
        const ValueVector now = allValues(mInstance);
        for (std::size_t index = 0; index < now.size(); ++index) {
            if (now[index] != mValues[index]) {
                return mInstance.parameters()[index].name + " changed from " +
                       std::to_string(mValues[index]) + " to " + std::to_string(now[index]);
            }
        }
        const State state = savedBy(mInstance);
        return state == mState || state == mFreshState ? "" : "another state saved than before";
    }

private:
    using State = std::optional<std::vector<std::byte>>;

    static State savedBy(PluginInstance& instance) {
        return instance.capabilities().hasState ? instance.saveState() : State();
    }

    PluginInstance& mInstance;
    ValueVector mValues;
    State mState;
    State mFreshState;
};

std::vector<Attempt> requireAttempts(const Context& context, PluginInstance& instance, AttemptKind kind) {
    std::vector<Attempt> attempts = instance.attempts(kind);
    if (attempts.empty()) {
        context.skip(kind == AttemptKind::kForeignStates ? "it stores nothing beside its parameters"
                                                         : "it calls no host while a host could call it");
    }
    return attempts;
}

// Makes each attempt, after which nothing may be otherwise.
void tryAll(Context& context, const Effect& effect, AttemptKind kind) {
    const auto instance = effect.create();
    std::mt19937_64 random(context.seed());
    setAll(*instance, randomValues(*instance, random));
    (void)render(effect, *instance, music(effect, kAttemptFrames, context.seed()));
    context.step(effect.info.id + ", preparing");
    const std::vector<Attempt> attempts = requireAttempts(context, *instance, kind);
    const Remaining remaining(effect, *instance);
    for (const Attempt& attempt : attempts) {
        context.step(effect.info.id + ", " + attempt.name);
        const std::string wrong = attempt.make();
        context.expect(wrong.empty(), std::string(wrong).append(" from ").append(attempt.name),
                       "an error, or nothing");
        const std::string change = remaining.change();
        if (!context.expect(change.empty(), std::string(change).append(" by ").append(attempt.name),
                            "nothing changed")) {
            return;
        }
    }
    context.expect(std::isfinite(largestOf(
                       render(effect, *instance, music(effect, kAttemptFrames, context.seed())).output)),
                   "sound that is not finite afterwards", "finite sound");
}

} // namespace

void checkUnknownIdentifiers(Context& context) {
    forEachEffect(context,
                  [&](const Effect& effect) { tryAll(context, effect, AttemptKind::kUnknownIdentifiers); });
}

void checkForeignStates(Context& context) {
    constexpr int kQuickRounds = 50;
    constexpr int kFullRounds = 1000;
    const int rounds = context.isFull() ? kFullRounds : kQuickRounds;
    forEachEffect(context, [&](const Effect& effect) {
        const auto own = effect.create();
        if (!own->capabilities().hasState) {
            context.skip("it saves no state");
        }
        tryAll(context, effect, AttemptKind::kForeignStates);
        const auto attempts = own->attempts(AttemptKind::kForeignStates);
        const auto tryRound = [&] {
            for (const Attempt& attempt : attempts) {
                (void)attempt.make();
            }
        };
        // What is made once and kept is no loss.
        tryRound();
        MemoryGrowth growth(rounds);
        for (int round = 0; round < rounds; ++round) {
            context.step(effect.info.id + ", all foreign states, round " + std::to_string(round + 1));
            tryRound();
            growth.endRound();
        }
        const auto bytes = growth.bytesPerRound();
        context.expect(!bytes,
                       std::to_string(bytes.value_or(0)) + " bytes lost by " +
                           std::to_string(attempts.size()) + " foreign states",
                       "their memory given back");
    });
}

void checkCallsFromWithin(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        for (const Attempt& attempt : requireAttempts(context, *instance, AttemptKind::kCallsFromWithin)) {
            context.step(effect.info.id + ", " + attempt.name);
            const std::string wrong = attempt.make();
            context.expect(wrong.empty(), std::string(wrong).append(" after ").append(attempt.name),
                           "what a host sees that calls nothing");
        }
        context.expect(std::isfinite(largestOf(
                           render(effect, *instance, music(effect, kAttemptFrames, context.seed())).output)),
                       "sound that is not finite afterwards", "finite sound");
    });
}

} // namespace varno::validate
