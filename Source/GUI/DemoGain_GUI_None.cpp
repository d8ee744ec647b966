// An effect without an editor, for binaries that must not depend on a display: linked instead of the editor.
#include "AAX_IEffectGUI.h"
#include "GUI/DemoGain_EditorProcedure.h"

namespace {

AAX_IEffectGUI* CreateNone() {
    return nullptr;
}

} // namespace

void* DemoGain_EditorProcedure() {
    return reinterpret_cast<void*>(&CreateNone);
}
