#include "Surround/Access/AccessInterfaces.h"

#include <algorithm>

namespace varno {
namespace {

constexpr const char kDescription[] = R"xml(<node>
<interface name="org.a11y.atspi.Accessible">
 <property name="Name" type="s" access="read"/>
 <property name="Description" type="s" access="read"/>
 <property name="Parent" type="(so)" access="read"/>
 <property name="ChildCount" type="i" access="read"/>
 <property name="Locale" type="s" access="read"/>
 <property name="AccessibleId" type="s" access="read"/>
 <method name="GetChildAtIndex"><arg type="i" direction="in"/><arg type="(so)" direction="out"/></method>
 <method name="GetChildren"><arg type="a(so)" direction="out"/></method>
 <method name="GetIndexInParent"><arg type="i" direction="out"/></method>
 <method name="GetRelationSet"><arg type="a(ua(so))" direction="out"/></method>
 <method name="GetRole"><arg type="u" direction="out"/></method>
 <method name="GetRoleName"><arg type="s" direction="out"/></method>
 <method name="GetLocalizedRoleName"><arg type="s" direction="out"/></method>
 <method name="GetState"><arg type="au" direction="out"/></method>
 <method name="GetAttributes"><arg type="a{ss}" direction="out"/></method>
 <method name="GetApplication"><arg type="(so)" direction="out"/></method>
 <method name="GetInterfaces"><arg type="as" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.Application">
 <property name="ToolkitName" type="s" access="read"/>
 <property name="Version" type="s" access="read"/>
 <property name="ToolkitVersion" type="s" access="read"/>
 <property name="AtspiVersion" type="s" access="read"/>
 <property name="InterfaceVersion" type="u" access="read"/>
 <property name="Id" type="i" access="readwrite"/>
 <method name="GetLocale"><arg type="u" direction="in"/><arg type="s" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.Component">
 <method name="Contains">
  <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="in"/>
  <arg type="b" direction="out"/>
 </method>
 <method name="GetAccessibleAtPoint">
  <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="in"/>
  <arg type="(so)" direction="out"/>
 </method>
 <method name="GetExtents"><arg type="u" direction="in"/><arg type="(iiii)" direction="out"/></method>
 <method name="GetPosition">
  <arg type="u" direction="in"/><arg type="i" direction="out"/><arg type="i" direction="out"/>
 </method>
 <method name="GetSize"><arg type="i" direction="out"/><arg type="i" direction="out"/></method>
 <method name="GetLayer"><arg type="u" direction="out"/></method>
 <method name="GetMDIZOrder"><arg type="n" direction="out"/></method>
 <method name="GetAlpha"><arg type="d" direction="out"/></method>
 <method name="GrabFocus"><arg type="b" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.Value">
 <property name="MinimumValue" type="d" access="read"/>
 <property name="MaximumValue" type="d" access="read"/>
 <property name="MinimumIncrement" type="d" access="read"/>
 <property name="CurrentValue" type="d" access="readwrite"/>
 <property name="Text" type="s" access="read"/>
</interface>
<interface name="org.a11y.atspi.Action">
 <property name="NActions" type="i" access="read"/>
 <method name="GetName"><arg type="i" direction="in"/><arg type="s" direction="out"/></method>
 <method name="GetLocalizedName"><arg type="i" direction="in"/><arg type="s" direction="out"/></method>
 <method name="GetDescription"><arg type="i" direction="in"/><arg type="s" direction="out"/></method>
 <method name="GetKeyBinding"><arg type="i" direction="in"/><arg type="s" direction="out"/></method>
 <method name="GetActions"><arg type="a(sss)" direction="out"/></method>
 <method name="DoAction"><arg type="i" direction="in"/><arg type="b" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.Text">
 <property name="CharacterCount" type="i" access="read"/>
 <property name="CaretOffset" type="i" access="read"/>
 <method name="GetText">
  <arg type="i" direction="in"/><arg type="i" direction="in"/><arg type="s" direction="out"/>
 </method>
 <method name="GetNSelections"><arg type="i" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.EditableText">
 <method name="SetTextContents"><arg type="s" direction="in"/><arg type="b" direction="out"/></method>
</interface>
<interface name="org.a11y.atspi.Cache">
 <method name="GetItems"><arg type="a((so)(so)(so)iiassusau)" direction="out"/></method>
 <signal name="AddAccessible"><arg type="((so)(so)(so)iiassusau)"/></signal>
 <signal name="RemoveAccessible"><arg type="(so)"/></signal>
</interface>
</node>)xml";

struct RoleRow {
    AccessRole role;
    AccessRoleEntry entry;
};

constexpr RoleRow kRoles[] = {
    {AccessRole::kWindow, {23, "frame"}},
    {AccessRole::kPanel, {39, "panel"}},
    {AccessRole::kLabel, {29, "label"}},
    {AccessRole::kPushButton, {43, "push button"}},
    {AccessRole::kToggleButton, {62, "toggle button"}},
    {AccessRole::kCheckBox, {7, "check box"}},
    {AccessRole::kRadioButton, {44, "radio button"}},
    {AccessRole::kComboBox, {11, "combo box"}},
    {AccessRole::kSlider, {51, "slider"}},
    {AccessRole::kDial, {15, "dial"}},
    {AccessRole::kEntry, {79, "entry"}},
    {AccessRole::kLevelBar, {103, "level bar"}},
    {AccessRole::kStatusBar, {54, "status bar"}},
};

} // namespace

AccessRoleEntry accessRole(AccessRole role) {
    return std::ranges::find(kRoles, role, &RoleRow::role)->entry;
}

std::vector<const char*> accessInterfaces(const AccessNode* node) {
    if (node == nullptr) {
        return {access::kAccessible, access::kApplication};
    }
    std::vector<const char*> interfaces{access::kAccessible, access::kComponent};
    if (node->range) {
        interfaces.push_back(access::kValue);
    }
    if (!node->action.empty()) {
        interfaces.push_back(access::kAction);
    }
    // Readers find in the text of such a box what is chosen.
    if (node->isTextSettable || node->role == AccessRole::kComboBox) {
        interfaces.push_back(access::kText);
    }
    if (node->isTextSettable) {
        interfaces.push_back(access::kEditableText);
    }
    return interfaces;
}

GLibPtr<GDBusNodeInfo> describeAccessInterfaces() {
    return GLibPtr<GDBusNodeInfo>(g_dbus_node_info_new_for_xml(kDescription, nullptr));
}

} // namespace varno
