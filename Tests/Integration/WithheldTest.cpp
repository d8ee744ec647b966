// Hosts that lack an interface.
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/Signal.h"

namespace varno::test {
namespace {

class Withheld : public HostedEffect {
protected:
    void withhold(std::vector<acfIID> interfaces) { options.withheld = std::move(interfaces); }

    // Takes the violations; there must be some, all of one kind.
    void expectOnly(const std::string& beginning) {
        const std::vector<std::string> violations = takeViolations();
        EXPECT_FALSE(violations.empty());
        for (const std::string& violation : violations) {
            EXPECT_TRUE(violation.starts_with(beginning)) << violation;
        }
    }

    // As much of the module's use as the host allows.
    void live() {
        for (const std::int32_t channels : {1, 2}) {
            const auto instance = makeInstance(module(), channels);
            instance->setNormalized("Gain", 0.75);
            instance->requestNormalized("Mix", 0.5);
            instance->idle();
            const StoredChunk chunk = instance->save();
            instance->restore(chunk);
            instance->timer();
            render(*instance, noise(static_cast<std::size_t>(channels), 600, 1, 0.0));
        }
    }
};

TEST_F(Withheld, nothingIsTheUsualCase) {
    live();
}

// Optional interfaces: the effect works without them.

TEST_F(Withheld, diagnosticsAreNotMissed) {
    withhold({IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3});
    live();
}

TEST_F(Withheld, theComponentFactoryIsNotMissed) {
    withhold({IID_IACFComponentFactory});
    live();
}

TEST_F(Withheld, laterVersionsAreNotMissed) {
    withhold({IID_IAAXHostServicesV2, IID_IAAXHostServicesV3, IID_IAAXControllerV2, IID_IAAXControllerV3,
              IID_IAAXTransportV2, IID_IAAXTransportV3, IID_IAAXPageTableControllerV2, IID_IAAXPageTableV2,
              IID_IAAXViewContainerV2});
    live();
}

TEST_F(Withheld, theTransportIsNotMissed) {
    withhold({IID_IAAXTransportV1, IID_IAAXTransportV2, IID_IAAXTransportV3});
    live();
}

TEST_F(Withheld, pageTablesAreNotMissed) {
    withhold({IID_IAAXPageTableController, IID_IAAXPageTableControllerV2, IID_IAAXPageTableV1,
              IID_IAAXPageTableV2});
    live();
}

TEST_F(Withheld, featuresAreNotMissed) {
    withhold({IID_IAAXDescriptionHostV1, IID_IAAXFeatureInfoV1});
    live();
}

TEST_F(Withheld, viewContainersAreNotMissed) {
    withhold({IID_IAAXViewContainerV1, IID_IAAXViewContainerV2});
    live();
}

// Interfaces that are missed without a failure.

TEST_F(Withheld, withoutAutomationOnlyTheHostMovesParameters) {
    withhold({IID_IAAXAutomationDelegateV1});
    live();
    const auto instance = makeInstance(module());
    instance->setNormalized("Gain", 0.75);
    instance->requestNormalized("Gain", 0.25);
    instance->idle();
    EXPECT_EQ(instance->normalized("Gain"), 0.75);
}

TEST_F(Withheld, withoutAControllerNoPacketArrives) {
    withhold({IID_IAAXControllerV1, IID_IAAXControllerV2, IID_IAAXControllerV3});
    live();
    expectOnly("packets: ");
}

TEST_F(Withheld, withoutPropertyMapsNoRoutineIsKnown) {
    withhold({IID_IAAXPropertyMapV1});
    EXPECT_EQ(module()->description().effects.size(), 1U);
    EXPECT_THROW(makeInstance(module()), HostError);
    for (const std::string& violation : takeViolations()) {
        EXPECT_TRUE(violation.starts_with("diagnostics: ") || violation.starts_with("description: "))
            << violation;
    }
}

// An interface without which the module cannot describe itself, and the result code for that.
struct Needed {
    const char* name;
    acfIID interface;
    AAX_Result code;
};

class WithheldNeeded : public Withheld, public testing::WithParamInterface<Needed> {};

TEST_P(WithheldNeeded, failsTheRegistrationWithItsCode) {
    withhold({GetParam().interface});
    std::string message;
    try {
        module();
    } catch (const HostError& error) {
        message = error.what();
    }
    EXPECT_NE(message.find(std::to_string(GetParam().code)), std::string::npos) << message;
    expectOnly("diagnostics: ");
}

INSTANTIATE_TEST_SUITE_P(
    Interfaces, WithheldNeeded,
    testing::Values(Needed{"collection", IID_IAAXCollectionV1, AAX_ERROR_NULL_OBJECT},
                    Needed{"pluginDefinition", IID_IACFPluginDefinition, AAX_ERROR_NULL_OBJECT},
                    Needed{"effectDescriptor", IID_IAAXEffectDescriptorV1, AAX_ERROR_NULL_OBJECT},
                    Needed{"componentDescriptor", IID_IAAXComponentDescriptorV1, AAX_ERROR_NO_COMPONENTS}),
    [](const auto& needed) { return needed.param.name; });

} // namespace
} // namespace varno::test
