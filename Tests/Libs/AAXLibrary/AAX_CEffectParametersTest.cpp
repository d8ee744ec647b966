#include "AAX_CEffectParameters.h"
#include "AAX_Exception.h"
#include "AAX_IACFPageTable.h"
#include "AAX_IPageTable.h"
#include "ACF/CACFUnknown.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

AAX_Result addGain(TestEffect& effect) {
    effect.add(makeFloatParameter("Gain"));
    return AAX_SUCCESS;
}

TEST(EffectParameters, AnswerForTheirInterface) {
    const std::int32_t alive = CACFUnknown::GetActiveObjectCount();
    {
        const ACFPtr<TestEffect> effect = makeTestEffect();
        AAX_IACFEffectParameters* const asInterface = effect.Get();
        const auto same = ACFPtr<AAX_IACFEffectParameters>::Query(asInterface, IID_IAAXEffectParametersV1);
        EXPECT_EQ(same.Get(), asInterface);
        EXPECT_TRUE(ACFPtr<IACFUnknown>::Query(asInterface, IID_IACFUnknown));
        EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(asInterface, IID_IAAXEffectGUIV1));
        EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), alive + 1);
    }
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), alive);
}

TEST(EffectParametersLife, HoldsTheHostFromInitializeToUninitialize) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    EXPECT_EQ(effect->Controller(), nullptr);
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_NE(effect->Controller(), nullptr);
    EXPECT_EQ(std::as_const(*effect).Controller(), effect->Controller());
    EXPECT_GT(host.allReferences(), 0);
    EXPECT_EQ(effect->Uninitialize(), AAX_SUCCESS);
    EXPECT_EQ(effect->Controller(), nullptr);
    EXPECT_EQ(host.allReferences(), 0);
}

// A parameter's end may still call the host.
TEST(EffectParametersLife, ParametersEndBeforeTheHostIsReleased) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    std::int32_t referencesAtTheEnd = -1;
    bool hasControllerAtTheEnd = false;
    effect->onInit = [&](TestEffect& self) {
        auto parameter = std::make_unique<FakeParameter>("Last");
        parameter->onDestruction = [&] {
            referencesAtTheEnd = host.allReferences();
            hasControllerAtTheEnd = self.Controller() != nullptr;
        };
        self.add(std::move(parameter));
        return AAX_SUCCESS;
    };
    effect->Initialize(&host);
    const std::int32_t referencesBefore = host.allReferences();
    EXPECT_EQ(effect->Uninitialize(), AAX_SUCCESS);
    EXPECT_EQ(referencesAtTheEnd, referencesBefore);
    EXPECT_TRUE(hasControllerAtTheEnd);
}

TEST(EffectParametersLife, ReleasesTheHostWithoutUninitialize) {
    FakeInstanceHost host;
    {
        const ACFPtr<TestEffect> effect = makeTestEffect();
        effect->onInit = addGain;
        effect->Initialize(&host);
    }
    EXPECT_EQ(host.allReferences(), 0);
}

// A host whose objects throw while they are released.
class HostThrowingOnRelease : public FakeHost {
public:
    HostThrowingOnRelease() {
        for (const acfIID& offered : {IID_IAAXControllerV1, IID_IAAXControllerV2, IID_IAAXControllerV3,
                                      IID_IAAXAutomationDelegateV1, IID_IAAXTransportV1}) {
            offer(offered, this);
        }
    }
    std::uint32_t Release() override {
        FakeHost::Release();
        throw std::runtime_error("host");
    }
};

TEST(EffectParametersLife, ReleasesAllOfAHostThatThrowsMeanwhile) {
    const ListeningHost listening;
    HostThrowingOnRelease host;
    FakeInstanceHost next;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_EQ(host.references(), 5);
    EXPECT_EQ(effect->Uninitialize(), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(listening.lines().size(), 1U);
    EXPECT_EQ(host.references(), 0);
    EXPECT_EQ(effect->Controller(), nullptr);
    EXPECT_EQ(effect->Initialize(&next), AAX_SUCCESS);
}

TEST(EffectParametersLife, EndsInAHostThatThrowsMeanwhile) {
    HostThrowingOnRelease host;
    {
        const ACFPtr<TestEffect> effect = makeTestEffect();
        EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    }
    EXPECT_EQ(host.references(), 0);
}

TEST(EffectParametersLife, PreparesEverythingBeforeEffectInit) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        EXPECT_NE(self.Controller(), nullptr);
        self.add(makeFloatParameter("Gain"));
        EXPECT_EQ(self.mPacketDispatcher.RegisterPacket("Gain", 1), AAX_SUCCESS);
        return AAX_SUCCESS;
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_THAT(host.automation.takeCalls(), ElementsAre("register Gain"));
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(host.controller.latest(1).as<float>(), 0.5F);
}

