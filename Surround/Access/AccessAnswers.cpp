#include "Surround/Access/AccessAnswers.h"

#include "Surround/Access/AccessInterfaces.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace varno {
namespace {

constexpr std::string_view kFolder = "/org/a11y/atspi/accessible/";
constexpr std::string_view kRoot = "root";
constexpr const char* kNoObject = "/org/a11y/atspi/null";
// All texts are English.
constexpr const char* kLocale = "en";
// Versions of the interfaces as others report them.
constexpr const char* kInterfacesVersion = "2.1";

enum Coordinates : guint32 { kScreen, kInWindow, kInParent };
constexpr guint32 kLayerWidget = 3;
constexpr guint32 kLayerWindow = 7;

[[noreturn]] void refuse(const std::string& reason) {
    throw AccessRefusal(reason);
}

GVariant* single(GVariant* value) {
    return g_variant_new_tuple(&value, 1);
}

GVariant* referenceTo(const std::string& owner, const std::string& path) {
    return g_variant_new("(so)", owner.c_str(), path.c_str());
}

GVariant* noReference() {
    return referenceTo({}, kNoObject);
}

// Two words of 32 states each.
GVariant* stateWords(const AccessStateSet& states) {
    const guint64 all = states.to_ullong();
    const guint32 words[] = {static_cast<guint32>(all), static_cast<guint32>(all >> 32)};
    return g_variant_new_fixed_array(G_VARIANT_TYPE_UINT32, words, std::size(words), sizeof(guint32));
}

AccessRoleEntry roleOf(const AccessNode* node) {
    return node == nullptr ? kApplicationRole : accessRole(node->role);
}

AccessStateSet statesOf(const AccessNode* node) {
    return node == nullptr ? AccessStateSet() : accessStates(*node);
}

GVariant* interfacesOf(const AccessNode* node) {
    const std::vector<const char*> names = accessInterfaces(node);
    return g_variant_new_strv(names.data(), static_cast<gssize>(names.size()));
}

// Screen readers of earlier releases look for the value's text among the attributes.
GVariant* attributesOf(const AccessNode* node) {
    GVariantBuilder attributes;
    g_variant_builder_init(&attributes, G_VARIANT_TYPE("a{ss}"));
    if (node != nullptr && !node->valueText.empty()) {
        g_variant_builder_add(&attributes, "{s@s}", "valuetext", busText(node->valueText));
    }
    return g_variant_builder_end(&attributes);
}

GVariant* rectangleValue(const AccessRectangle& rectangle) {
    return g_variant_new("((iiii))", rectangle.x, rectangle.y, rectangle.width, rectangle.height);
}

// Characters `start` to `end` of a text; an end below 0 is that of the text.
std::string charactersOf(const std::string& text, int start, int end) {
    gchar* const valid = g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size()));
    const auto length = static_cast<int>(g_utf8_strlen(valid, -1));
    const int last = end < 0 ? length : std::min(end, length);
    const int first = std::clamp(start, 0, last);
    gchar* const part = g_utf8_substring(valid, first, last);
    std::string characters(part);
    g_free(part);
    g_free(valid);
    return characters;
}

GVariant* getValue(const AccessNode& node, std::string_view property) {
    if (property == "Text") {
        return busText(node.valueText);
    }
    if (property == "MinimumValue") {
        return g_variant_new_double(node.range->minimum);
    }
    if (property == "MaximumValue") {
        return g_variant_new_double(node.range->maximum);
    }
    return g_variant_new_double(property == "MinimumIncrement" ? node.range->step : node.range->current);
}

} // namespace

GVariant* busText(const std::string& text) {
    return g_variant_new_take_string(g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())));
}

AccessAnswers::AccessAnswers(std::string applicationName, AccessWindow& window, const AccessTree& tree,
                             std::function<void()> refresh)
    : mApplicationName(std::move(applicationName)),
      mWindow(window),
      mTree(tree),
      mRefresh(std::move(refresh)) {
}

std::string AccessAnswers::pathOf(AccessNumber part) {
    return std::string(kFolder) + (part == kAccessApplication ? std::string(kRoot) : std::to_string(part));
}

