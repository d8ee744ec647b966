#include "AAX_Exports.h"

#include "AAX_CHostServices.h"
#include "AAX_CString.h"
#include "AAX_Exception.h"
#include "AAX_Init.h"
#include "ACF/CACFUnknown.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/RecordingDescription.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace varno {
namespace {

// The description procedure of this program's effect.
std::function<AAX_Result(AAX_ICollection*)> gDescription;

} // namespace
} // namespace varno

AAX_Result GetEffectDescriptions(AAX_ICollection* outCollection) {
    return varno::gDescription(outCollection);
}

namespace varno {
namespace {

constexpr std::int32_t kUrgent = 0x8000000;

// A host that calls for the description.
class AAX_ExportsTest : public testing::Test {
protected:
    AAX_ExportsTest() {
        mCollection.offer(IID_IAAXCollectionV1, &mCollection);
        mCollection.offer(IID_IACFPluginDefinition, &mDefinition);
        mEffect.offer(IID_IAAXEffectDescriptorV1, &mEffect);
        mCollection.result = AAX_SUCCESS;
        mCollection.made = &mEffect;
        gDescription = [](AAX_ICollection*) { return AAX_SUCCESS; };
        EXPECT_EQ(ACFStartup(&mHost), 0);
    }
    ~AAX_ExportsTest() override {
        EXPECT_EQ(ACFShutdown(&mHost), 0);
        EXPECT_EQ(mHost.allReferences(), 0);
        EXPECT_EQ(mCollection.references(), 0);
        EXPECT_EQ(mEffect.references(), 0);
        EXPECT_EQ(mDefinition.references(), 0);
    }

    ACFRESULT registerPlugin() { return ACFRegisterPlugin(&mCollection, &mOut); }

    // The urgent trace lines so far.
    std::vector<std::string> urgentLines() const {
        std::vector<std::string> urgent;
        for (const FakeHostServices::Line& line : mHost.version1.lines) {
            if (line.priority == kUrgent) {
                urgent.push_back(line.text);
            }
        }
        return urgent;
    }

