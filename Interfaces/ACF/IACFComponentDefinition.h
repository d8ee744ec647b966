/// The host's record of a component registered by itself.
#ifndef IACFCOMPONENTDEFINITION_H
#define IACFCOMPONENTDEFINITION_H

#include "ACF/IACFUnknown.h"

/// Named by the entry point that registers separate components; this module registers none.
class IACFComponentDefinition : public IACFUnknown {
protected:
    ~IACFComponentDefinition() = default;
};

#endif
