/// The interfaces by which screen readers ask about a part.
#ifndef VARNO_SURROUND_ACCESS_ACCESSINTERFACES_H
#define VARNO_SURROUND_ACCESS_ACCESSINTERFACES_H

#include "Surround/Access/AccessModel.h"
#include "Surround/Access/BusContext.h"

#include <string_view>
#include <vector>

namespace varno {

namespace access {

inline constexpr const char* kAccessible = "org.a11y.atspi.Accessible";
inline constexpr const char* kApplication = "org.a11y.atspi.Application";
inline constexpr const char* kComponent = "org.a11y.atspi.Component";
inline constexpr const char* kValue = "org.a11y.atspi.Value";
inline constexpr const char* kAction = "org.a11y.atspi.Action";
inline constexpr const char* kText = "org.a11y.atspi.Text";
inline constexpr const char* kEditableText = "org.a11y.atspi.EditableText";
inline constexpr const char* kCache = "org.a11y.atspi.Cache";

} // namespace access

/// A role on the accessibility bus.
struct AccessRoleEntry {
    guint32 number;
    const char* name;
};

/// The role of a part on the bus. [any]
AccessRoleEntry accessRole(AccessRole role);
inline constexpr AccessRoleEntry kApplicationRole{75, "application"};

/// The interfaces of a part, of the application for null. [any]
std::vector<const char*> accessInterfaces(const AccessNode* node);

/// The methods and properties of all interfaces. [any]
GLibPtr<GDBusNodeInfo> describeAccessInterfaces();

} // namespace varno

#endif
