// The state of LV2 plug-ins: values of control ports of any kind, as hosts keep them, and the record that the
// validator's host makes of them.
#include "Tests/Formats/LV2/FrozenSymbols.h"
#include "Tests/Formats/LV2/HostedPlugin.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Validate/Lv2/StateRecord.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace varno::fuzz {
namespace {

using validate::Lv2State;

// What of the product a planted fault replaces.
struct Lv2Calls {
    std::function<std::optional<Lv2State>(std::span<const std::byte>)> read = validate::stateOf;
    std::function<std::vector<std::byte>(const Lv2State&)> write =
        static_cast<std::vector<std::byte> (*)(const Lv2State&)>(validate::bytesOf);
    std::function<void(test::HostedPlugin&)> run = [](test::HostedPlugin& plugin) { plugin.run(kFrames); };

    static constexpr std::uint32_t kFrames = 40; ///< More than two steps of a glide.
};

// Bits, since values may be no numbers.
bool isSameRecord(const Lv2State& left, const Lv2State& right) {
    return left.properties == right.properties &&
           std::ranges::equal(left.values, right.values, [](const auto& one, const auto& other) {
               return one.first == other.first &&
                      std::bit_cast<std::uint32_t>(one.second) == std::bit_cast<std::uint32_t>(other.second);
           });
}

class Lv2StateTarget : public FuzzTarget {
public:
    explicit Lv2StateTarget(Lv2Calls calls = {})
        : mCalls(std::move(calls)),
          mSymbols(test::frozenSymbols(kChannels)) {
        mSymbols.erase(mSymbols.begin(), mSymbols.begin() + 2 * kChannels);
        for (const std::string& symbol : mSymbols) {
            mStart[symbol] = mPlugin.port(symbol);
        }
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            mPlugin.connect(channel == 0 ? "in_l" : "in_r", mInput.data());
            mPlugin.connect(channel == 0 ? "out_l" : "out_r", mOutputs[channel].data());
        }
        mInput.fill(0.5F);
        restart();
    }

    void run(std::string_view input) override {
        const auto state = mCalls.read(bytesOf(input));
        if (!state) {
            return;
        }
        const auto written = mCalls.write(*state);
        const auto again = mCalls.read(written);
        require(again && isSameRecord(*again, *state), "a state is not read as it was written");
        require(mCalls.write(*again) == written, "equal states have other bytes");
        restore(*state);
    }

private:
    static constexpr std::size_t kChannels = 2;

    void restore(const Lv2State& state) {
        for (const auto& [symbol, value] : state.values) {
            if (std::ranges::find(mSymbols, symbol) != mSymbols.end()) {
                mPlugin.port(symbol) = value;
            }
        }
        mCalls.run(mPlugin);
        requireSound();
        restart();
    }

    // Behind a run with the values of the start, so that others glide.
    void restart() {
        mPlugin.set(mStart);
        mPlugin.activate();
        mPlugin.run(1);
    }

    void requireSound() {
        for (const auto& output : mOutputs) {
            require(std::ranges::all_of(output, [](float sample) { return std::isfinite(sample); }),
                    "a sample is none");
        }
        for (const char* meter : {"grl", "grr", "inrms", "outrms"}) {
            const float shown = mPlugin.port(meter);
            require(shown >= 0.0F && shown <= 1.0F, "a meter is out of its range");
        }
        constexpr float kLatencies[] = {1.0F, 41.0F, 46.0F, 48.0F};
        require(std::ranges::count(kLatencies, mPlugin.port("latency")) == 1,
                "a latency is that of no quality");
    }

    Lv2Calls mCalls;
    std::vector<std::string> mSymbols; ///< Of the control ports.
    test::PortValues mStart;
    std::array<float, Lv2Calls::kFrames> mInput{};
    std::array<std::array<float, Lv2Calls::kFrames>, kChannels> mOutputs{};
    test::HostedPlugin mPlugin{kChannels};
};

std::vector<std::string> lv2StateSeeds() {
    const auto seed = [](const Lv2State& state) { return textOf(validate::bytesOf(state)); };
    const float none = std::numeric_limits<float>::quiet_NaN();
    const float most = std::numeric_limits<float>::infinity();
    Lv2State all;
    Lv2State bad;
    for (const std::string& symbol : test::frozenSymbols(2)) {
        all.values[symbol] = 1.0F;
        bad.values[symbol] = bad.values.size() % 3 == 0 ? none : bad.values.size() % 3 == 1 ? most : -1e30F;
    }
    return {seed(all),
            seed(bad),
            seed({}),
            seed({{{"gain", 0.25F}, {"quality", 8.0F}}, {}}),
            seed({{{"enabled", 0.0F}, {"hot", none}}, {}}),
            seed({{{"gain", 0.5F}},
                  {{"urn:a", {"urn:t", 1, std::vector<std::byte>(5)}}, {"urn:b", {"", 0, {}}}}})};
}

// The planted faults.

std::vector<std::byte> writeWithoutFlags(const Lv2State& state) {
    Lv2State changed = state;
    for (auto& [key, property] : changed.properties) {
        property.flags = 0;
    }
    return validate::bytesOf(changed);
}

// As if the values of ports went to the meters.
void runShowingGain(test::HostedPlugin& plugin) {
    plugin.run(Lv2Calls::kFrames);
    plugin.port("inrms") = plugin.port("gain");
}

std::optional<Lv2State> readWithoutTheLast(std::span<const std::byte> bytes) {
    auto state = validate::stateOf(bytes);
    if (state && !state->values.empty() && !bytes.empty() && std::to_integer<int>(bytes.back()) % 2 == 0) {
        state->values.erase(std::prev(state->values.end()));
    }
    return state;
}

} // namespace

FuzzSubject lv2StateSubject() {
    return {"lv2State",
            makerOf<Lv2StateTarget>(),
            lv2StateSeeds(),
            {{"flags are lost", makerOf<Lv2StateTarget>(Lv2Calls{.write = writeWithoutFlags})},
             {"a value is lost", makerOf<Lv2StateTarget>(Lv2Calls{readWithoutTheLast})},
             {"a port's value is not limited", makerOf<Lv2StateTarget>(Lv2Calls{.run = runShowingGain})}},
            {"Apps/varno/Validate/Lv2/StateRecord.cpp", "Formats/LV2/ControlValues.cpp",
             "Formats/LV2/Plugin.cpp", "Formats/Shared/GlidingValues.cpp"}};
}

} // namespace varno::fuzz
