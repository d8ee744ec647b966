/// Ways in which the fixture module can misbehave.
#ifndef VARNO_TESTS_HOST_FIXTUREFAULTS_H
#define VARNO_TESTS_HOST_FIXTUREFAULTS_H

#include <atomic>

namespace varno::fixture {

enum class Fault {
    kNone,
    // The module.
    kStartupFails,
    kRegistrationFails,
    kNoDefinition,
    kKeepsPropertyMap,
    kDescribesNoManufacturer,
    kDescribesEffectTwice,
    // The data model's life.
    kMakesNoDataModel,
    kDataModelHasNoInterface,
    kInitializationFails,
    kTracesAtInitialization,
    kAssertsAtInitialization,
    kKeepsHost,
    kReleasesHostTwice,
    kKeepsDataModel,
    // Its calls.
    kPostsToUnknownField,
    kPostsWrongSize,
    kPostsNothingForBypass,
    kPostsFromAnotherThread,
    kPostsOnAudioThread,
    kRequestsUnknownParameter,
    kRequestsInvalidValue,
    kUnregistersUnknownParameter,
    kGenerateFails,
    kRefusesUpdates,
    kRefusesRestoredValue, ///< One above 0.9.
    // The editor.
    kMakesNoEditor,
    kEditorInitializationFails,
};

/// How the module misbehaves now.
inline std::atomic<Fault> gFault{Fault::kNone};

/// Makes the module misbehave in one way for as long as this lives; scopes do not nest.
class FaultScope {
public:
    explicit FaultScope(Fault fault) { gFault = fault; }
    FaultScope(const FaultScope&) = delete;
    FaultScope& operator=(const FaultScope&) = delete;
    ~FaultScope() { gFault = Fault::kNone; }
};

/// Whether the module shall misbehave in this way now.
inline bool has(Fault fault) {
    return gFault == fault;
}

} // namespace varno::fixture

#endif
