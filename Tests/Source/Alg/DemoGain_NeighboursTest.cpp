#include "Alg/DemoGain_Neighbours.h"

#include "Alg/DemoGain_Routine.h"
#include "Alg/DemoGain_State.h"
#include "Tests/Support/AlgFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace varno::test::neighbours {

namespace {

constexpr double kRate = 48000.0;
constexpr std::size_t kFrames = 32;

// Instances that have nothing in common.
class Crowd {
public:
    explicit Crowd(std::size_t channels, std::size_t count = 4)
        : mChannels(channels) {
        for (std::size_t i = 0; i < count; ++i) {
            Member& member = mMembers.emplace_back(channels);
            member.instance.attach(member.in, member.out, kFrames);
            mContexts.push_back(&member.instance.context());
        }
    }

    struct Member {
        explicit Member(std::size_t channels)
            : instance(channels, kRate) {}

        AlgInstance instance;
        // With room for a buffer that is shifted.
        float audio[4][2 * kFrames] = {};
        const float* in[2] = {audio[0], audio[1]};
        float* out[2] = {audio[2], audio[3]};
    };

    Member& operator[](std::size_t i) { return mMembers[i]; }
    SDemoGain_Alg_Context& context(std::size_t i) { return mMembers[i].instance.context(); }
    std::vector<SDemoGain_Alg_Context*>& contexts() { return mContexts; }

