// Compiled once for each fixture, with its fault in FIXTURE_FAULT.
#include "Tests/Apps/varno/Validate/Fixture/Faults.h"

namespace varno::fixture {

const Planted kPlanted = Planted::FIXTURE_FAULT;
#ifdef FIXTURE_EDITOR
void* (*const kEditorProcedure)() = fixtureEditorProcedure;
void (*const kCountBuffer)() = countFixtureBuffer;
#else
void* (*const kEditorProcedure)() = nullptr;
void (*const kCountBuffer)() = nullptr;
#endif

} // namespace varno::fixture

// Exported where the fixture's linker options have it so.
extern "C" [[gnu::visibility("default"), gnu::used]] int varnoLeakedFunction() {
    return 0;
}

#ifdef FIXTURE_TEXT_RELOCATION
// An address in the code, which the loader must write there.
asm(".text\n .quad varnoLeakedFunction\n .previous\n");
#endif
