/// The host's record of a component registered by itself.
#ifndef VARNO_INTERFACES_ACF_IACFCOMPONENTDEFINITION_H
#define VARNO_INTERFACES_ACF_IACFCOMPONENTDEFINITION_H

#include "ACF/IACFUnknown.h"

/// Named by the entry point that registers separate components; this module registers none.
class IACFComponentDefinition : public IACFUnknown {
protected:
    ~IACFComponentDefinition() = default;
};

#endif
