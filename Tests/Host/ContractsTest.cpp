// Every contract that the host watches, broken on purpose.

#include "Host/Editor.h"
#include "Host/InstanceHost.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureParameters.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>
#include <thread>

namespace varno {
namespace {

using fixture::Fault;
using fixture::FaultScope;
using testing::ElementsAre;
using testing::IsEmpty;

class ContractsTest : public FixtureTest {
protected:
    static void processSilence(Instance& instance) {
        const float silence[8] = {};
        float out[2][8];
        const float* inputs[] = {silence, silence};
        float* outputs[] = {out[0], out[1]};
        instance.process(inputs, outputs, 8);
    }

    // The whole life of an instance while the module has one fault.
    void liveWith(Fault fault) {
        const FaultScope scope(fault);
        const auto instance = makeInstance();
        processSilence(*instance);
    }
};

TEST_F(ContractsTest, ASoundModuleBreaksNone) {
    liveWith(Fault::kNone);
    endModule();
    EXPECT_THAT(takeViolations(), IsEmpty());
}

TEST_F(ContractsTest, PostingOnTheAudioThread) {
    liveWith(Fault::kPostsOnAudioThread);
    EXPECT_THAT(takeViolations(), ElementsAre("thread: PostPacket on the audio thread"));
}

TEST_F(ContractsTest, PostingFromAnotherThread) {
    liveWith(Fault::kPostsFromAnotherThread);
    EXPECT_THAT(takeViolations(), ElementsAre("thread: PostPacket while another thread is in a [main] call"));
}

TEST_F(ContractsTest, AHostCallOnTheAudioThread) {
    const auto instance = makeInstance();
    {
        const AudioThreadScope audio;
        instance->idle();
    }
    EXPECT_THAT(takeViolations(), ElementsAre("thread: Instance::idle on the audio thread"));
    instance->idle();
}

TEST_F(ContractsTest, ProcessingWhileItProcesses) {
    const auto instance = makeInstance();
    fixture::setHook([&] { processSilence(*instance); });
    processSilence(*instance);
    fixture::setHook({});
    EXPECT_THAT(takeViolations(), ElementsAre("thread: two threads process one instance at once"));
    EXPECT_EQ(8, instance->position());
}

TEST_F(ContractsTest, ResettingWhileItProcesses) {
    const auto instance = makeInstance();
    fixture::setHook([&] { std::thread([&] { instance->reset(); }).join(); });
    processSilence(*instance);
    fixture::setHook({});
    EXPECT_THAT(takeViolations(), ElementsAre("thread: the instance is reset while it processes"));
    EXPECT_EQ(8, instance->position());
}

TEST_F(ContractsTest, CallingAfterTheEnd) {
    liveWith(Fault::kKeepsHost);
    EXPECT_THAT(takeViolations(),
                ElementsAre("references: references to the instance host: 1 too many held"));
    fixture::useAndReleaseKeptHost();
    EXPECT_THAT(takeViolations(), ElementsAre("lifecycle: PostPacket after the end of the instance"));
}

TEST_F(ContractsTest, KeepingTheHostUntilTheModuleEnds) {
    liveWith(Fault::kKeepsHost);
    endModule();
    EXPECT_THAT(takeViolations(), ElementsAre("references: references to the instance host: 1 too many held",
                                              "references: host objects alive at the end of the module: "
                                              "1 instance host"));
    fixture::useAndReleaseKeptHost();
    EXPECT_THAT(takeViolations(), ElementsAre("lifecycle: PostPacket after the end of the instance"));
}

TEST_F(ContractsTest, ReleasingTheHostTwice) {
    liveWith(Fault::kReleasesHostTwice);
    EXPECT_THAT(takeViolations(),
                ElementsAre("references: references to the instance host: 1 given back too often"));
}

TEST_F(ContractsTest, KeepingADataModel) {
    liveWith(Fault::kKeepsDataModel);
    EXPECT_THAT(
        takeViolations(),
        ElementsAre(
            "references: references to the data model: 1 held at its end",
            "live objects: the linked-in module has 1 live objects after its last instance, expected 0"));
    endModule();
    EXPECT_THAT(takeViolations(),
                ElementsAre("live objects: the linked-in module has 1 live objects at its end, expected 0"));
    fixture::releaseKeptDataModel();
}

TEST_F(ContractsTest, KeepingAPropertyMap) {
    {
        const FaultScope fault(Fault::kKeepsPropertyMap);
        module();
    }
    endModule();
    EXPECT_THAT(takeViolations(),
                ElementsAre("references: host objects alive at the end of the module: 1 property map"));
    fixture::releaseKeptPropertyMap();
}

TEST_F(ContractsTest, ATouchWithoutRelease) {
    {
        const auto instance = makeInstance();
        instance->dataModel().TouchParameter("Gain");
        instance->dataModel().TouchParameter("Gain");
        instance->dataModel().ReleaseParameter("Gain");
    }
    EXPECT_THAT(
        takeViolations(),
        ElementsAre("touch: parameter Gain touched 1 times more than released at the end of the instance"));
}

TEST_F(ContractsTest, AReleaseWithoutTouch) {
    const auto instance = makeInstance();
    instance->dataModel().TouchParameter("Gain");
    instance->dataModel().ReleaseParameter("Gain");
    EXPECT_THAT(takeViolations(), IsEmpty());
    instance->dataModel().ReleaseParameter("Gain");
    EXPECT_THAT(takeViolations(), ElementsAre("touch: parameter Gain released without a touch"));
}

TEST_F(ContractsTest, NestedTouchesAreFine) {
    const auto instance = makeInstance();
    instance->dataModel().TouchParameter("Gain");
    instance->requestNormalized("Gain", 0.75);
    EXPECT_EQ(1, instance->host().automation().touches("Gain"));
    instance->dataModel().ReleaseParameter("Gain");
    EXPECT_EQ(0, instance->host().automation().touches("Gain"));
    EXPECT_EQ(2, instance->host().automation().totalTouches());
}

TEST_F(ContractsTest, AnUnexpectedTraceLine) {
    liveWith(Fault::kTracesAtInitialization);
    EXPECT_THAT(takeViolations(), ElementsAre("diagnostics: unexpected trace line \"the fixture speaks\""));
}

TEST_F(ContractsTest, AnExpectedTraceLine) {
    std::vector<std::int32_t> priorities;
    monitor().setTraceListener([&](const TraceLine& line) { priorities.push_back(line.priority); });
    monitor().expectTrace("speaks");
    liveWith(Fault::kTracesAtInitialization);
    EXPECT_THAT(priorities, ElementsAre(AAX_eTracePriorityHost_High));
    monitor().setTraceListener({});
}

TEST_F(ContractsTest, AnUnexpectedAssertion) {
    liveWith(Fault::kAssertsAtInitialization);
    EXPECT_THAT(takeViolations(),
                ElementsAre("diagnostics: unexpected failed assertion \"1 == 2\" at Fixture.cpp:12"));
}

TEST_F(ContractsTest, AnExpectedAssertion) {
    std::vector<std::string> notes;
    monitor().setAssertListener([&](const AssertFailure& failure) { notes.push_back(failure.note); });
    monitor().expectAssertion("1 == 2");
    liveWith(Fault::kAssertsAtInitialization);
    EXPECT_THAT(notes, ElementsAre("1 == 2"));
    monitor().setAssertListener({});
}

TEST_F(ContractsTest, PostingToAFieldThatIsNoPort) {
    liveWith(Fault::kPostsToUnknownField);
    EXPECT_THAT(takeViolations(),
                ElementsAre("packets: PostPacket of 8 bytes for field 7 refused with -20025"));
}

TEST_F(ContractsTest, PostingAPacketOfAWrongSize) {
    liveWith(Fault::kPostsWrongSize);
    EXPECT_THAT(takeViolations(),
                ElementsAre("packets: PostPacket of 8 bytes for field 0 refused with -20043"));
}

TEST_F(ContractsTest, AFieldWithoutAnyPacket) {
    liveWith(Fault::kPostsNothingForBypass);
    EXPECT_THAT(takeViolations(), ElementsAre("packets: no packet for field 1 before the first buffer"));
}

TEST_F(ContractsTest, CoefficientsThatFail) {
    liveWith(Fault::kGenerateFails);
    EXPECT_THAT(takeViolations(), ElementsAre("packets: GenerateCoefficients answered -20021, expected 0"));
}

TEST_F(ContractsTest, AutomatingAnUnknownParameter) {
    const FaultScope fault(Fault::kRequestsUnknownParameter);
    const auto instance = makeInstance();
    instance->requestNormalized("Gain", 0.25);
    EXPECT_THAT(takeViolations(),
                ElementsAre("parameters: PostSetValueRequest of parameter Nobody, which is not registered"));
}

TEST_F(ContractsTest, RequestingAValueThatIsNone) {
    const FaultScope fault(Fault::kRequestsInvalidValue);
    const auto instance = makeInstance();
    instance->requestNormalized("Gain", 0.25);
    EXPECT_THAT(
        takeViolations(),
        ElementsAre("parameters: PostSetValueRequest of parameter Gain with 1.500000, expected 0 to 1"));
}

TEST_F(ContractsTest, UnregisteringAnUnknownParameter) {
    liveWith(Fault::kUnregistersUnknownParameter);
    EXPECT_THAT(takeViolations(),
                ElementsAre("parameters: UnregisterParameter of parameter Nobody, which is not registered"));
}

TEST_F(ContractsTest, RefusingAnUpdate) {
    const FaultScope fault(Fault::kRefusesUpdates);
    const auto instance = makeInstance();
    instance->setNormalized("Gain", 0.25);
    EXPECT_THAT(takeViolations(),
                ElementsAre("parameters: the update of parameter \"Gain\" answered -20001, expected 0"));
}

TEST_F(ContractsTest, ADescriptionThatLacksSomething) {
    const FaultScope fault(Fault::kDescribesNoManufacturer);
    module();
    EXPECT_THAT(takeViolations(), ElementsAre("description: the module names no manufacturer"));
}

TEST_F(ContractsTest, AnInstanceThatEndsBeforeItsEditor) {
    std::unique_ptr<Editor> editor;
    const auto container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(module()->context()));
    {
        const auto instance = makeInstance();
        editor = instance->openEditor(*container);
        ASSERT_NE(nullptr, editor);
    }
    EXPECT_THAT(takeViolations(), ElementsAre("lifecycle: the instance ended while its editor was open"));
    editor->timer();
    EXPECT_EQ(0.0F, editor->size().horz);
}

} // namespace
} // namespace varno