std::optional<AccessNumber> AccessAnswers::partOf(std::string_view path) const {
    const std::string_view name = path.substr(std::min(path.rfind('/') + 1, path.size()));
    AccessNumber part = kAccessApplication;
    if (name == kRoot) {
        return part;
    }
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), part);
    const bool isNumber = error == std::errc() && end == name.data() + name.size();
    return isNumber && mTree.find(part) != nullptr ? std::optional(part) : std::nullopt;
}

const AccessNode* AccessAnswers::nodeOf(AccessNumber part) const {
    const AccessEntry* const entry = mTree.find(part);
    return entry == nullptr ? nullptr : entry->node;
}

const AccessNode& AccessAnswers::requireNode(AccessNumber part) const {
    const AccessNode* const node = nodeOf(part);
    if (node == nullptr) {
        refuse("the application has no such property");
    }
    return *node;
}

GVariant* AccessAnswers::reference(AccessNumber part) const {
    return referenceTo(mOwner, pathOf(part));
}

GVariant* AccessAnswers::parentOf(AccessNumber part) const {
    if (part != kAccessApplication) {
        return reference(mTree.find(part)->parent);
    }
    return mParent.owner.empty() ? noReference() : referenceTo(mParent.owner, mParent.path);
}

GVariant* AccessAnswers::call(AccessNumber part, std::string_view interface, std::string_view method,
                              GVariant* arguments) {
    if (interface == access::kAccessible) {
        return callAccessible(part, method, arguments);
    }
    if (interface == access::kApplication) {
        return g_variant_new("(s)", kLocale); // GetLocale
    }
    if (interface == access::kComponent) {
        return callComponent(part, method, arguments);
    }
    if (interface == access::kAction) {
        return callAction(part, method, arguments);
    }
    return callText(part, method, arguments);
}

GVariant* AccessAnswers::callAccessible(AccessNumber part, std::string_view method, GVariant* arguments) {
    const AccessNode* const node = nodeOf(part);
    if (method == "GetChildAtIndex") {
        gint32 index = 0;
        g_variant_get(arguments, "(i)", &index);
        return single(childAt(part, index));
    }
    if (method == "GetChildren") {
        return single(children(part));
    }
    if (method == "GetIndexInParent") {
        return g_variant_new("(i)", node == nullptr ? -1 : mTree.find(part)->index);
    }
    if (method == "GetRelationSet") {
        return g_variant_new("(a(ua(so)))", nullptr);
    }
    if (method == "GetRole") {
        return g_variant_new("(u)", roleOf(node).number);
    }
    if (method == "GetState") {
        return single(stateWords(statesOf(node)));
    }
    if (method == "GetAttributes") {
        return single(attributesOf(node));
    }
    if (method == "GetApplication") {
        return single(reference(kAccessApplication));
    }
    if (method == "GetInterfaces") {
        return single(interfacesOf(node));
    }
    return g_variant_new("(s)", roleOf(node).name); // GetRoleName, GetLocalizedRoleName
}

GVariant* AccessAnswers::childAt(AccessNumber part, int index) const {
    const std::vector<AccessNumber> parts = mTree.childrenOf(part);
    return index < 0 || static_cast<std::size_t>(index) >= parts.size()
               ? noReference()
               : reference(parts[static_cast<std::size_t>(index)]);
}

GVariant* AccessAnswers::children(AccessNumber part) const {
    GVariantBuilder references;
    g_variant_builder_init(&references, G_VARIANT_TYPE("a(so)"));
    for (const AccessNumber child : mTree.childrenOf(part)) {
        g_variant_builder_add_value(&references, reference(child));
    }
    return g_variant_builder_end(&references);
}

