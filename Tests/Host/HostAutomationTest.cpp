#include "Host/HostAutomation.h"

#include "ACF/ACFPtr.h"
#include "Host/InstanceHost.h"
#include "Tests/Host/TestContext.h"

#include <cmath>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <utility>

namespace varno {
namespace {

using testing::ElementsAre;

class HostAutomationTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<InstanceHost> host = ACFPtr<InstanceHost>::Adopt(
        new InstanceHost(context, EffectDescription(), VariantDescription(), InstanceSetup()));
    HostAutomation& automation = host->automation();

    std::vector<std::string> violations() {
        std::vector<std::string> texts;
        for (const Violation& violation : context->monitor->takeViolations()) {
            texts.push_back(violation.text);
        }
        return texts;
    }
};

TEST_F(HostAutomationTest, RegistersAndUnregisters) {
    EXPECT_EQ(AAX_SUCCESS, automation.RegisterParameter("A"));
    EXPECT_EQ(AAX_SUCCESS, automation.RegisterParameter("B"));
    EXPECT_EQ(AAX_SUCCESS, automation.UnregisterParameter("A"));
    EXPECT_THAT(automation.registered(), ElementsAre("B"));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, automation.RegisterParameter(nullptr));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, automation.UnregisterParameter("A"));
    EXPECT_THAT(violations(), ElementsAre("UnregisterParameter of parameter A, which is not registered"));
}

TEST_F(HostAutomationTest, QueuesRequestsInTheirOrder) {
    automation.RegisterParameter("A");
    EXPECT_EQ(AAX_SUCCESS, automation.PostSetValueRequest("A", 0.25));
    EXPECT_EQ(AAX_SUCCESS, automation.PostSetValueRequest("A", 1.0));
    const auto requests = automation.takeRequests();
    ASSERT_EQ(2U, requests.size());
    EXPECT_EQ(0.25, requests[0].normalized);
    EXPECT_EQ(1.0, requests[1].normalized);
    EXPECT_TRUE(automation.takeRequests().empty());
}

class Hearing : public AutomationListener {
public:
    void valueRequested(const std::string& id, double normalized) override {
        heard.push_back(id + " " + std::to_string(normalized));
    }
    void touched(const std::string& id) override { heard.push_back("touch " + id); }
    void released(const std::string& id) override { heard.push_back("release " + id); }

    std::vector<std::string> heard;
};

TEST_F(HostAutomationTest, NotifiesItsListenerOfTheModulesRequests) {
    Hearing listener;
    automation.addListener(listener);
    automation.RegisterParameter("A");
    automation.PostTouchRequest("A");
    automation.PostSetValueRequest("A", 0.25);
    automation.PostReleaseRequest("A");
    EXPECT_THAT(listener.heard, ElementsAre("touch A", "A 0.250000", "release A"));
    EXPECT_EQ(1U, automation.takeRequests().size());
}

TEST_F(HostAutomationTest, NotifiesItsListenerOfNothingThatItRefusesOrThatTheHostRequests) {
    Hearing listener;
    automation.addListener(listener);
    automation.RegisterParameter("A");
    automation.request({"A", 0.5});
    automation.PostCurrentValue("A", 0.5);
    automation.PostSetValueRequest("A", 2.0);
    automation.PostSetValueRequest("B", 0.5);
    automation.PostReleaseRequest("A");
    automation.removeListener(listener);
    automation.PostTouchRequest("A");
    automation.PostReleaseRequest("A");
    EXPECT_TRUE(listener.heard.empty());
    EXPECT_EQ(3U, violations().size());
}

TEST_F(HostAutomationTest, NotifiesItsListenersInTheOrderInWhichTheyWereAdded) {
    std::vector<std::string> calls;
    class Named : public AutomationListener {
    public:
        Named(std::string name, std::vector<std::string>& all)
            : mName(std::move(name)),
              mCalls(all) {}
        void valueRequested(const std::string& id, double) override { mCalls.push_back(mName + " " + id); }
        void touched(const std::string&) override { mCalls.push_back(mName + " touch"); }
        void released(const std::string&) override { mCalls.push_back(mName + " release"); }

    private:
        std::string mName;
        std::vector<std::string>& mCalls;
    };
    Named first("1", calls);
    Named second("2", calls);
    automation.addListener(first);
    automation.addListener(second);
    automation.RegisterParameter("A");
    automation.PostTouchRequest("A");
    automation.PostSetValueRequest("A", 0.25);
    automation.PostReleaseRequest("A");
    EXPECT_THAT(calls, ElementsAre("1 touch", "2 touch", "1 A", "2 A", "1 release", "2 release"));
    calls.clear();
    automation.removeListener(first);
    automation.PostSetValueRequest("A", 0.5);
    EXPECT_THAT(calls, ElementsAre("2 A"));
}

// At every touch does something to the automation's listeners.
class Changing : public AutomationListener {
public:
    explicit Changing(std::function<void()> change)
        : mChange(std::move(change)) {}
    void valueRequested(const std::string&, double) override {}
    void touched(const std::string&) override {
        ++touches;
        mChange();
    }
    void released(const std::string&) override {}

    int touches = 0;

private:
    std::function<void()> mChange;
};

