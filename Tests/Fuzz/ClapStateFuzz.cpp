// States that hosts give CLAP plug-ins, by their record and by the plug-in's own functions.
#include "CLAP/StateRecord.h"
#include "Host/HostError.h"
#include "Host/Oversampling/RateConverter.h"
#include "Tests/Formats/CLAP/HostedClap.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"

#include <algorithm>

namespace varno::fuzz {
namespace {

// What of the product a planted fault replaces.
struct ClapCalls {
    std::function<bool(test::HostedClap&, const std::string&, std::size_t)> load =
        [](test::HostedClap& plugin, const std::string& state, std::size_t most) {
            return plugin.load(state, 0, most);
        };
    std::function<StateRecord(std::span<const std::byte>)> read = recordFrom;
};

class ClapStateTarget : public FuzzTarget {
public:
    explicit ClapStateTarget(ClapCalls calls = {})
        : mCalls(std::move(calls)),
          mStart(mPlugin.save()) {}

    /// The first byte of an input is the number of bytes that the host gives at once; the rest is the state.
    void run(std::string_view input) override {
        FuzzInput parts(input);
        const std::size_t most = std::size_t{1} + parts.take<unsigned char>();
        const std::string state(parts.rest());
        checkRecord(state);
        const bool isLoaded = mCalls.load(mPlugin, state, most);
        const std::string saved = mPlugin.save();
        require(!saved.empty(), "the plug-in has no state");
        if (!isLoaded) {
            require(saved == mStart, "a refused state has changed something");
        } else {
            const auto plugin = recordFrom(bytesOf(state)).plugin;
            require(!plugin || recordFrom(bytesOf(saved)).plugin == plugin,
                    "bypass or quality are not those loaded");
            checkLoaded(saved);
        }
        mHost.log.clear();
    }

private:
    void checkRecord(const std::string& state) const {
        try {
            const StateRecord record = mCalls.read(bytesOf(state));
            require(textOf(varno::bytesOf(record)) == state, "a record is not written as it was read");
            require(!record.plugin || std::ranges::count(kOversamplingFactors, record.plugin->quality) == 1,
                    "a record has a quality that there is not");
        } catch (const HostError& error) {
            require(error.what()[0] != '\0', "a refusal has no reason");
        }
    }

    void checkLoaded(const std::string& saved) {
        if (saved == mStart) {
            return;
        }
        for (clap_id id = 0; id <= kLastParameter; ++id) {
            const double value = mPlugin.value(id);
            require(value >= 0.0 && value <= kHighestValue, "a value is out of its range");
        }
        require(mCalls.load(mPlugin, mStart, kWhole), "the state of the start is refused");
        require(mPlugin.save() == mStart, "the state of the start does not come back");
        require(mCalls.load(mPlugin, saved, kWhole), "a state that was saved is refused");
        require(mPlugin.save() == saved, "a state does not come back exactly");
        require(mCalls.load(mPlugin, mStart, kWhole), "the state of the start is refused");
    }

    static constexpr clap_id kLastParameter = 13;
    static constexpr double kHighestValue = 7.0; // the eighth curve
    static constexpr std::size_t kWhole = 1 << 20;

    ClapCalls mCalls;
    test::ClapHost mHost;
    test::HostedClap mPlugin{clap_entry, mHost, 2};
    std::string mStart;
};

std::vector<std::string> clapStateSeeds() {
    test::ClapHost host;
    test::HostedClap plugin(clap_entry, host, 2);
    const std::string start = plugin.save();
    const std::string settings = plugin.save(CLAP_STATE_CONTEXT_FOR_PRESET);
    for (clap_id id = 1; id <= 13; ++id) {
        plugin.add({{0, id, 1.0}});
    }
    plugin.add({{0, 0, 1.0}, {0, 1000, 2.0}});
    plugin.flush();
    const std::string changed = plugin.save();
    std::string nextVersion = changed;
    nextVersion[settings.size() + 4] = 2;
    std::vector<std::string> seeds;
    for (const std::string& state : {start, settings, changed, nextVersion,
                                     changed.substr(0, changed.size() - 4), changed + "x", std::string()}) {
        seeds.push_back('\xFF' + state);
    }
    seeds.push_back('\2' + changed);
    return seeds;
}

// The planted faults.

// A refused state loads its settings.
bool loadWhatIsThere(test::HostedClap& plugin, const std::string& state, std::size_t most) {
    constexpr std::size_t kPluginBytes = 16;
    if (plugin.load(state, 0, most)) {
        return true;
    }
    for (std::size_t cut = 1; cut <= kPluginBytes && cut < state.size(); ++cut) {
        if (plugin.load(state.substr(0, state.size() - cut), 0, most)) {
            return false;
        }
    }
    return false;
}

bool loadThePreset(test::HostedClap& plugin, const std::string& state, std::size_t most) {
    return plugin.load(state, CLAP_STATE_CONTEXT_FOR_PRESET, most);
}

StateRecord recordOfItsBeginning(std::span<const std::byte> bytes) {
    try {
        return recordFrom(bytes);
    } catch (const HostError&) {
        return recordFrom(bytes.first(bytes.size() - std::min<std::size_t>(bytes.size(), 1)));
    }
}

} // namespace

FuzzSubject clapStateSubject() {
    return {"clapState",
            makerOf<ClapStateTarget>(),
            clapStateSeeds(),
            {{"a refused state is loaded in part", makerOf<ClapStateTarget>(ClapCalls{loadWhatIsThere})},
             {"quality and bypass are not loaded", makerOf<ClapStateTarget>(ClapCalls{loadThePreset})},
             {"a byte behind a record is ignored",
              makerOf<ClapStateTarget>(ClapCalls{.read = recordOfItsBeginning})}},
            {"Formats/CLAP/StateRecord.cpp", "Formats/CLAP/StateStreams.cpp", "Host/StoredChunk.cpp"}};
}

} // namespace varno::fuzz
