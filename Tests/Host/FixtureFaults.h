/// Ways in which the fixture module can misbehave.
#ifndef VARNO_TESTS_HOST_FIXTUREFAULTS_H
#define VARNO_TESTS_HOST_FIXTUREFAULTS_H

namespace varno::fixture {

enum class Fault {
    None,
    // The module.
    StartupFails,
    RegistrationFails,
    NoDefinition,
    KeepsPropertyMap,
    DescribesNoManufacturer,
    // The data model's life.
    MakesNoDataModel,
    DataModelHasNoInterface,
    InitializationFails,
    TracesAtInitialization,
    AssertsAtInitialization,
    KeepsHost,
    ReleasesHostTwice,
    KeepsDataModel,
    // Its calls.
    PostsToUnknownField,
    PostsWrongSize,
    PostsNothingForBypass,
    PostsFromAnotherThread,
    PostsOnAudioThread,
    RequestsUnknownParameter,
    RequestsInvalidValue,
    UnregistersUnknownParameter,
    GenerateFails,
    RefusesUpdates,
    RefusesRestoredValue, ///< One above 0.9.
    // The editor.
    MakesNoEditor,
    EditorInitializationFails,
};

/// Makes the module misbehave in one way for as long as this lives; scopes do not nest.
class FaultScope {
public:
    explicit FaultScope(Fault fault);
    FaultScope(const FaultScope&) = delete;
    FaultScope& operator=(const FaultScope&) = delete;
    ~FaultScope();
};

/// Whether the module shall misbehave in this way now.
bool has(Fault fault);

} // namespace varno::fixture

#endif
