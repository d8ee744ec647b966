// The state that hosts save and restore.
#include "Validate/Check.h"
#include "Validate/Checks/AttemptChecks.h"
#include "Validate/Checks/Effects.h"

#include <algorithm>
#include <cmath>
#include <malloc.h>

namespace varno::validate {
namespace {

using signals::Signal;
using Bytes = std::vector<std::byte>;

constexpr std::size_t kHeardFrames = 2048;

void requireState(const Context& context, const PluginInstance& instance) {
    if (!instance.capabilities().hasState) {
        context.skip("it saves no state");
    }
}

// Like numbers that are kept in single precision.
bool isNear(const Parameter& parameter, double left, double right) {
    constexpr double kOfSpan = 1e-6;
    return std::fabs(left - right) <= kOfSpan * (parameter.maximum - parameter.minimum);
}

std::string firstOtherValue(const PluginInstance& instance, const ValueVector& expected,
                            const ValueVector& found) {
    for (std::size_t index = 0; index < expected.size(); ++index) {
        const Parameter& parameter = instance.parameters()[index];
        if (!isNear(parameter, expected[index], found[index])) {
            return parameter.name + " at " + std::to_string(found[index]) + " instead of " +
                   std::to_string(expected[index]);
        }
    }
    return {};
}

void compareSound(Context& context, const Effect& effect, const ValueVector& values,
                  PluginInstance& restored) {
    const Signal input = music(effect, kHeardFrames, context.seed());
    const auto fresh = effect.create();
    setAll(*fresh, values);
    const std::string difference = signals::firstDifference(render(effect, *fresh, input).output,
                                                            render(effect, restored, input).output);
    if (!difference.empty()) {
        failModule(context, "a restored instance sounds differently: " + difference,
                   "the sound of an instance with these values");
    }
}

void checkRoundTrip(Context& context) {
    const int rounds = context.isFull() ? 10000 : 200;
    // Sound takes the most time.
    constexpr int kHeardEvery = 10;
    forEachEffect(context, [&](const Effect& effect) {
        const auto saving = effect.create();
        requireState(context, *saving);
        const bool repeats = isRepeatable(effect, music(effect, kHeardFrames, context.seed()));
        std::mt19937_64 random(context.seed());
        for (int round = 0; round < rounds; ++round) {
            context.step(effect.info.id + ", vector " + std::to_string(round));
            const ValueVector values = randomValues(*saving, random);
            setAll(*saving, values);
            const auto state = saving->saveState();
            const auto restored = effect.create();
            if (!context.expect(state.has_value(), "a state that cannot be saved", "its bytes") ||
                !context.expect(restored->restoreState(*state), "a state of its own refused",
                                "it restored")) {
                return;
            }
            const auto again = restored->saveState();
            const std::string other = firstOtherValue(*saving, values, allValues(*restored));
            if (!context.expect(other.empty(), "restored " + other, "every value as it was saved") ||
                !context.expect(again == state, "other bytes of the restored state saved again",
                                "the same bytes")) {
                return;
            }
            if (repeats && round % kHeardEvery == 0) {
                compareSound(context, effect, values, *restored);
            }
        }
    });
}

// Restores bytes that may be none of its states, and looks at what that has done.
class DamageCheck {
public:
    DamageCheck(Context& context, PluginInstance& instance)
        : mContext(context),
          mInstance(instance) {}