    FakeHostWithServices mHost;
    RecordingCollection mCollection;
    RecordingEffectDescriptor mEffect;
    FakeUnknown<IACFPluginDefinition> mDefinition;
    IACFPluginDefinition* mOut = nullptr;
};

TEST_F(AAX_ExportsTest, RegistrationDescribesAndHandsOutTheDefinition) {
    AAX_ICollection* described = nullptr;
    gDescription = [&](AAX_ICollection* collection) {
        described = collection;
        EXPECT_EQ(collection->HostDefinition(), &mCollection);
        return collection->SetManufacturerName("maker");
    };
    EXPECT_EQ(registerPlugin(), 0);
    EXPECT_NE(described, nullptr);
    EXPECT_EQ(mCollection.calls.size(), 1U);
    EXPECT_EQ(mOut, &mDefinition);
    EXPECT_EQ(mDefinition.references(), 1);
    EXPECT_TRUE(mHost.version1.lines.empty());
    mOut->Release();
}

TEST_F(AAX_ExportsTest, TheOutputIsNotTouchedBeforeTheDescriptionHasSucceeded) {
    mOut = &mDefinition;
    gDescription = [this](AAX_ICollection*) {
        EXPECT_EQ(mOut, &mDefinition);
        return AAX_ERROR_NO_COMPONENTS;
    };
    EXPECT_EQ(registerPlugin(), AAX_ERROR_NO_COMPONENTS);
    EXPECT_EQ(mOut, &mDefinition);
}

TEST_F(AAX_ExportsTest, TheDefinitionIsTheCollectionsAndNotAnotherOfTheHost) {
    FakeHost host;
    FakeUnknown<IACFPluginDefinition> other;
    host.offer(IID_IAAXCollectionV1, &mCollection);
    host.offer(IID_IACFPluginDefinition, &other);
    EXPECT_EQ(ACFRegisterPlugin(&host, &mOut), 0);
    EXPECT_EQ(mOut, &mDefinition);
    EXPECT_EQ(other.references(), 0);
    mOut->Release();
}

TEST_F(AAX_ExportsTest, FailureOfTheDescriptionIsReturnedWithOneLine) {
    gDescription = [this](AAX_ICollection* collection) {
        AAX_IEffectDescriptor* effect = collection->NewDescriptor();
        mCollection.result = AAX_ERROR_DUPLICATE_EFFECT_ID;
        return collection->AddEffect("effect", effect);
    };
    EXPECT_EQ(registerPlugin(), -20035);
    EXPECT_EQ(urgentLines(),
              std::vector<std::string>{
                  "AAXRegisterPlugin exception caught: AAX_ERROR_DUPLICATE_EFFECT_ID (-20035)"});
    EXPECT_EQ(mDefinition.references(), 0);
}

TEST_F(AAX_ExportsTest, HostWithoutADefinitionIsAFailure) {
    mCollection.offer(IID_IACFPluginDefinition, nullptr);
    mOut = &mDefinition;
    EXPECT_EQ(registerPlugin(), -20004);
    EXPECT_EQ(mOut, nullptr);
    EXPECT_EQ(urgentLines(),
              std::vector<std::string>{"AAXRegisterPlugin exception caught: AAX_ERROR_NULL_OBJECT (-20004)"});
}

TEST_F(AAX_ExportsTest, MissingHostIsAFailure) {
    EXPECT_EQ(ACFRegisterPlugin(nullptr, &mOut), -20004);
    EXPECT_EQ(mOut, nullptr);
}

TEST_F(AAX_ExportsTest, ExceptionsBecomeCodesByKind) {
    struct Case {
        std::function<void()> raise;
        ACFRESULT code;
        const char* line;
    };
    const Case cases[] = {
        {[] { throw AAX::Exception::ResultError(-20007); }, -20007,
         "AAXRegisterPlugin exception caught: AAX_ERROR_INVALID_CHUNK_ID (-20007)"},
        {[] { throw AAX::Exception::Any("broken", "f", "7"); }, -20042,
         "AAXRegisterPlugin exception caught: broken func:f line:7"},
        {[] { throw std::runtime_error("standard"); }, -20042,
         "AAXRegisterPlugin exception caught: standard"},
        {[] { throw 5; }, -20042, "AAXRegisterPlugin exception caught: unknown"},
    };
    for (const Case& c : cases) {
        mHost.version1.lines.clear();
        gDescription = [&](AAX_ICollection*) {
            c.raise();
            return AAX_SUCCESS;
        };
        EXPECT_EQ(registerPlugin(), c.code);
        EXPECT_EQ(mHost.version1.lines, (std::vector<FakeHostServices::Line>{{kUrgent, c.line}}));
    }
}

TEST_F(AAX_ExportsTest, PositionBeyondAStringIsAnUnknownException) {
    gDescription = [](AAX_ICollection*) {
        AAX_CString("abc").Erase(4, 1);
        return AAX_SUCCESS;
    };
    EXPECT_EQ(registerPlugin(), -20042);
    EXPECT_EQ(urgentLines().size(), 1U);
}

// A host that throws where it must not.
class ThrowingServices : public FakeHostServices {
public:
    AAX_Result Trace(std::int32_t, const char*) override { throw std::runtime_error("host"); }
};

TEST_F(AAX_ExportsTest, NoExceptionLeavesTheRegistration) {
    ThrowingServices throwing;
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    mHost.factory.offer(IID_IAAXHostServicesV1, &throwing);
    EXPECT_EQ(ACFStartup(&mHost), 0);
    gDescription = [](AAX_ICollection*) -> AAX_Result { throw 5; };
    EXPECT_EQ(registerPlugin(), -20042) << "the host's exception costs the trace line only";
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    EXPECT_EQ(throwing.references(), 0);
}

class ThrowingHost : public FakeHost {
public:
    ACFRESULT QueryInterface(const acfIID&, void**) override { throw std::runtime_error("host"); }
};

TEST_F(AAX_ExportsTest, NoExceptionLeavesTheStartUp) {
    ThrowingHost throwing;
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    EXPECT_EQ(static_cast<std::uint32_t>(ACFStartup(&throwing)), 0x8000FFFFU);
    EXPECT_EQ(ACFStartup(&mHost), 0);
    EXPECT_EQ(mHost.allReferences(), 3) << "a start-up that failed must leave room for another";
}

// Host services that throw while they are released.
class ThrowingOnRelease : public FakeHostServices {
public:
    std::uint32_t Release() override {
        FakeHostServices::Release();
        throw std::runtime_error("host");
    }
};

TEST_F(AAX_ExportsTest, NoExceptionLeavesTheShutDown) {
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    const acfIID versions[] = {IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3};
    for (const acfIID& throwingVersion : versions) {
        FakeHostWithServices host;
        ThrowingOnRelease throwing;
        host.factory.offer(throwingVersion, &throwing);
        EXPECT_EQ(ACFStartup(&host), 0);
        EXPECT_EQ(static_cast<std::uint32_t>(ACFShutdown(&host)), 0x8000FFFFU);
        EXPECT_EQ(host.allReferences(), 0) << "the other versions are released nevertheless";
        EXPECT_EQ(throwing.references(), 0);
        EXPECT_EQ(ACFShutdown(&host), 0) << "the channel is closed";
        EXPECT_EQ(host.version1.lines.size(), 0U);
    }
    EXPECT_EQ(ACFStartup(&mHost), 0);
}

TEST_F(AAX_ExportsTest, SeveralExceptionsDoNotLeaveTheShutDownEither) {
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    ThrowingOnRelease throwing;
    for (const acfIID& version : {IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3}) {
        mHost.factory.offer(version, &throwing);
    }
    EXPECT_EQ(ACFStartup(&mHost), 0);
    EXPECT_EQ(static_cast<std::uint32_t>(ACFShutdown(&mHost)), 0x8000FFFFU);
    EXPECT_EQ(throwing.references(), 0);
}

TEST_F(AAX_ExportsTest, StartUpAndShutDownOpenAndCloseTheDiagnostics) {
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "open");
    EXPECT_EQ(urgentLines(), std::vector<std::string>{"open"});
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    EXPECT_EQ(mHost.allReferences(), 0);
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "closed");
    EXPECT_EQ(urgentLines().size(), 1U);
}