    std::size_t neighbours(std::size_t most = 4) {
        return DemoGain_CountNeighbours(mChannels, mContexts.data(), mContexts.data() + mContexts.size(),
                                        most);
    }

private:
    std::size_t mChannels;
    std::deque<Member> mMembers;
    std::vector<SDemoGain_Alg_Context*> mContexts;
};

class DemoGain_Neighbours : public testing::TestWithParam<std::size_t> {};

TEST_P(DemoGain_Neighbours, InstancesWithNothingInCommonAreNeighbours) {
    for (std::size_t count = 1; count <= 5; ++count) {
        for (std::size_t most = 1; most <= 4; ++most) {
            EXPECT_EQ(Crowd(GetParam(), count).neighbours(most), std::min(count, most));
        }
    }
}

TEST_P(DemoGain_Neighbours, WhatOnlyOneWritesIsNoObstacle) {
    Crowd crowd(GetParam());
    for (std::size_t i = 0; i < 4; ++i) {
        crowd[i].in[0] = crowd[0].audio[0];
        crowd.context(i).mMix = crowd.context(0).mMix;
        crowd.context(i).mBufferSize = crowd.context(0).mBufferSize;
    }
    crowd[0].out[0] = crowd[0].audio[1]; // its own second input where there are two
    crowd[1].in[1] = crowd[1].audio[1];
    crowd[2].out[0] = crowd[2].audio[0]; // the others read the first one's
    EXPECT_EQ(crowd.neighbours(), 4U);
}

TEST_P(DemoGain_Neighbours, FieldsThatAreNotReadMayBeMissing) {
    Crowd crowd(GetParam());
    for (std::size_t i = 0; i < 4; ++i) {
        SDemoGain_Alg_Context& context = crowd.context(i);
        for (const float** unread : {&context.mGainDB, &context.mVolumeDB, &context.mAtk, &context.mRls,
                                     &context.mAuto, &context.mUK, &context.mRatio, &context.mSampleRate}) {
            *unread = nullptr;
        }
        if (GetParam() == 1) {
            context.mLinkSw = nullptr;
        }
    }
    EXPECT_EQ(crowd.neighbours(), 4U);
}

// What keeps the third instance from being a neighbour of the two before it.
using Obstacle = std::function<void(Crowd&)>;
std::vector<std::pair<std::string, Obstacle>> obstacles(std::size_t channels) {
    const std::size_t last = channels - 1;
    const auto stateWord = [](Crowd& crowd, std::size_t i) { return &crowd[i].instance.state().mPrevIn[0]; };
    return {
        {"longer buffer",
         [](Crowd& crowd) { crowd[2].instance.attach(crowd[2].in, crowd[2].out, kFrames + 1); }},
        {"no buffer", [](Crowd& crowd) { crowd[2].instance.attach(crowd[2].in, crowd[2].out, 0); }},
        {"high-pass", [](Crowd& crowd) { crowd[2].instance.state().mHp.a1 += 0.001F; }},
        {"all-pass", [](Crowd& crowd) { crowd[2].instance.state().mAp.b2 += 0.001F; }},
        {"clip recovery", [](Crowd& crowd) { crowd[2].instance.state().mClipCoef -= 0.001F; }},
        {"its context twice", [](Crowd& crowd) { crowd.contexts()[2] = crowd.contexts()[0]; }},
        {"its state", [](Crowd& crowd) { crowd.context(2).mState = &crowd[1].instance.state(); }},
        {"its taps", [](Crowd& crowd) { crowd.context(2).mMeters = crowd[0].instance.taps().data(); }},
        {"the end of its taps",
         [](Crowd& crowd) { crowd.context(2).mMeters = &crowd[0].instance.taps()[3]; }},
        {"its output as input", [=](Crowd& crowd) { crowd[2].in[last] = crowd[0].out[0]; }},
        {"its last output as input", [=](Crowd& crowd) { crowd[2].in[0] = crowd[1].out[last]; }},
        {"the last sample of its output",
         [=](Crowd& crowd) { crowd[2].in[0] = crowd[1].out[last] + kFrames - 1; }},
        {"its input as output", [=](Crowd& crowd) { crowd[2].out[last] = crowd[0].audio[0]; }},
        {"its last input as output", [=](Crowd& crowd) { crowd[2].out[0] = crowd[1].audio[last]; }},
        {"its output as output", [=](Crowd& crowd) { crowd[2].out[last] = crowd[0].out[0] + kFrames / 2; }},
        {"its state as output", [=](Crowd& crowd) { crowd[2].out[0] = stateWord(crowd, 0); }},
        {"its state as input", [=](Crowd& crowd) { crowd[2].in[0] = stateWord(crowd, 1); }},
        {"its port as output",
         [](Crowd& crowd) { crowd[2].out[0] = &crowd[0].instance.field(eAlgFieldID_Mix); }},
        {"its bypass as output",
         [](Crowd& crowd) { crowd[2].out[0] = reinterpret_cast<float*>(&crowd[1].instance.bypass()); }},
        {"a port in its output", [](Crowd& crowd) { crowd.context(2).mCurve3 = crowd[0].out[0] + 3; }},
        {"a port in its taps", [](Crowd& crowd) { crowd.context(2).mHot = &crowd[0].instance.taps()[2]; }},
        {"its context as output",
         [](Crowd& crowd) { crowd[2].out[0] = reinterpret_cast<float*>(&crowd.context(0)); }},
        {"its list of inputs as output",
         [](Crowd& crowd) { crowd[2].out[0] = reinterpret_cast<float*>(crowd[0].in); }},
        {"its list of outputs as taps",
         [](Crowd& crowd) { crowd.context(2).mMeters = reinterpret_cast<float*>(crowd[1].out); }},
    };
}

TEST_P(DemoGain_Neighbours, WhatOneWritesAndAnotherTouchesIsAnObstacle) {
    for (const auto& [name, put] : obstacles(GetParam())) {
        Crowd crowd(GetParam());
        put(crowd);
        EXPECT_EQ(crowd.neighbours(), 2U) << name;
    }
}

TEST_P(DemoGain_Neighbours, TheOtherWayRoundItIsAnObstacleToo) {
    for (const auto& [name, put] : obstacles(GetParam())) {
        Crowd crowd(GetParam());
        put(crowd);
        std::swap(crowd.contexts()[0], crowd.contexts()[2]);
        EXPECT_LT(crowd.neighbours(), 4U) << name;
    }
}

TEST(DemoGain_NeighboursOfOneCall, TheEndOfALinkThatMonoDoesNotReadIsNoObstacle) {
    Crowd crowd(1);
    crowd.context(2).mLinkSw = crowd[0].out[0];
    EXPECT_EQ(crowd.neighbours(), 4U);
    Crowd stereo(2);
    stereo.context(2).mLinkSw = stereo[0].out[0];
    EXPECT_EQ(stereo.neighbours(), 2U);
}

// The sizes of the groups that a routine was called with.
std::vector<std::size_t> groupSizes;
template<std::size_t kInstances>
void recordGroup(const SDemoGain_Alg_Context* const* /*contexts*/) {
    groupSizes.push_back(kInstances);
}

std::vector<std::size_t> groupsOf(std::size_t count, DemoGain_ProcessGroup four) {
    const SDemoGain_Processes processes[2] = {{&recordGroup<1>, &recordGroup<2>, four},
                                              {&recordGroup<1>, &recordGroup<2>, four}};
    const SDemoGain_Routine routine = {"recording", 0, processes};
    Crowd crowd(1, count);
    groupSizes.clear();
    DemoGain_ProcessInstances(routine, 1, crowd.contexts().data(), crowd.contexts().data() + count);
    return groupSizes;
}

TEST(DemoGain_NeighboursOfOneCall, GroupsAreAsLargeAsPossible) {
    using Sizes = std::vector<std::size_t>;
    EXPECT_EQ(groupsOf(1, &recordGroup<4>), (Sizes{1}));
    EXPECT_EQ(groupsOf(2, &recordGroup<4>), (Sizes{2}));
    EXPECT_EQ(groupsOf(3, &recordGroup<4>), (Sizes{2, 1}));
    EXPECT_EQ(groupsOf(11, &recordGroup<4>), (Sizes{4, 4, 2, 1}));
    EXPECT_EQ(groupsOf(5, nullptr), (Sizes{2, 2, 1}));
}

TEST(DemoGain_NeighboursOfOneCall, EveryVersionHasGroupsOfTwoAndWideOnesOfFourMono) {
    for (const SDemoGain_Routine& routine : DemoGain_Routines()) {
        const std::string name = routine.mName;
        EXPECT_NE(routine.mProcesses[0].mTwo, nullptr) << name;
        EXPECT_NE(routine.mProcesses[1].mTwo, nullptr) << name;
        EXPECT_EQ(routine.mProcesses[0].mFour != nullptr, name == "avx2" || name == "avx512") << name;
    }
}

INSTANTIATE_TEST_SUITE_P(Channels, DemoGain_Neighbours, testing::Values(1, 2));

} // namespace
} // namespace varno::test::neighbours