AccessRectangle AccessAnswers::extents(AccessNumber part, guint32 coordinates) const {
    const AccessEntry& entry = *mTree.find(part);
    AccessRectangle rectangle = entry.node->rectangle;
    const AccessNode* origin = nullptr;
    if (coordinates == kInWindow) {
        origin = nodeOf(mTree.childrenOf(kAccessApplication).front());
    } else if (coordinates == kInParent) {
        origin = nodeOf(entry.parent);
    } else if (coordinates != kScreen) {
        refuse("no such kind of coordinates");
    }
    if (origin != nullptr) {
        rectangle.x -= origin->rectangle.x;
        rectangle.y -= origin->rectangle.y;
    }
    return rectangle;
}

AccessNumber AccessAnswers::partAt(AccessNumber part, int x, int y) const {
    const std::vector<AccessNumber> parts = mTree.childrenOf(part);
    const auto found = std::ranges::find_if(parts, [&](AccessNumber child) {
        const AccessNode& node = *nodeOf(child);
        return node.states.isShowing && node.rectangle.contains(x, y);
    });
    return found == parts.end() ? part : partAt(*found, x, y);
}

GVariant* AccessAnswers::callComponent(AccessNumber part, std::string_view method, GVariant* arguments) {
    const AccessNode& node = requireNode(part);
    if (method == "Contains" || method == "GetAccessibleAtPoint") {
        gint32 x = 0;
        gint32 y = 0;
        guint32 coordinates = 0;
        g_variant_get(arguments, "(iiu)", &x, &y, &coordinates);
        const AccessRectangle rectangle = extents(part, coordinates);
        const bool isWithin = rectangle.contains(x, y);
        if (method == "Contains") {
            return g_variant_new("(b)", isWithin ? TRUE : FALSE);
        }
        const int screenX = x - rectangle.x + node.rectangle.x;
        const int screenY = y - rectangle.y + node.rectangle.y;
        return single(isWithin ? reference(partAt(part, screenX, screenY)) : noReference());
    }
    if (method == "GetExtents" || method == "GetPosition") {
        guint32 coordinates = 0;
        g_variant_get(arguments, "(u)", &coordinates);
        const AccessRectangle rectangle = extents(part, coordinates);
        return method == "GetExtents" ? rectangleValue(rectangle)
                                      : g_variant_new("(ii)", rectangle.x, rectangle.y);
    }
    if (method == "GetSize") {
        return g_variant_new("(ii)", node.rectangle.width, node.rectangle.height);
    }
    if (method == "GetLayer") {
        return g_variant_new("(u)", node.role == AccessRole::kWindow ? kLayerWindow : kLayerWidget);
    }
    if (method == "GetMDIZOrder") {
        return g_variant_new("(n)", 0);
    }
    if (method == "GetAlpha") {
        return g_variant_new("(d)", 1.0);
    }
    const std::string id = node.id; // GrabFocus
    return changed(node.states.isFocusable && mWindow.grabFocus(id));
}

GVariant* AccessAnswers::callAction(AccessNumber part, std::string_view method, GVariant* arguments) {
    const AccessNode& node = requireNode(part);
    if (method == "GetActions") {
        GVariantBuilder actions;
        g_variant_builder_init(&actions, G_VARIANT_TYPE("a(sss)"));
        g_variant_builder_add(&actions, "(@sss)", busText(node.action), "", "");
        return single(g_variant_builder_end(&actions));
    }
    gint32 index = 0;
    g_variant_get(arguments, "(i)", &index);
    if (index != 0) {
        refuse("there is one action, number 0");
    }
    if (method == "DoAction") {
        const std::string id = node.id;
        return changed(node.states.isEnabled && mWindow.press(id));
    }
    if (method == "GetName" || method == "GetLocalizedName") {
        return single(busText(node.action));
    }
    return g_variant_new("(s)", ""); // GetDescription, GetKeyBinding
}

GVariant* AccessAnswers::callText(AccessNumber part, std::string_view method, GVariant* arguments) {
    const AccessNode& node = requireNode(part);
    if (method == "GetText") {
        gint32 start = 0;
        gint32 end = 0;
        g_variant_get(arguments, "(ii)", &start, &end);
        return single(busText(charactersOf(node.valueText, start, end)));
    }
    if (method == "GetNSelections") {
        return g_variant_new("(i)", 0);
    }
    const gchar* text = nullptr; // SetTextContents
    g_variant_get(arguments, "(&s)", &text);
    const std::string id = node.id;
    return changed(node.states.isEnabled && mWindow.setValueText(id, text));
}

