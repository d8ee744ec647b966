/// The editor as the effect's description names it, without the library that it is drawn with.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_EDITORPROCEDURE_H
#define VARNO_SOURCE_GUI_DEMOGAIN_EDITORPROCEDURE_H

/// The procedure by which a host makes the editor: DemoGain_GUI::Create, or one that always returns null in a
/// binary that is linked without the editor. [any]
void* DemoGain_EditorProcedure();

#endif