TEST(EffectParametersLife, AnswersWithWhatEffectInitAnswers) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect&) { return AAX_ERROR_INVALID_INTERNAL_DATA; };
    EXPECT_EQ(effect->Initialize(&host), AAX_ERROR_INVALID_INTERNAL_DATA);
}

TEST(EffectParametersLife, TurnsWhatEffectInitThrowsIntoACode) {
    const ListeningHost listening;
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) -> AAX_Result {
        self.add(makeFloatParameter("Gain"));
        throw AAX::Exception::ResultError(AAX_ERROR_NOT_INITIALIZED);
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_ERROR_NOT_INITIALIZED);
    EXPECT_THAT(
        listening.lines(),
        ElementsAre(FakeHostServices::Line{
            0x8000000,
            "AAX_CEffectParameters::Initialize exception caught: AAX_ERROR_NOT_INITIALIZED (-20011)"}));
    EXPECT_EQ(effect->Uninitialize(), AAX_SUCCESS);
    EXPECT_EQ(host.allReferences(), 0);
}

TEST(EffectParametersLife, WorksInAHostThatOffersNothing) {
    FakeHost host;
    for (IACFUnknown* const bare : {static_cast<IACFUnknown*>(&host), static_cast<IACFUnknown*>(nullptr)}) {
        const ACFPtr<TestEffect> effect = makeTestEffect();
        effect->onInit = [](TestEffect& self) {
            self.add(makeFloatParameter("Gain"));
            self.mPacketDispatcher.RegisterPacket("Gain", 1);
            return AAX_SUCCESS;
        };
        EXPECT_EQ(effect->Initialize(bare), AAX_SUCCESS);
        EXPECT_EQ(effect->SetParameterNormalizedValue("Gain", 0.25), AAX_SUCCESS);
        EXPECT_EQ(effect->UpdateParameterNormalizedValue("Gain", 0.25, AAX_eUpdateSource_Unspecified),
                  AAX_SUCCESS);
        EXPECT_EQ(effect->GenerateCoefficients(), AAX_ERROR_NULL_OBJECT)
            << "there is no controller to post to";
    }
}

TEST(EffectParametersLife, BeginsAnewWhenInitializedAgain) {
    FakeInstanceHost first;
    FakeInstanceHost second;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = addGain;
    EXPECT_EQ(effect->Initialize(&first), AAX_SUCCESS);
    EXPECT_EQ(effect->Initialize(&second), AAX_SUCCESS);
    EXPECT_EQ(first.allReferences(), 0);
    std::int32_t count = 0;
    EXPECT_EQ(effect->GetNumberOfParameters(&count), AAX_SUCCESS);
    EXPECT_EQ(count, 1);
    effect->TouchParameter("Gain");
    EXPECT_THAT(second.automation.takeCalls(), ElementsAre("register Gain", "touch Gain"));
}

// Two parameters with a field each, and one that is rejected, as its identifier is there already.
AAX_Result addTwoAndReject(TestEffect& effect) {
    effect.add(makeFloatParameter("Gain"));
    effect.add(makeFloatParameter("Mix", 0.25F));
    effect.add(makeFloatParameter("Gain", 0.75F));
    effect.mPacketDispatcher.RegisterPacket("Gain", 1);
    effect.mPacketDispatcher.RegisterPacket("Mix", 2);
    return AAX_SUCCESS;
}

