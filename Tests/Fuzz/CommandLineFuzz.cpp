// Words of a command line, and the values of its options.
#include "CommandLine/CommandLine.h"
#include "Commands.h"
#include "Host/HostError.h"
#include "Render/RenderOptions.h"
#include "Settings/Quality.h"
#include "Settings/Settings.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"

#include <algorithm>
#include <set>

namespace varno::fuzz {
namespace {

// How the first byte of an input has the rest used.
enum class WordUse : unsigned char {
    kLine,     ///< Words of `varno render`, one per line.
    kSetting,  ///< A value of --set.
    kChannels, ///< A value of --channels.
    kQuality,  ///< A value of --quality.
    kCount,
};

// What of the product a planted fault replaces.
struct WordCalls {
    std::function<std::vector<ChannelGroup>(const std::string&)> channels = channelGroups;
    std::function<std::optional<std::int32_t>(std::string_view)> quality = qualityNamed;
    std::function<double(const Instance&, const ParameterText&)> valueOf = [](const Instance& instance,
                                                                              const ParameterText& text) {
        return normalizedFromText(instance, text, unitSettings(instance), "--set", kExitWrongUsage);
    };
    std::function<RenderOptions(const CommandLine&)> render = renderOptions;
};

class CommandLineTarget : public FuzzTarget {
public:
    explicit CommandLineTarget(WordCalls calls = {})
        : mCalls(std::move(calls)),
          mRender(renderCommand()) {}

    void run(std::string_view input) override {
        FuzzInput parts(input);
        const auto kind = static_cast<WordUse>(parts.choose(static_cast<std::size_t>(WordUse::kCount)));
        try {
            use(kind, std::string(parts.rest()));
        } catch (const CommandError& error) {
            require(error.exitStatus() == kExitWrongUsage, "wrong usage has the exit status of a failure");
            require(error.what()[0] != '\0', "a refusal has no reason");
        }
        mEffect.restart(mEffect.soundValues());
    }

private:
    void use(WordUse kind, const std::string& text) {
        switch (kind) {
        case WordUse::kLine:
            useLine(text);
            break;
        case WordUse::kSetting:
            useSetting(text);
            break;
        case WordUse::kChannels:
            useChannels(text);
            break;
        default:
            useQuality(text);
            break;
        }
    }

    void useLine(std::string_view text) {
        std::vector<std::string> words;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find('\n'), text.size());
            words.emplace_back(text.substr(0, end));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        const CommandLine line(mRender, words);
        require(line.words().size() == words.size() + 1, "a word of the command line is lost");
        line.checkArguments();
        const RenderOptions options = mCalls.render(line);
        constexpr int kLongestBlock = 1 << 24;
        require(options.blockFrames >= 1 && options.blockFrames <= kLongestBlock, "a block has no length");
        require(options.jobs >= 1, "no job is to be done at a time");
        require(qualityNamed(qualityName(options.quality)) == options.quality, "a quality has no name");
        require(options.tailS >= 0.0 && std::isfinite(options.tailS), "a tail has no length");
        require(!options.tasks.empty(), "there is nothing to do");
        // What names files is read when settings are.
        if (!line.has("--state") && !line.has("--preset")) {
            Settings(line).applyTo(mEffect.get());
        }
    }

    void useSetting(const std::string& text) {
        const ParameterText parameter = parameterTextFromOption(text);
        require(parameter.id + '=' + parameter.value == text, "a setting has lost a character");
        const double value = mCalls.valueOf(mEffect.get(), parameter);
        require(value >= 0.0 && value <= 1.0, "a value is out of its range");
        const auto settings = unitSettings(mEffect.get());
        const std::string written = trueText(parameter.id, value, settings);
        if (!written.empty()) {
            const double again = mCalls.valueOf(mEffect.get(), {parameter.id, written});
            require(trueText(parameter.id, again, settings) == written,
                    "a true value does not read as written");
        }
    }