TEST_F(HostAutomationTest, AListenerMayRemoveItselfAndOthersWithinACall) {
    Hearing before;
    Hearing after;
    Changing changing([&] {
        automation.removeListener(before);
        automation.removeListener(changing);
        automation.removeListener(after);
        automation.removeListener(after); // not there any more
    });
    Hearing last;
    for (AutomationListener* listener :
         {static_cast<AutomationListener*>(&before), static_cast<AutomationListener*>(&changing),
          static_cast<AutomationListener*>(&after), static_cast<AutomationListener*>(&last)}) {
        automation.addListener(*listener);
    }
    automation.RegisterParameter("A");
    automation.PostTouchRequest("A");
    automation.PostReleaseRequest("A");
    EXPECT_EQ(1, changing.touches);
    EXPECT_THAT(before.heard, ElementsAre("touch A"));
    EXPECT_TRUE(after.heard.empty());
    EXPECT_THAT(last.heard, ElementsAre("touch A", "release A"));
}

TEST_F(HostAutomationTest, AListenerAddedWithinACallReceivesTheNextOne) {
    Hearing added;
    bool isAdded = false;
    Changing changing([&] {
        if (!std::exchange(isAdded, true)) {
            automation.addListener(added);
        }
    });
    automation.addListener(changing);
    automation.RegisterParameter("A");
    automation.PostTouchRequest("A");
    EXPECT_TRUE(added.heard.empty());
    automation.PostTouchRequest("A");
    automation.PostReleaseRequest("A");
    automation.PostReleaseRequest("A");
    EXPECT_THAT(added.heard, ElementsAre("touch A", "release A", "release A"));
}

TEST_F(HostAutomationTest, AListenerMayRemoveAnotherWithinACallThatItMakesItself) {
    Hearing other;
    Changing changing([&] {
        if (changing.touches == 1) {
            automation.PostTouchRequest("B");
            automation.removeListener(other);
            automation.PostReleaseRequest("B");
        }
    });
    automation.addListener(changing);
    automation.addListener(other);
    automation.RegisterParameter("A");
    automation.RegisterParameter("B");
    automation.PostTouchRequest("A");
    automation.PostReleaseRequest("A");
    EXPECT_THAT(other.heard, ElementsAre("touch B"));
    EXPECT_EQ(2, changing.touches);
}

TEST_F(HostAutomationTest, ShowsTheLatestValueThatIsNotAnswered) {
    class Reading : public AutomationListener {
    public:
        explicit Reading(HostAutomation& read)
            : mAutomation(read) {}
        void valueRequested(const std::string& id, double) override {
            before.push_back(mAutomation.requestedValue(id));
        }
        void touched(const std::string&) override {}
        void released(const std::string&) override {}

        std::vector<std::optional<double>> before;

    private:
        HostAutomation& mAutomation;
    };
    Reading listener(automation);
    automation.addListener(listener);
    automation.RegisterParameter("A");
    automation.RegisterParameter("B");
    automation.PostSetValueRequest("A", 0.25);
    automation.PostSetValueRequest("B", 0.75);
    automation.PostSetValueRequest("A", 0.5);
    EXPECT_EQ(automation.requestedValue("A"), 0.5);
    EXPECT_EQ(automation.requestedValue("B"), 0.75);
    EXPECT_THAT(listener.before, ElementsAre(std::nullopt, std::nullopt, 0.25));
    automation.takeRequests();
    EXPECT_EQ(automation.requestedValue("A"), std::nullopt);
}

TEST_F(HostAutomationTest, RefusesEverythingForAnUnknownParameter) {
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, automation.PostSetValueRequest("A", 0.0));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, automation.PostCurrentValue("A", 0.0));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, automation.PostTouchRequest("A"));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, automation.PostReleaseRequest(nullptr));
    EXPECT_THAT(violations(), ElementsAre("PostSetValueRequest of parameter A, which is not registered",
                                          "PostCurrentValue of parameter A, which is not registered",
                                          "PostTouchRequest of parameter A, which is not registered",
                                          "PostReleaseRequest of parameter null, which is not registered"));
}

TEST_F(HostAutomationTest, RefusesValuesThatAreNone) {
    automation.RegisterParameter("A");
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, automation.PostSetValueRequest("A", std::nan("")));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, automation.PostCurrentValue("A", -0.5));
    EXPECT_TRUE(automation.takeRequests().empty());
    EXPECT_THAT(violations(), ElementsAre("PostSetValueRequest of parameter A with nan, expected 0 to 1",
                                          "PostCurrentValue of parameter A with -0.500000, expected 0 to 1"));
}

TEST_F(HostAutomationTest, GesturesNest) {
    automation.RegisterParameter("A");
    automation.PostTouchRequest("A");
    automation.PostTouchRequest("A");
    EXPECT_EQ(2, automation.touches("A"));
    automation.PostReleaseRequest("A");
    automation.PostReleaseRequest("A");
    EXPECT_EQ(0, automation.touches("A"));
    automation.reportOpenTouches();
    EXPECT_TRUE(violations().empty());
    EXPECT_EQ(2, automation.totalTouches());
}

} // namespace
} // namespace varno
