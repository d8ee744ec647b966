/// The host's diagnostics channel, for tests.
#ifndef VARNO_TESTS_SUPPORT_FAKEHOSTSERVICES_H
#define VARNO_TESTS_SUPPORT_FAKEHOSTSERVICES_H

#include "AAX_CHostServices.h"
#include "AAX_IACFHostServices.h"
#include "ACF/IACFComponentFactory.h"
#include "Tests/Support/FakeUnknown.h"

#include <string>
#include <vector>

namespace varno {

/// Has one component: returns the objects that it offers instead of making new ones.
class FakeComponentFactory : public FakeUnknown<IACFComponentFactory> {
public:
    explicit FakeComponentFactory(const acfCLSID& classID)
        : mClassID(classID) {}

    ACFRESULT CreateComponent(IACFUnknown* outer, const acfCLSID& classID, const acfIID& iid,
                              void** outObject) override {
        *outObject = nullptr;
        asked.push_back(iid);
        if (outer != nullptr || !(classID == mClassID)) {
            return ACF_E_NOINTERFACE;
        }
        const ACFRESULT found = QueryInterface(iid, outObject);
        return found == ACF_OK ? resultWhenFound : found;
    }

    /// The interfaces asked for so far, in order.
    std::vector<acfIID> asked;
    /// What it returns together with an object; with a failure its caller gets a component that is not
    /// usable.
    ACFRESULT resultWhenFound = ACF_OK;

private:
    acfCLSID mClassID;
};

/// Keeps the trace lines and assertions that reach it, in the order of their arrival.
class FakeHostServices : public FakeUnknown<AAX_IACFHostServices_V3> {
public:
    struct Line {
        std::int32_t priority;
        std::string text;
        bool operator==(const Line&) const = default;
    };
    struct Assertion {
        std::string file;
        std::int32_t line;
        std::string note;
        std::int32_t flags;
    };

    AAX_Result Trace(std::int32_t priority, const char* message) override {
        lines.push_back({priority, message});
        return traceResult;
    }
    AAX_Result StackTrace(std::int32_t tracePriority, std::int32_t stackTracePriority,
                          const char* message) override {
        stackTraces.push_back({tracePriority, message});
        stackTracePriorities.push_back(stackTracePriority);
        return stackTraceResult;
    }
    AAX_Result HandleAssertFailure(const char* file, std::int32_t line, const char* note,
                                   std::int32_t flags) override {
        assertions.push_back({file, line, note, flags});
        return assertResult;
    }

    std::vector<Line> lines;
    std::vector<Line> stackTraces;
    std::vector<std::int32_t> stackTracePriorities;
    std::vector<Assertion> assertions;
    AAX_Result traceResult = AAX_SUCCESS;
    AAX_Result stackTraceResult = AAX_SUCCESS;
    AAX_Result assertResult = AAX_SUCCESS;
};

/// A host with diagnostics in all versions: each a `services` object of its own, made by a factory.
class FakeHostWithServices : public FakeHost {
public:
    FakeHostWithServices() {
        offer(IID_IACFComponentFactory, &factory);
        factory.offer(IID_IAAXHostServicesV1, &version1);
        factory.offer(IID_IAAXHostServicesV2, &version2);
        factory.offer(IID_IAAXHostServicesV3, &version3);
    }

    /// References that others hold to the host or to its objects.
    std::int32_t allReferences() const {
        return references() + factory.references() + version1.references() + version2.references() +
               version3.references();
    }

    FakeComponentFactory factory{AAXCompID_HostServices};
    FakeHostServices version1; ///< Receives trace lines.
    FakeHostServices version2; ///< Receives stack traces.
    FakeHostServices version3; ///< Receives assertions.
};

/// Opens the module's diagnostics channel to a host of its own for as long as it lives.
class ListeningHost {
public:
    ListeningHost() { AAX_CHostServices::Set(&mHost); }
    ListeningHost(const ListeningHost&) = delete;
    ListeningHost& operator=(const ListeningHost&) = delete;
    ~ListeningHost() { AAX_CHostServices::Set(nullptr); }

    const std::vector<FakeHostServices::Line>& lines() const { return mHost.version1.lines; }
    const std::vector<FakeHostServices::Assertion>& assertions() const { return mHost.version3.assertions; }

private:
    FakeHostWithServices mHost;
};

} // namespace varno

#endif
