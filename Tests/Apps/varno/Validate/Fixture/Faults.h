/// What is wrong with a plug-in that a check must find.
#ifndef VARNO_TESTS_APPS_VARNO_VALIDATE_FIXTURE_FAULTS_H
#define VARNO_TESTS_APPS_VARNO_VALIDATE_FIXTURE_FAULTS_H

namespace varno::fixture {

enum class Planted {
    kNothing,
    // When it is loaded and describes itself.
    kLeavesThread,
    kLeavesHandler,
    kSetsVariable,
    kSetsLocale,
    kLeavesDescriptor,
    kLeavesMemory,
    kTakesLong,
    kNeedsDisplay,
    // The description.
    kHasNoName,
    kHasNoManufacturer,
    kDescribesVariantTwice,
    kChangesItsName,
    kHasParameterTwice,
    kHasNamelessParameter,
    kStartsElsewhere,
    kPostsNoPacket,
    kPostsToOtherField,
    kThrowsWhenDescribed, ///< The host, through a function that lets nothing through.
    kDescribesWithoutMemory,
    // Its life.
    kLosesMemoryPerInstance,
    kKeepsItself,
    kCrashesInSecondLife,
    kHangsInSecondLife,
    kCrashesBeforeItsLife,
    kCrashesInAnOrder,
    kNeedsTransport,
    kNeedsTwoServices,
    kThrows,
    kIgnoresFailedAllocation,
    kCrashesWhenCalledBack, ///< Saving while a state is restored.
    // Its parameters and state.
    kKnowsEveryParameter,
    kNeedsAnIdentifier,
    kTakesEveryChunk,
    kLosesRefusedChunks,
    // Its sound.
    kDependsOnBuffers,
    kNeedsOwnOutputs, ///< Each channel is read after another one was written.
    kIgnoresBypass,
    kClicks, ///< Where a value changes.
};

// Of this binary. Defined in Fault.cpp, which is compiled once for each.

/// What is wrong with it.
extern const Planted kPlanted;
/// Null where it has no editor, or what makes one.
extern void* (*const kEditorProcedure)();
/// Null, or to be called at each buffer.
extern void (*const kCountBuffer)();

/// FixtureEditor.cpp.
void* fixtureEditorProcedure();
void countFixtureBuffer();

} // namespace varno::fixture

#endif
