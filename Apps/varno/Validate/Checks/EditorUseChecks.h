/// Checks of an editor that is used, and of its end.
#ifndef VARNO_APPS_VARNO_VALIDATE_CHECKS_EDITORUSECHECKS_H
#define VARNO_APPS_VARNO_VALIDATE_CHECKS_EDITORUSECHECKS_H

#include "Validate/Check.h"

namespace varno::validate {

/// Opened on a new instance, then sound.
void checkEditorBeforeSound(Context& context);
/// Opened on an instance that is not active.
void checkEditorBeforePreparing(Context& context);
/// Another thread processes and sets parameters meanwhile.
void checkEditorRunning(Context& context);
/// Clicks, drags and keys.
void checkEditorInput(Context& context);
/// Closed at every kind of event.
void checkEditorClosing(Context& context);
/// The instance ends first.
void checkEditorInstanceEnds(Context& context);
/// The display is lost.
void checkEditorLostServer(Context& context);

} // namespace varno::validate

#endif
