#include "Surround/Settings/HostIndication.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

using Automation = HostIndication::Automation;

HostIndication automated(Automation automation) {
    HostIndication indication;
    indication.automation = automation;
    return indication;
}

TEST(HostIndication, SaysWhatBecomesOfTheAutomation) {
    EXPECT_EQ(indicationText(automated(Automation::kNone)), "");
    EXPECT_EQ(indicationText(automated(Automation::kPresent)), "Has automation, which is not played.");
    EXPECT_EQ(indicationText(automated(Automation::kPlaying)), "Automation is played.");
    EXPECT_EQ(indicationText(automated(Automation::kRecording)), "Automation is recorded.");
    EXPECT_EQ(indicationText(automated(Automation::kOverridden)), "Automation is overridden.");
}

TEST(HostIndication, SaysWhatItIsMappedTo) {
    HostIndication indication;
    indication.controller = "CC 7";
    EXPECT_EQ(indicationText(indication), "");
    indication.isMapped = true;
    EXPECT_EQ(indicationText(indication), "Mapped to CC 7.");
    indication.mappingText = "the fader of channel 1.";
    EXPECT_EQ(indicationText(indication), "Mapped to CC 7: the fader of channel 1.");
    indication.controller.clear();
    EXPECT_EQ(indicationText(indication), "Mapped: the fader of channel 1.");
    indication.mappingText.clear();
    indication.automation = Automation::kPlaying;
    EXPECT_EQ(indicationText(indication), "Automation is played. Mapped.");
}

} // namespace
} // namespace varno::test