TEST_F(AAX_ExportsTest, HostThatThrowsAtTheTraceLineKeepsTheCode) {
    ThrowingServices throwing;
    EXPECT_EQ(ACFShutdown(&mHost), 0);
    mHost.factory.offer(IID_IAAXHostServicesV1, &throwing);
    EXPECT_EQ(ACFStartup(&mHost), 0);
    gDescription = [](AAX_ICollection*) { return AAX_ERROR_NULL_OBJECT; };
    EXPECT_EQ(registerPlugin(), -20004);
    EXPECT_EQ(ACFShutdown(&mHost), 0);
}

TEST_F(AAX_ExportsTest, ThereAreNoSeparateComponents) {
    FakeUnknown<IACFComponentDefinition> before;
    IACFComponentDefinition* out = &before;
    EXPECT_EQ(ACFRegisterComponent(&mHost, 0, &out), 0);
    EXPECT_EQ(out, nullptr);
}

TEST_F(AAX_ExportsTest, ThereIsNoClassFactory) {
    void* out = &mDefinition;
    EXPECT_EQ(ACFGetClassFactory(&mHost, AAXCompID_HostServices, IID_IACFUnknown, &out), -20009);
    EXPECT_EQ(out, nullptr);
}

TEST_F(AAX_ExportsTest, ModuleMayBeUnloadedWhenNoObjectIsLeft) {
    EXPECT_EQ(ACFCanUnloadNow(&mHost), 0);
    auto* first = new CACFUnknown;
    auto* second = new CACFUnknown;
    first->InternalAddRef();
    second->InternalAddRef();
    EXPECT_EQ(ACFCanUnloadNow(&mHost), 2);
    first->InternalRelease();
    EXPECT_EQ(ACFCanUnloadNow(&mHost), 1);
    second->InternalRelease();
    EXPECT_EQ(ACFCanUnloadNow(&mHost), 0);
}

TEST_F(AAX_ExportsTest, ReportsTheVersionOfTheArchitecture) {
    std::uint64_t version = 0;
    EXPECT_EQ(ACFGetSDKVersion(&version), 0);
    EXPECT_EQ(version, 0x00000204013449EAU);
}

} // namespace
} // namespace varno
