#include "Host/ContractMonitor.h"

#include "Host/HostError.h"

#include <utility>

namespace varno {

const char* contractName(Contract contract) {
    switch (contract) {
    case Contract::kThread:
        return "thread";
    case Contract::kLifecycle:
        return "lifecycle";
    case Contract::kTouch:
        return "touch";
    case Contract::kReferences:
        return "references";
    case Contract::kLiveObjects:
        return "live objects";
    case Contract::kDiagnostics:
        return "diagnostics";
    case Contract::kPackets:
        return "packets";
    case Contract::kParameters:
        return "parameters";
    case Contract::kDescription:
        return "description";
    }
    return "unknown contract";
}

void ContractMonitor::report(Contract contract, std::string text) {
    Violation violation{contract, std::move(text)};
    Listener listener;
    {
        const std::lock_guard lock(mMutex);
        if (mViolations.size() < kMostViolations) {
            mViolations.push_back(violation);
        } else if (++mLeftOut == 1) {
            mFirstLeftOut = violation;
        }
        listener = mListener;
    }
    if (listener) {
        listener(violation);
    }
}

std::vector<Violation> ContractMonitor::recorded() const {
    std::vector<Violation> all = mViolations;
    if (mLeftOut > 0) {
        all.push_back({mFirstLeftOut.contract,
                       mFirstLeftOut.text + " (and " + std::to_string(mLeftOut - 1) + " more, of any kind)"});
    }
    return all;
}

std::vector<Violation> ContractMonitor::violations() const {
    const std::lock_guard lock(mMutex);
    return recorded();
}

std::vector<Violation> ContractMonitor::takeViolations() {
    const std::lock_guard lock(mMutex);
    std::vector<Violation> all = recorded();
    mViolations.clear();
    mLeftOut = 0;
    return all;
}

void ContractMonitor::setListener(Listener listener) {
    const std::lock_guard lock(mMutex);
    mListener = std::move(listener);
}

void ContractMonitor::expectTrace(std::string part) {
    const std::lock_guard lock(mMutex);
    mExpectedTraces.push_back({std::move(part)});
}

void ContractMonitor::expectAssertion(std::string part) {
    const std::lock_guard lock(mMutex);
    mExpectedAssertions.push_back({std::move(part)});
}

std::vector<std::string> ContractMonitor::unmetExpectations() const {
    const std::lock_guard lock(mMutex);
    std::vector<std::string> unmet;
    for (const Expectation& expectation : mExpectedTraces) {
        if (!expectation.met) {
            unmet.push_back("a trace line with " + quoted(expectation.part));
        }
    }
    for (const Expectation& expectation : mExpectedAssertions) {
        if (!expectation.met) {
            unmet.push_back("a failed assertion with " + quoted(expectation.part));
        }
    }
    return unmet;
}

bool ContractMonitor::meet(std::vector<Expectation>& expectations, const std::string& text) {
    bool met = false;
    for (Expectation& expectation : expectations) {
        if (text.find(expectation.part) != std::string::npos) {
            expectation.met = true;
            met = true;
        }
    }
    return met;
}

void ContractMonitor::trace(std::int32_t priority, const char* message) {
    const TraceLine line{priority, message == nullptr ? "" : message};
    if (mTraceListener) {
        mTraceListener(line);
    }
    bool expected = false;
    {
        const std::lock_guard lock(mMutex);
        expected = meet(mExpectedTraces, line.text);
    }
    if (!expected) {
        report(Contract::kDiagnostics, "unexpected trace line " + quoted(line.text));
    }
}

void ContractMonitor::assertFailure(const char* file, std::int32_t line, const char* note,
                                    std::int32_t flags) {
    const AssertFailure failure{file == nullptr ? "" : file, line, note == nullptr ? "" : note, flags};
    if (mAssertListener) {
        mAssertListener(failure);
    }
    bool expected = false;
    {
        const std::lock_guard lock(mMutex);
        expected = meet(mExpectedAssertions, failure.note);
    }
    if (!expected) {
        report(Contract::kDiagnostics, "unexpected failed assertion " + quoted(failure.note) + " at " +
                                           failure.file + ":" + std::to_string(line));
    }
}

} // namespace varno
