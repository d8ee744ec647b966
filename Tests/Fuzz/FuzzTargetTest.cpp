// Every fuzzer's target over its seeds and over changed ones, without a fuzzer; and with the faults that it
// must find.
#include "Tests/Fuzz/FuzzTarget.h"

#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace varno::fuzz {
namespace {

constexpr unsigned kFuzzSeed = 20260911;
constexpr int kChangedInputs = 300;      // per subject, times testScale()
constexpr int kMostInputsToFault = 5000; // until a planted fault must have been found

// The seeds one after the other, and then seeds with a few changes of the kinds that damage files.
class ChangedInputs {
public:
    explicit ChangedInputs(const std::vector<std::string>& seeds)
        : mSeeds(seeds) {}

    std::string next() {
        if (mNext < mSeeds.size()) {
            return mSeeds[mNext++];
        }
        std::string input = mSeeds[pick(mSeeds.size())];
        for (std::size_t left = 1 + pick(3); left > 0; --left) {
            change(input);
        }
        return input;
    }

private:
    std::size_t pick(std::size_t count) { return count == 0 ? 0 : mRandom() % count; }

    void change(std::string& input) {
        constexpr std::size_t kKinds = 6;
        const std::size_t at = pick(input.size());
        switch (pick(kKinds)) {
        case 0:
            input.resize(at);
            break;
        case 1:
            input.insert(at, 1 + pick(8), static_cast<char>(mRandom()));
            break;
        case 2:
            input.erase(at, 1 + pick(8));
            break;
        case 3:
            input.insert(at, input.substr(pick(input.size()), 1 + pick(32)));
            break;
        case 4:
            flip(input, at);
            break;
        default:
            overwrite(input, at);
            break;
        }
    }

    void flip(std::string& input, std::size_t at) {
        if (at < input.size()) {
            input[at] = static_cast<char>(input[at] ^ (1 << pick(8)));
        }
    }

    void overwrite(std::string& input, std::size_t at) {
        constexpr std::string_view kOften("\0\1\x7F\x80\xFF 09.,-n\n", 13);
        if (at < input.size()) {
            input[at] = kOften[pick(kOften.size())];
        }
    }

    const std::vector<std::string>& mSeeds;
    std::size_t mNext = 0;
    std::mt19937 mRandom{kFuzzSeed};
};

// What is wrong with an input, by the target; nothing where all is well.
std::optional<std::string> complaintOf(FuzzTarget& target, const std::string& input) {
    try {
        target.run(input);
        return std::nullopt;
    } catch (const std::exception& error) {
        return error.what();
    }
}

// The first input of so many that the target complains of.
std::optional<std::string> firstComplaint(FuzzTarget& target, const FuzzSubject& subject, int inputs) {
    ChangedInputs changed(subject.seeds);
    for (int i = 0; i < inputs; ++i) {
        const std::string input = changed.next();
        if (const auto complaint = complaintOf(target, input)) {
            return *complaint + "; input " + std::to_string(i) + ": " + testing::PrintToString(input);
        }
    }
    return std::nullopt;
}

class FuzzTargetTest : public testing::TestWithParam<FuzzSubject> {};

TEST_P(FuzzTargetTest, AllSeedsAreHandled) {
    const std::unique_ptr<FuzzTarget> target = GetParam().make();
    for (std::size_t i = 0; i < GetParam().seeds.size(); ++i) {
        EXPECT_EQ(complaintOf(*target, GetParam().seeds[i]), std::nullopt) << "seed " << i;
    }
}

TEST_P(FuzzTargetTest, ChangedSeedsAreHandled) {
    const std::unique_ptr<FuzzTarget> target = GetParam().make();
    const int inputs = static_cast<int>(GetParam().seeds.size()) + kChangedInputs * test::testScale();
    EXPECT_EQ(firstComplaint(*target, GetParam(), inputs), std::nullopt);
}

TEST_P(FuzzTargetTest, EveryPlantedFaultIsFound) {
    EXPECT_FALSE(GetParam().faults.empty());
    for (const PlantedFault& fault : GetParam().faults) {
        const std::unique_ptr<FuzzTarget> target = fault.make();
        EXPECT_NE(firstComplaint(*target, GetParam(), kMostInputsToFault), std::nullopt) << fault.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Subjects, FuzzTargetTest,
                         testing::Values(automationSubject(), chunkSubject(), clapStateSubject(),
                                         commandLineSubject(), containerSubject(), displayTextSubject(),
                                         lv2StateSubject(), pageTableSubject(), presetSubject(),
                                         tagsSubject()),
                         [](const testing::TestParamInfo<FuzzSubject>& subject) {
                             return subject.param.name;
                         });

} // namespace

// How GoogleTest shows a subject.
void PrintTo(const FuzzSubject& subject, std::ostream* out) {
    *out << subject.name;
}

} // namespace varno::fuzz
