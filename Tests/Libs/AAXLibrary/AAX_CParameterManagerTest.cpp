#include "AAX_CParameterManager.h"
#include "AAX_VAutomationDelegate.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace varno::test {
namespace {

using testing::ElementsAre;

class ParameterManager : public testing::Test {
protected:
    // Adds a float parameter, which the manager then owns. Returns it.
    AAX_IParameter* add(const char* identifier) {
        auto parameter = makeFloatParameter(identifier);
        EXPECT_TRUE(mManager.AddParameter(parameter.get()));
        return parameter.release();
    }

    AAX_CParameterManager mManager;
};

TEST_F(ParameterManager, StartsEmpty) {
    EXPECT_EQ(mManager.NumParameters(), 0);
    EXPECT_EQ(mManager.GetParameter(0), nullptr);
    EXPECT_EQ(mManager.GetParameterByID("Gain"), nullptr);
    EXPECT_EQ(mManager.GetParameterIndex("Gain"), -1);
}

TEST_F(ParameterManager, FindsParametersByIdentifierAndIndex) {
    AAX_IParameter* const volume = add("Volume");
    AAX_IParameter* const gain = add("Gain");
    EXPECT_EQ(mManager.NumParameters(), 2);
    EXPECT_EQ(mManager.GetParameter(0), volume);
    EXPECT_EQ(mManager.GetParameter(1), gain);
    EXPECT_EQ(mManager.GetParameterByID("Gain"), gain);
    EXPECT_EQ(mManager.GetParameterIndex("Volume"), 0);
    EXPECT_EQ(mManager.GetParameterIndex("Gain"), 1);
    const AAX_CParameterManager& unchanging = mManager;
    EXPECT_EQ(unchanging.GetParameter(1), gain);
    EXPECT_EQ(unchanging.GetParameterByID("Volume"), volume);
}

TEST_F(ParameterManager, FindsNothingElse) {
    add("Gain");
    for (const char* identifier : {"gain", "Gai", "Gain ", ""}) {
        EXPECT_EQ(mManager.GetParameterByID(identifier), nullptr) << identifier;
        EXPECT_EQ(mManager.GetParameterIndex(identifier), -1) << identifier;
    }
    EXPECT_EQ(mManager.GetParameterByID(nullptr), nullptr);
    EXPECT_EQ(mManager.GetParameterIndex(nullptr), -1);
    EXPECT_EQ(mManager.GetParameter(-1), nullptr);
    EXPECT_EQ(mManager.GetParameter(1), nullptr);
}

TEST_F(ParameterManager, LeavesARefusedParameterToTheCaller) {
    AAX_IParameter* const first = add("Gain");
    const auto second = makeFloatParameter("Gain"); // destroyed here and not by the manager
    EXPECT_FALSE(mManager.AddParameter(second.get()));
    EXPECT_FALSE(mManager.AddParameter(nullptr));
    EXPECT_EQ(mManager.NumParameters(), 1);
    EXPECT_EQ(mManager.GetParameterByID("Gain"), first);
}

TEST_F(ParameterManager, LeavesAParameterThatThrowsToTheCaller) {
    FakeParameter parameter("Gain");
    parameter.before = [] { throw std::runtime_error("not now"); };
    EXPECT_THROW(mManager.AddParameter(&parameter), std::runtime_error);
    EXPECT_EQ(mManager.NumParameters(), 0);
    EXPECT_EQ(mManager.GetParameterByID("Gain"), nullptr);
}

TEST_F(ParameterManager, AttachesItsAutomationToWhatItTakesOver) {
    FakeHost host;
    FakeAutomation automation;
    host.offer(IID_IAAXAutomationDelegateV1, &automation);
    AAX_VAutomationDelegate delegate(&host);
    add("Before");
    mManager.Initialize(&delegate);
    add("Gain");
    const auto refused = makeFloatParameter("Gain");
    mManager.AddParameter(refused.get());
    EXPECT_THAT(automation.takeCalls(), ElementsAre("register Gain"));
}

TEST_F(ParameterManager, DestroysWhatItOwns) {
    int destroyed = 0;
    const auto addCounted = [&](const char* identifier) {
        auto parameter = std::make_unique<FakeParameter>(identifier);
        parameter->onDestruction = [&destroyed] { ++destroyed; };
        EXPECT_TRUE(mManager.AddParameter(parameter.get()));
        static_cast<void>(parameter.release());
    };
    addCounted("A");
    addCounted("B");
    mManager.RemoveAllParameters();
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(mManager.NumParameters(), 0);
    EXPECT_EQ(mManager.GetParameterByID("A"), nullptr);
    addCounted("A");
    EXPECT_EQ(mManager.GetParameterIndex("A"), 0);
    mManager.RemoveAllParameters();
    EXPECT_EQ(destroyed, 3);
}

} // namespace
} // namespace varno::test