TEST(EffectParametersLife, PostsEachFieldOnceAgainWhenRecycled) {
    FakeInstanceHost first;
    FakeInstanceHost second;
    FakeInstanceHost third;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = addTwoAndReject;
    EXPECT_EQ(effect->Initialize(&first), AAX_SUCCESS);
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_THAT(first.controller.fields(), ElementsAre(1, 2));

    EXPECT_EQ(effect->Uninitialize(), AAX_SUCCESS);
    EXPECT_EQ(effect->Initialize(&second), AAX_SUCCESS);
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_THAT(second.controller.fields(), ElementsAre(1, 2));
    EXPECT_EQ(second.controller.latest(2).as<float>(), 0.25F);

    EXPECT_EQ(effect->Initialize(&third), AAX_SUCCESS) << "without Uninitialize";
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_THAT(third.controller.fields(), ElementsAre(1, 2));
}

TEST(EffectParametersLife, PostsNothingOfAnEarlierLife) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = addTwoAndReject;
    effect->Initialize(&host);
    effect->onInit = [](TestEffect& self) {
        self.add(makeFloatParameter("Gain"));
        return self.mPacketDispatcher.RegisterPacket("Gain", 7);
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_THAT(host.controller.fields(), ElementsAre(7));
}

TEST(EffectParametersLife, IsSafeAfterUninitialize) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        self.add(makeFloatParameter("Gain"));
        self.mPacketDispatcher.RegisterPacket("Gain", 1);
        return AAX_SUCCESS;
    };
    effect->Initialize(&host);
    effect->Uninitialize();
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS) << "there is nothing to post";
    EXPECT_EQ(effect->SetParameterNormalizedValue("Gain", 0.5), AAX_ERROR_INVALID_PARAMETER_ID);
    effect->add(makeFloatParameter("Late")); // there is no automation any more to attach
    EXPECT_EQ(effect->TouchParameter("Late"), AAX_SUCCESS);
    EXPECT_EQ(effect->Uninitialize(), AAX_SUCCESS);
    EXPECT_THAT(host.controller.posts, IsEmpty());
}

TEST(EffectParametersFilter, LeavesOutTheMasterBypass) {
    const ListeningHost listening;
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        self.add(makeBoolParameter(cDefaultMasterBypassID));
        self.add(makeFloatParameter("Gain"));
        self.add(makeFloatParameter("Mix"));
        self.FilterParameterIDOnSave("Mix");
        self.FilterParameterIDOnSave("Mix");
        self.FilterParameterIDOnSave(nullptr);
        return AAX_SUCCESS;
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_EQ(effect->mNumChunkedParameters, 1);
    EXPECT_THAT(listening.assertions(), IsEmpty());
}

TEST(EffectParametersFilter, LeavesOutTheEmptyIdentifierWithoutAMasterBypass) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        self.add(makeFloatParameter("Gain"));
        self.add(makeFloatParameter(""));
        return AAX_SUCCESS;
    };
    effect->Initialize(&host);
    EXPECT_EQ(effect->mNumChunkedParameters, 1);
    std::uint32_t size = 0;
    EXPECT_EQ(effect->GetChunkSize(AAX_FourCC("elck"), &size), AAX_SUCCESS);
    EXPECT_EQ(size, 4U + 8U + 8U) << "the marker and \"Gain\" alone";
}

TEST(EffectParametersFilter, ReportsMoreFilteredIdentifiersThanParameters) {
    const ListeningHost listening;
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        self.add(makeFloatParameter("Gain"));
        self.FilterParameterIDOnSave("A");
        self.FilterParameterIDOnSave("B");
        return AAX_SUCCESS;
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    ASSERT_EQ(listening.assertions().size(), 1U);
    EXPECT_EQ(listening.assertions()[0].note, "mNumChunkedParameters >= 0");
}

TEST(EffectParametersFilter, CountsNothingWithoutParameters) {
    const ListeningHost listening;
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = [](TestEffect& self) {
        self.FilterParameterIDOnSave("A");
        return AAX_SUCCESS;
    };
    EXPECT_EQ(effect->Initialize(&host), AAX_SUCCESS);
    EXPECT_EQ(effect->mNumChunkedParameters, 0);
    EXPECT_THAT(listening.assertions(), IsEmpty());
}

// An effect with a preview switch, which automation sets.
class PreviewState : public testing::Test {
protected:
    PreviewState() {
        mEffect->onInit = [](TestEffect& effect) {
            effect.add(makeBoolParameter("PreviewID"));
            return AAX_SUCCESS;
        };
        mEffect->Initialize(&mHost);
        mHost.automation.takeCalls();
    }
    ~PreviewState() override { mEffect->Uninitialize(); }