    void useChannels(const std::string& text) {
        const std::vector<ChannelGroup> groups = mCalls.channels(text);
        require(!groups.empty(), "there is no group of channels");
        std::set<int> seen;
        for (const ChannelGroup& group : groups) {
            require(group.size() == 1 || group.size() == 2, "a group is neither mono nor stereo");
            for (const int channel : group) {
                require(channel >= 0 && seen.insert(channel).second, "a channel is none, or there twice");
            }
        }
        require(mCalls.channels(channelGroupsText(groups)) == groups,
                "groups do not read as they are written");
    }

    void useQuality(const std::string& text) {
        if (const auto factor = mCalls.quality(text)) {
            require(qualityName(*factor) == text, "a quality has two names");
        }
    }

    WordCalls mCalls;
    CommandEntry mRender;
    FuzzedInstance mEffect;
};

std::vector<std::string> commandLineSeeds() {
    const auto use = [](WordUse kind, const std::string& text) {
        return std::string(1, static_cast<char>(kind)) + text;
    };
    std::vector<std::string> seeds = {
        use(WordUse::kLine,
            "--set\nGain=-3dB\n--quality\n4x\n--channels\n1-2,3\n--tail\n0.5\nin.wav\nout.wav"),
        use(WordUse::kLine,
            "--set=Atk=2.4 ms\n--set=Ratio=#5\n--block=64\n--jobs=2\n--out-dir\nd\na.wav\nb.wav"),
        use(WordUse::kLine, "--mid-side\n-q\n--format\n24\n--dither\ntpdf\n--\n-\n-"),
        use(WordUse::kSetting, "MasterBypassID=bypass"),
        use(WordUse::kSetting, "Rls=1.28 s"),
        use(WordUse::kChannels, "1-2,3,4"),
        use(WordUse::kChannels, "2147483647,1-1"),
        use(WordUse::kQuality, "8x"),
        use(WordUse::kQuality, "8x ")};
    for (const char* setting :
         {"Gain=+3.5 dB", "Mix=40%", "Ratio=#8", "UK=on", "Hot=0.07", "Volume=nan", "HP=1e-3"}) {
        seeds.push_back(use(WordUse::kSetting, setting));
    }
    return seeds;
}

// The planted faults.

std::vector<ChannelGroup> channelsTwice(const std::string& text) {
    std::vector<ChannelGroup> groups = channelGroups(text);
    groups.push_back(groups.front());
    return groups;
}

std::optional<std::int32_t> qualityByItsStart(std::string_view text) {
    return qualityNamed(text.substr(0, 2));
}

double halfOfTheSetting(const Instance& instance, const ParameterText& text) {
    return WordCalls().valueOf(instance, text) / 2.0;
}

RenderOptions renderOfAnyTail(const CommandLine& line) {
    RenderOptions options = renderOptions(line);
    options.tailS = -options.tailS;
    return options;
}

} // namespace

FuzzSubject commandLineSubject() {
    return {
        "commandLine",
        makerOf<CommandLineTarget>(),
        commandLineSeeds(),
        {{"a channel is in two groups", makerOf<CommandLineTarget>(WordCalls{channelsTwice})},
         {"a quality has several names", makerOf<CommandLineTarget>(WordCalls{.quality = qualityByItsStart})},
         {"half of a value is read", makerOf<CommandLineTarget>(WordCalls{.valueOf = halfOfTheSetting})},
         {"a tail may be negative", makerOf<CommandLineTarget>(WordCalls{.render = renderOfAnyTail})}},
        {"Apps/varno/CommandLine/CommandLine.cpp", "Apps/varno/Render/ChannelGroups.cpp",
         "Apps/varno/Render/RenderOptions.cpp", "Surround/Settings/WrittenValue.cpp",
         "Surround/Settings/QualityText.cpp"}};
}

} // namespace varno::fuzz
