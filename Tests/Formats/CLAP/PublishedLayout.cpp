// The published declarations.
#include <clap/clap.h>

#include "Tests/Formats/CLAP/LayoutRows.h"

varno::test::ClapLayout varno::test::publishedLayout() {
    return layoutOfIncluded();
}
