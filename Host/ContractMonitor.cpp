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
        mViolations.push_back(violation);
        listener = mListener;
    }
    if (listener) {
        listener(violation);
    }
}

std::vector<Violation> ContractMonitor::violations() const {
    const std::lock_guard lock(mMutex);
    return mViolations;
}

std::vector<Violation> ContractMonitor::takeViolations() {
    const std::lock_guard lock(mMutex);
    return std::exchange(mViolations, {});
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
    TraceLine line{priority, message == nullptr ? "" : message};
    const std::string text = line.text;
    bool expected = false;
    {
        const std::lock_guard lock(mMutex);
        mTraces.push_back(std::move(line));
        expected = meet(mExpectedTraces, text);
    }
    if (!expected) {
        report(Contract::kDiagnostics, "unexpected trace line " + quoted(text));
    }
}

void ContractMonitor::assertFailure(const char* file, std::int32_t line, const char* note,
                                    std::int32_t flags) {
    AssertFailure failure{file == nullptr ? "" : file, line, note == nullptr ? "" : note, flags};
    const std::string text = failure.note;
    const std::string place = failure.file + ":" + std::to_string(line);
    bool expected = false;
    {
        const std::lock_guard lock(mMutex);
        mAssertFailures.push_back(std::move(failure));
        expected = meet(mExpectedAssertions, text);
    }
    if (!expected) {
        report(Contract::kDiagnostics, "unexpected failed assertion " + quoted(text) + " at " + place);
    }
}

std::vector<TraceLine> ContractMonitor::traces() const {
    const std::lock_guard lock(mMutex);
    return mTraces;
}

std::vector<AssertFailure> ContractMonitor::assertFailures() const {
    const std::lock_guard lock(mMutex);
    return mAssertFailures;
}

} // namespace varno
