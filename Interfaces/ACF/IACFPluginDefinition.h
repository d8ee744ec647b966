/// The host's record of a described module.
#ifndef VARNO_INTERFACES_ACF_IACFPLUGINDEFINITION_H
#define VARNO_INTERFACES_ACF_IACFPLUGINDEFINITION_H

#include "ACF/IACFUnknown.h"

/// What registration returns: the host object that holds the description. A module only passes it on; its
/// operations, if any, are between the host and itself.
class IACFPluginDefinition : public IACFUnknown {
protected:
    ~IACFPluginDefinition() = default;
};

#endif