    std::vector<std::string> notify(AAX_CTypeID type, const void* data, std::uint32_t size) {
        EXPECT_EQ(mEffect->NotificationReceived(type, data, size), AAX_SUCCESS);
        return mHost.automation.takeCalls();
    }

    FakeInstanceHost mHost;
    ACFPtr<TestEffect> mEffect = makeTestEffect();
};

TEST_F(PreviewState, SetsTheSwitch) {
    const std::int32_t on = 2;
    const std::int32_t off = 0;
    EXPECT_THAT(notify(0x41535076, &on, sizeof(on)),
                ElementsAre("touch PreviewID", "request PreviewID 1", "release PreviewID"));
    EXPECT_THAT(notify(0x41535076, &off, sizeof(off)),
                ElementsAre("touch PreviewID", "request PreviewID 0", "release PreviewID"));
}

TEST_F(PreviewState, IgnoresEverythingElse) {
    const std::int32_t on = 1;
    EXPECT_THAT(notify(AAX_FourCC("ASPx"), &on, sizeof(on)), IsEmpty());
    EXPECT_THAT(notify(0x41535076, nullptr, sizeof(on)), IsEmpty());
    EXPECT_THAT(notify(0x41535076, &on, 3), IsEmpty());
}

TEST(EffectParametersNotification, ChangesNothingWithoutAPreviewSwitch) {
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    effect->onInit = addGain;
    effect->Initialize(&host);
    host.automation.takeCalls();
    const std::int32_t on = 1;
    EXPECT_EQ(effect->NotificationReceived(0x41535076, &on, sizeof(on)), AAX_SUCCESS);
    EXPECT_THAT(host.automation.takeCalls(), IsEmpty());
}

TEST(EffectParametersRest, ClearsPrivateData) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    std::array<unsigned char, 9> block;
    block.fill(0xAA);
    EXPECT_EQ(effect->ResetFieldData(17, block.data(), 8), AAX_SUCCESS);
    EXPECT_EQ(block, (std::array<unsigned char, 9>{0, 0, 0, 0, 0, 0, 0, 0, 0xAA}));
    EXPECT_EQ(effect->ResetFieldData(17, nullptr, 8), AAX_ERROR_NULL_ARGUMENT);
}

TEST(EffectParametersRest, HasNoCustomData) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    std::uint32_t size = 9;
    char data = 'x';
    EXPECT_EQ(effect->GetCustomData(1, 1, &data, &size), AAX_SUCCESS);
    EXPECT_EQ(size, 0U);
    EXPECT_EQ(data, 'x');
    EXPECT_EQ(effect->GetCustomData(1, 1, &data, nullptr), AAX_ERROR_NULL_ARGUMENT);
    EXPECT_EQ(effect->SetCustomData(1, 1, &data), AAX_SUCCESS);
}

TEST(EffectParametersRest, DoesNothingForTimerAndMIDI) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    AAX_CMidiPacket packet = {};
    EXPECT_EQ(effect->TimerWakeup(), AAX_SUCCESS);
    EXPECT_EQ(effect->DoMIDITransfers(), AAX_SUCCESS);
    EXPECT_EQ(effect->UpdateMIDINodes(0, packet), AAX_SUCCESS);
    EXPECT_EQ(effect->UpdateControlMIDINodes(0, packet), AAX_SUCCESS);
}

TEST(EffectParametersRest, HasNeitherCurvesNorHybridRendering) {
    const ACFPtr<TestEffect> effect = makeTestEffect();
    float value = 7.0F;
    std::uint32_t id = 7;
    EXPECT_EQ(effect->GetCurveData(1, &value, 1, &value), AAX_ERROR_UNIMPLEMENTED);
    EXPECT_EQ(effect->GetCurveDataMeterIds(1, &id, &id), AAX_ERROR_UNIMPLEMENTED);
    EXPECT_EQ(effect->GetCurveDataDisplayRange(1, &value, &value, &value, &value), AAX_ERROR_UNIMPLEMENTED);
    EXPECT_EQ(effect->RenderAudio_Hybrid(nullptr), AAX_ERROR_UNIMPLEMENTED);
    EXPECT_EQ(value, 7.0F);
    EXPECT_EQ(id, 7U);
}

