// The declarations of this tree.
#include "CLAP/Clap/ContextMenu.h"
#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Gui.h"
#include "CLAP/Clap/ParamIndication.h"
#include "CLAP/Clap/Plugin.h"
#include "CLAP/Clap/Presets.h"
#include "Tests/Formats/CLAP/LayoutRows.h"

varno::test::ClapLayout varno::test::ownLayout() {
    return layoutOfIncluded();
}
