#include "AAX_VViewContainer.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using ViewContainer = AAX_IViewContainer;

const std::vector<acfIID> kViewContainerVersions{IID_IAAXViewContainerV1, IID_IAAXViewContainerV2};

// The container as the editor has it. The host owns further references, which it releases at the end of the
// test.
class HostsView : public AAX_VViewContainer {
public:
    explicit HostsView(IACFUnknown* container)
        : AAX_VViewContainer(container),
          mContainer(container) {}
    ~HostsView() override {
        for (const acfIID& iid : kViewContainerVersions) {
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

// The operations after GetType and GetPtr, in their order.
std::vector<Operation<ViewContainer>> viewContainerOperations() {
    const auto size = std::ref(*somewhere<AAX_Point>());
    const AAX_CParamID* ids = somewhere<AAX_CParamID>();
    return {
        operation<ViewContainer>("GetModifiers", 1, kWithoutVersion, &ViewContainer::GetModifiers,
                                 somewhere<std::uint32_t>()),
        operation<ViewContainer>("SetViewSize", 1, AAX_SUCCESS, &ViewContainer::SetViewSize, size),
        operation<ViewContainer>("HandleParameterMouseDown", 1, kWithoutVersion,
                                 &ViewContainer::HandleParameterMouseDown, kText, 1U),
        operation<ViewContainer>("HandleParameterMouseDrag", 1, kWithoutVersion,
                                 &ViewContainer::HandleParameterMouseDrag, kText, 2U),
        operation<ViewContainer>("HandleParameterMouseUp", 1, kWithoutVersion,
                                 &ViewContainer::HandleParameterMouseUp, kText, 3U),
        operation<ViewContainer>("HandleMultipleParametersMouseDown", 2, kWithoutVersion,
                                 &ViewContainer::HandleMultipleParametersMouseDown, ids, 4U, 5U),
        operation<ViewContainer>("HandleMultipleParametersMouseDrag", 2, kWithoutVersion,
                                 &ViewContainer::HandleMultipleParametersMouseDrag, ids, 6U, 7U),
        operation<ViewContainer>("HandleMultipleParametersMouseUp", 2, kWithoutVersion,
                                 &ViewContainer::HandleMultipleParametersMouseUp, ids, 8U, 9U),
    };
}

TEST(AAX_VViewContainerTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingViewContainer, ViewContainer>(
        kViewContainerVersions, viewContainerOperations(),
        [](IACFUnknown* host) { return std::make_unique<HostsView>(host); });
}

TEST(AAX_VViewContainerTest, VirtualSlotsHaveTheirOrder) {
    std::vector<std::ptrdiff_t> slots = slotsOf(viewContainerOperations());
    slots.insert(slots.begin(), {slotOf(&ViewContainer::GetType), slotOf(&ViewContainer::GetPtr)});
    expectConsecutive(slots);
}

TEST(AAX_VViewContainerTest, ReturnsTheNativeView) {
    VersionedHost<RecordingViewContainer> host(kViewContainerVersions, 0);
    host.version(1).result = AAX_eViewContainerType_Cocoa;
    host.version(1).view = somewhere<int>();
    AAX_VViewContainer container(host.object());
    EXPECT_EQ(container.GetType(), 1);
    EXPECT_EQ(container.GetPtr(), somewhere<int>());
    EXPECT_EQ(host.takeCalls(), (std::vector<std::string>{"1.GetType()", "1.GetPtr()"}));
}

TEST(AAX_VViewContainerTest, WithoutVersionOneThereIsNoView) {
    VersionedHost<RecordingViewContainer> host(kViewContainerVersions, 1);
    AAX_VViewContainer container(host.object());
    EXPECT_EQ(container.GetType(), 0);
    EXPECT_EQ(container.GetPtr(), nullptr);
    AAX_Point size{10.0F, 20.0F};
    EXPECT_EQ(container.SetViewSize(size), 0);
}

TEST(AAX_VViewContainerTest, ReferencesOfTheQueriesStayWithTheHost) {
    VersionedHost<RecordingViewContainer> host(kViewContainerVersions, 0);
    {
        const AAX_VViewContainer container(host.object());
        EXPECT_EQ(host.references(), 2);
    }
    EXPECT_EQ(host.references(), 2);
}

} // namespace
} // namespace varno