// A page table that counts how often it is cleared.
class ClearedPageTable : public FakeUnknown<AAX_IACFPageTable> {
public:
    ClearedPageTable() { offer(IID_IAAXPageTableV1, this); }
    AAX_Result Clear() override {
        ++clears;
        return AAX_ERROR_FIFO_FULL;
    }
    AAX_Result Empty(std::uint8_t*) const override { return AAX_SUCCESS; }
    AAX_Result GetNumPages(std::int32_t*) const override { return AAX_SUCCESS; }
    AAX_Result InsertPage(std::int32_t) override { return AAX_SUCCESS; }
    AAX_Result RemovePage(std::int32_t) override { return AAX_SUCCESS; }
    AAX_Result GetNumMappedParameterIDs(std::int32_t, std::int32_t*) const override { return AAX_SUCCESS; }
    AAX_Result ClearMappedParameter(std::int32_t, std::int32_t) override { return AAX_SUCCESS; }
    AAX_Result GetMappedParameterID(std::int32_t, std::int32_t, AAX_IString*) const override {
        return AAX_SUCCESS;
    }
    AAX_Result MapParameterID(AAX_CParamID, std::int32_t, std::int32_t) override { return AAX_SUCCESS; }

    int clears = 0;
};

// Clears every page table that it receives.
class ClearingEffect : public TestEffect {
public:
    mutable std::uint32_t lastType = 0;
    mutable std::int32_t lastSize = 0;

private:
    AAX_Result UpdatePageTable(std::uint32_t tableType, std::int32_t tablePageSize,
                               AAX_IPageTable& pageTable) const override {
        lastType = tableType;
        lastSize = tablePageSize;
        return pageTable.Clear();
    }
};

TEST(EffectParametersPageTable, IsHandedToTheDerivedClass) {
    ClearedPageTable table;
    const auto effect = ACFPtr<ClearingEffect>::Retain(new ClearingEffect);
    const AAX_IACFEffectParameters& asHost = *effect;
    EXPECT_EQ(asHost.UpdatePageTable(5, 8, &table, nullptr), AAX_ERROR_FIFO_FULL);
    EXPECT_EQ(table.clears, 1);
    EXPECT_EQ(effect->lastType, 5U);
    EXPECT_EQ(effect->lastSize, 8);
    EXPECT_EQ(table.references(), 0);
}

TEST(EffectParametersPageTable, IsLeftAloneWhenItIsNone) {
    FakeHost noTable;
    const auto effect = ACFPtr<ClearingEffect>::Retain(new ClearingEffect);
    const AAX_IACFEffectParameters& asHost = *effect;
    EXPECT_EQ(asHost.UpdatePageTable(5, 8, &noTable, nullptr), AAX_SUCCESS);
    EXPECT_EQ(asHost.UpdatePageTable(5, 8, nullptr, nullptr), AAX_SUCCESS);
    EXPECT_EQ(effect->lastType, 0U);
}

TEST(EffectParametersPageTable, IsLeftAloneByTheBase) {
    ClearedPageTable table;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    const AAX_IACFEffectParameters& asHost = *effect;
    EXPECT_EQ(asHost.UpdatePageTable(5, 8, &table, nullptr), AAX_SUCCESS);
    EXPECT_EQ(table.clears, 0);
}

TEST(EffectParametersCoefficients, TurnWhatAHandlerThrowsIntoACode) {
    const ListeningHost listening;
    FakeInstanceHost host;
    const ACFPtr<TestEffect> effect = makeTestEffect();
    struct Silent : AAX_IPacketHandler {
        std::unique_ptr<AAX_IPacketHandler> Clone() const override { return std::make_unique<Silent>(); }
        AAX_Result Call(AAX_CParamID, AAX_CPacket&) const override { return AAX_SUCCESS; }
    };
    effect->Initialize(&host);
    const Silent handler;
    effect->mPacketDispatcher.RegisterPacket("Gain", 1, &handler);
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_THAT(
        listening.lines(),
        ElementsAre(FakeHostServices::Line{
            0x8000000, "AAX_CEffectParameters::GenerateCoefficients exception caught: the packet has no "
                       "payload"}));
    EXPECT_EQ(effect->GenerateCoefficients(), AAX_SUCCESS);
}

} // namespace
} // namespace varno::test
