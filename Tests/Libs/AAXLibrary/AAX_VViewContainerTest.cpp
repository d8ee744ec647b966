#include "AAX_VViewContainer.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingViewContainer.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using V = AAX_IViewContainer;

constexpr auto kOld = AAX_ERROR_UNIMPLEMENTED;
constexpr const char* kID = "Gain";
const std::vector<acfIID> kVersions{IID_IAAXViewContainerV1, IID_IAAXViewContainerV2};

// The container as the editor has it, beside the references that belong to the host: they are given back
// when the test is over, as the host does.
class HostsView : public AAX_VViewContainer {
public:
    explicit HostsView(IACFUnknown* container)
        : AAX_VViewContainer(container),
          mContainer(container) {}
    ~HostsView() override {
        for (const acfIID& iid : kVersions) {
            void* version = nullptr;
            if (mContainer != nullptr && mContainer->QueryInterface(iid, &version) == ACF_OK) {
                static_cast<IACFUnknown*>(version)->Release();
                static_cast<IACFUnknown*>(version)->Release();
            }
        }
    }

private:
    IACFUnknown* mContainer;
};

// The operations behind GetType and GetPtr, in their order.
std::vector<Operation<V>> allOperations() {
    const auto size = std::ref(*somewhere<AAX_Point>());
    const AAX_CParamID* ids = somewhere<AAX_CParamID>();
    return {
        operation<V>("GetModifiers", 1, kOld, &V::GetModifiers, somewhere<std::uint32_t>()),
        operation<V>("SetViewSize", 1, AAX_SUCCESS, &V::SetViewSize, size),
        operation<V>("HandleParameterMouseDown", 1, kOld, &V::HandleParameterMouseDown, kID, 1U),
        operation<V>("HandleParameterMouseDrag", 1, kOld, &V::HandleParameterMouseDrag, kID, 2U),
        operation<V>("HandleParameterMouseUp", 1, kOld, &V::HandleParameterMouseUp, kID, 3U),
        operation<V>("HandleMultipleParametersMouseDown", 2, kOld, &V::HandleMultipleParametersMouseDown, ids,
                     4U, 5U),
        operation<V>("HandleMultipleParametersMouseDrag", 2, kOld, &V::HandleMultipleParametersMouseDrag, ids,
                     6U, 7U),
        operation<V>("HandleMultipleParametersMouseUp", 2, kOld, &V::HandleMultipleParametersMouseUp, ids, 8U,
                     9U),
    };
}

TEST(AAX_VViewContainerTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingViewContainer, V>(
        kVersions, allOperations(), [](IACFUnknown* host) { return std::make_unique<HostsView>(host); });
}

TEST(AAX_VViewContainerTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(allOperations());
    slots.insert(slots.begin(), {slotOf(&V::GetType), slotOf(&V::GetPtr)});
    expectConsecutive(slots);
}

TEST(AAX_VViewContainerTest, TellsTheNativeView) {
    VersionedHost<RecordingViewContainer> host(kVersions, 0);
    host.version(1).result = AAX_eViewContainerType_Cocoa;
    host.version(1).view = somewhere<int>();
    AAX_VViewContainer container(host.object());
    EXPECT_EQ(container.GetType(), 1);
    EXPECT_EQ(container.GetPtr(), somewhere<int>());
    EXPECT_EQ(host.takeCalls(), (std::vector<std::string>{"1.GetType()", "1.GetPtr()"}));
}

TEST(AAX_VViewContainerTest, WithoutVersionOneThereIsNoView) {
    VersionedHost<RecordingViewContainer> host(kVersions, 1);
    AAX_VViewContainer container(host.object());
    EXPECT_EQ(container.GetType(), 0);
    EXPECT_EQ(container.GetPtr(), nullptr);
    AAX_Point size{10.0F, 20.0F};
    EXPECT_EQ(container.SetViewSize(size), 0);
}

TEST(AAX_VViewContainerTest, ReferencesOfTheQueriesStayWithTheHost) {
    VersionedHost<RecordingViewContainer> host(kVersions, 0);
    {
        const AAX_VViewContainer container(host.object());
        EXPECT_EQ(host.references(), 2);
    }
    EXPECT_EQ(host.references(), 2);
}

} // namespace
} // namespace varno