    void restore(const Bytes& bytes, const std::string& what) {
        mContext.step(what);
        const ValueVector before = allValues(mInstance);
        const bool isTaken = mInstance.restoreState(bytes);
        const ValueVector after = allValues(mInstance);
        for (std::size_t index = 0; index < after.size(); ++index) {
            const Parameter& parameter = mInstance.parameters()[index];
            const bool isInRange = after[index] >= parameter.minimum && after[index] <= parameter.maximum;
            mContext.expect(isInRange,
                            parameter.name + " at " + std::to_string(after[index]) + " after " + what,
                            "a value in its range");
            mContext.expect(isTaken || after[index] == before[index],
                            parameter.name + " changed by a state that was refused, " + what,
                            "nothing changed");
        }
    }

private:
    Context& mContext;
    PluginInstance& mInstance;
};

Bytes randomBytes(std::size_t count, std::mt19937_64& random) {
    Bytes bytes(count);
    for (std::byte& byte : bytes) {
        byte = static_cast<std::byte>(random());
    }
    return bytes;
}

void damage(Context& context, DamageCheck& check, const Bytes& state, std::mt19937_64& random) {
    // At the quick level, about so many of each kind.
    constexpr std::size_t kMostQuick = 1500;
    const std::size_t most = context.isFull() ? std::numeric_limits<std::size_t>::max() : kMostQuick;
    const std::size_t stride = std::max<std::size_t>(1, state.size() / most);
    for (std::size_t size = 0; size < state.size(); size += stride) {
        check.restore(Bytes(state.begin(), state.begin() + static_cast<std::ptrdiff_t>(size)),
                      "the first " + std::to_string(size) + " bytes of a state");
    }
    const std::size_t bits = 8 * state.size();
    for (std::size_t bit = 0; bit < bits; bit += std::max<std::size_t>(1, bits / most)) {
        Bytes bytes = state;
        bytes[bit / 8] ^= static_cast<std::byte>(1U << (bit % 8));
        check.restore(bytes, "a state with bit " + std::to_string(bit) + " inverted");
    }
    constexpr std::size_t kMegabyte = 1048576;
    for (int round = 0; round < 3; ++round) {
        check.restore(randomBytes(kMegabyte, random), "a megabyte at random");
    }
    Bytes longer = state;
    longer.resize(state.size() + kMegabyte);
    check.restore(longer, "a state with a megabyte of zeros after it");
    check.restore(Bytes(kMegabyte, std::byte{0xFF}), "a megabyte of ones");
}

void checkDamaged(Context& context) {
    forEachEffect(context, [&](const Effect& effect) {
        const auto instance = effect.create();
        requireState(context, *instance);
        std::mt19937_64 random(context.seed());
        setAll(*instance, randomValues(*instance, random));
        const auto state = instance->saveState();
        if (!context.expect(state.has_value(), "a state that cannot be saved", "its bytes")) {
            return;
        }
        DamageCheck check(context, *instance);
        damage(context, check, *state, random);
        // A second time, when everything that is kept for good has been made.
        const std::size_t before = ::mallinfo2().uordblks;
        constexpr int kRounds = 200;
        for (int round = 0; round < kRounds; ++round) {
            check.restore(randomBytes(65536, random), "bytes at random, again");
            Bytes altered = *state;
            if (!altered.empty()) {
                constexpr std::byte kSomeBits{0x5A};
                altered[random() % altered.size()] ^= kSomeBits;
            }
            check.restore(altered, "a state with a byte altered, again");
        }
        const std::size_t after = ::mallinfo2().uordblks;
        constexpr std::size_t kMostGrowth = 1048576;
        context.expect(after <= before + kMostGrowth,
                       std::to_string((after - std::min(before, after)) / 1024) + " KiB more in use after " +
                           std::to_string(kRounds) + " states that are none",
                       "the memory given back");
        (void)render(effect, *instance, music(effect, kHeardFrames, context.seed()));
    });
}

constexpr Check kStateChecks[] = {
    {.id = "state-round-trip",
     .title = "A saved state gives the same values, bytes and sound in a new instance",
     .timeLimitS = 120,
     .run = checkRoundTrip},
    {.id = "state-damaged",
     .title = "Bytes that are no state are refused, and change nothing then",
     .timeLimitS = 120,
     .run = checkDamaged},
    {.id = "state-foreign",
     .title = "States of other plug-ins are refused or ignored, and leave nothing behind",
     .timeLimitS = 60,
     .run = checkForeignStates},
};

} // namespace

std::span<const Check> stateChecks() {
    return kStateChecks;
}

} // namespace varno::validate
