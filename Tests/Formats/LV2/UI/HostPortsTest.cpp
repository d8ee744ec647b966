#include "LV2/UI/HostPorts.h"

#include "Surround/Settings/EditedSettings.h"
#include "Tests/Integration/HostedEffect.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A host's ports, as the window writes them.
class HostPortsTest : public HostedEffect {
protected:
    void TearDown() override {
        mPorts.reset();
        mInstance.reset();
        HostedEffect::TearDown();
    }

    static void write(LV2UI_Controller controller, std::uint32_t port, std::uint32_t, std::uint32_t,
                      const void* value) {
        auto& test = *static_cast<HostPortsTest*>(controller);
        test.mWritten.push_back(test.nameOf(port) + ' ' + std::to_string(*static_cast<const float*>(value)));
    }
    std::string nameOf(std::uint32_t port) const {
        for (const PortInfo& info : portsOf(*mInstance)) {
            if (info.index == port) {
                return info.parameterID;
            }
        }
        return "unknown";
    }
    std::uint32_t portOf(const std::string& id) const {
        const auto ports = portsOf(*mInstance);
        return std::ranges::find(ports, id, &PortInfo::parameterID)->index;
    }
    void gesture(const std::string& id, double value) {
        mInstance->dataModel().TouchParameter(id.c_str());
        mInstance->dataModel().SetParameterNormalizedValue(id.c_str(), value);
        mInstance->dataModel().ReleaseParameter(id.c_str());
    }

    std::vector<std::string> mWritten;
    std::unique_ptr<Instance> mInstance = makeInstance(module());
    std::optional<HostPorts> mPorts{std::in_place, *mInstance, HostCalls{.write = write, .controller = this}};
};

// Undo, redo and the other of two settings are values that the host must have.
TEST_F(HostPortsTest, receivesWhatUndoAndTheOtherSlotBringBack) {
    CompareSlots slots(settingsOf(*mInstance));
    EditedSettings edited(*mInstance, slots);
    gesture("Gain", 0.75);
    edited.undo();
    edited.redo();
    edited.changeSlot();
    EXPECT_THAT(mWritten, ElementsAre("Gain 0.750000", "Gain 0.500000", "Gain 0.750000", "Gain 0.500000"));
}

TEST_F(HostPortsTest, valuesOfTheHostAreNeitherWrittenNorSteps) {
    CompareSlots slots(settingsOf(*mInstance));
    EditedSettings edited(*mInstance, slots);
    mPorts->arrived(portOf("Gain"), 0.25F);
    mPorts->apply();
    EXPECT_EQ(mInstance->normalized("Gain"), 0.25);
    EXPECT_THAT(mWritten, IsEmpty());
    EXPECT_FALSE(edited.canUndo());
}

} // namespace
} // namespace varno::test
