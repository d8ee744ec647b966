/// Records where module or host break the rules of the interfaces, while both run.
#ifndef VARNO_HOST_CONTRACTMONITOR_H
#define VARNO_HOST_CONTRACTMONITOR_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace varno {

/// What can be broken.
enum class Contract {
    kThread,      ///< A [main] call from the audio thread, or from two threads at once.
    kLifecycle,   ///< A call before initialisation or after the end.
    kTouch,       ///< A release without a touch, or a touch that was never released.
    kReferences,  ///< A reference that was not released, or released twice.
    kLiveObjects, ///< The module's live-object count is not back at zero.
    kDiagnostics, ///< An unexpected assertion or trace line.
    kPackets,     ///< A packet for an unknown field or of a wrong size, or a field without any packet.
    kParameters,  ///< Automation of a parameter that is not registered, or a value that is not one.
    kDescription, ///< A description that contradicts itself or lacks something.
};

/// The name of a contract, as written in messages. [any]
const char* contractName(Contract contract);

/// One breach.
struct Violation {
    Contract contract;
    std::string text; ///< One line: what was done, and what was expected.
};

/// One trace line of the module.
struct TraceLine {
    std::int32_t priority; ///< An AAX_ETracePriorityHost bit value.
    std::string text;
};

/// One failed assertion of the module.
struct AssertFailure {
    std::string file;
    std::int32_t line;
    std::string note; ///< The text of the failed condition.
    std::int32_t flags;
};

/// Collects violations, the first kMostViolations of them. One monitor belongs to one module and everything
/// made from it, and outlives both, so that a breach at the very end is seen. Safe from any thread; recording
/// takes a lock and allocates, which happens only when a contract is broken or the module writes a trace
/// line. [any]
class ContractMonitor {
public:
    using Listener = std::function<void(const Violation&)>;
    using TraceListener = std::function<void(const TraceLine&)>;
    using AssertListener = std::function<void(const AssertFailure&)>;

    /// Enough to find a fault; a module that breaks a contract in every buffer does not fill the memory.
    static constexpr std::size_t kMostViolations = 1000;

    /// Records a violation.
    void report(Contract contract, std::string text);
    /// Everything recorded so far, in order; where there was more, the last one is of the same contract as
    /// the first that was left out, and states how many.
    std::vector<Violation> violations() const;
    /// Returns and removes everything recorded so far; for a test that provokes a violation.
    std::vector<Violation> takeViolations();
    /// Calls `listener` at each further violation, on the thread that caused it; empty for none.
    void setListener(Listener listener);
    /// The same for every trace line and every failed assertion, expected or not; they are not kept. Set
    /// before the module runs.
    void setTraceListener(TraceListener listener) { mTraceListener = std::move(listener); }
    void setAssertListener(AssertListener listener) { mAssertListener = std::move(listener); }

    /// Allows trace lines that contain `part`, any number of them from now on.
    void expectTrace(std::string part);
    /// Allows failed assertions whose note contains `part`, any number of them from now on.
    void expectAssertion(std::string part);
    /// The expectations that nothing has met yet, as text.
    std::vector<std::string> unmetExpectations() const;

    /// Takes a trace line; a violation unless expected.
    void trace(std::int32_t priority, const char* message);
    /// Takes a failed assertion; a violation unless expected.
    void assertFailure(const char* file, std::int32_t line, const char* note, std::int32_t flags);

private:
    struct Expectation {
        std::string part;
        bool met = false;
    };

    std::vector<Violation> recorded() const;
    static bool meet(std::vector<Expectation>& expectations, const std::string& text);

    mutable std::mutex mMutex;
    std::vector<Violation> mViolations;
    Violation mFirstLeftOut{};
    std::size_t mLeftOut = 0;
    std::vector<Expectation> mExpectedTraces;
    std::vector<Expectation> mExpectedAssertions;
    Listener mListener;
    TraceListener mTraceListener;
    AssertListener mAssertListener;
};

} // namespace varno

#endif
