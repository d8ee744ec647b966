/// Who hears what a module asks of the host's automation.
#ifndef VARNO_HOST_AUTOMATIONLISTENER_H
#define VARNO_HOST_AUTOMATIONLISTENER_H

#include <string>

namespace varno {

/// Told of every call that the host's automation delegate has accepted, within that call: a front end whose
/// own host keeps the values hands it on. Must not throw. [main]
class AutomationListener {
public:
    virtual ~AutomationListener() = default;
    /// The module wants a parameter to have this value, 0 to 1. What the host itself wants is not told.
    virtual void valueRequested(const std::string& id, double normalized) = 0;
    /// A gesture on a parameter begins or ends; several may overlap.
    virtual void touched(const std::string& id) = 0;
    virtual void released(const std::string& id) = 0;
};

} // namespace varno

#endif