GVariant* AccessAnswers::changed(bool isDone) {
    mRefresh();
    return g_variant_new("(b)", isDone ? TRUE : FALSE);
}

GVariant* AccessAnswers::get(AccessNumber part, std::string_view interface, std::string_view property) {
    if (interface == access::kAccessible) {
        return getAccessible(part, property);
    }
    if (interface == access::kApplication) {
        return getApplication(property);
    }
    const AccessNode& node = requireNode(part);
    if (interface == access::kValue) {
        return getValue(node, property);
    }
    if (interface == access::kAction) {
        return g_variant_new_int32(1); // NActions
    }
    const auto length = static_cast<gint32>(g_utf8_strlen(charactersOf(node.valueText, 0, -1).c_str(), -1));
    return g_variant_new_int32(property == "CharacterCount" ? length : 0);
}

GVariant* AccessAnswers::getAccessible(AccessNumber part, std::string_view property) const {
    const AccessNode* const node = nodeOf(part);
    if (property == "Name") {
        return busText(node == nullptr ? mApplicationName : node->name);
    }
    if (property == "Description") {
        return busText(node == nullptr ? std::string() : node->description);
    }
    if (property == "AccessibleId") {
        return busText(node == nullptr ? std::string() : node->id);
    }
    if (property == "Parent") {
        return parentOf(part);
    }
    if (property == "ChildCount") {
        return g_variant_new_int32(static_cast<gint32>(mTree.childrenOf(part).size()));
    }
    return g_variant_new_string(kLocale);
}

GVariant* AccessAnswers::getApplication(std::string_view property) const {
    if (property == "Id") {
        return g_variant_new_int32(mApplicationID);
    }
    if (property == "InterfaceVersion") {
        return g_variant_new_uint32(1);
    }
    return property == "ToolkitName" ? busText(mApplicationName) : g_variant_new_string(kInterfacesVersion);
}

void AccessAnswers::set(AccessNumber part, std::string_view interface, std::string_view /*property*/,
                        GVariant* value) {
    if (interface == access::kApplication) {
        mApplicationID = g_variant_get_int32(value);
        return;
    }
    const AccessNode& node = requireNode(part); // CurrentValue
    const double number = g_variant_get_double(value);
    if (!std::isfinite(number)) {
        refuse("the value is not a number");
    }
    if (node.role == AccessRole::kLevelBar || !node.states.isEnabled) {
        refuse("the value cannot be set");
    }
    const std::string id = node.id;
    const bool isSet = mWindow.setValue(id, std::clamp(number, node.range->minimum, node.range->maximum));
    mRefresh();
    if (!isSet) {
        refuse("the value was not taken");
    }
}

GVariant* AccessAnswers::cacheItem(AccessNumber part) const {
    const AccessNode* const node = nodeOf(part);
    GVariant* const values[] = {reference(part),
                                reference(kAccessApplication),
                                parentOf(part),
                                g_variant_new_int32(node == nullptr ? -1 : mTree.find(part)->index),
                                g_variant_new_int32(static_cast<gint32>(mTree.childrenOf(part).size())),
                                interfacesOf(node),
                                busText(node == nullptr ? mApplicationName : node->name),
                                g_variant_new_uint32(roleOf(node).number),
                                busText(node == nullptr ? std::string() : node->description),
                                stateWords(statesOf(node))};
    return g_variant_new_tuple(values, std::size(values));
}

GVariant* AccessAnswers::cacheItems() const {
    GVariantBuilder items;
    g_variant_builder_init(&items, G_VARIANT_TYPE("a((so)(so)(so)iiassusau)"));
    g_variant_builder_add_value(&items, cacheItem(kAccessApplication));
    for (const auto& [part, entry] : mTree.entries()) {
        g_variant_builder_add_value(&items, cacheItem(part));
    }
    return single(g_variant_builder_end(&items));
}

} // namespace varno
