#include "Surround/Access/AccessObjects.h"

#include "Surround/Access/AccessInterfaces.h"

#include <algorithm>
#include <cstring>
#include <exception>

namespace varno {
namespace {

constexpr const char* kTreePath = "/org/a11y/atspi/accessible";
constexpr const char* kCachePath = "/org/a11y/atspi/cache";
constexpr const char* kRegistry = "org.a11y.atspi.Registry";
constexpr const char* kObjectEvent = "org.a11y.atspi.Event.Object";
constexpr const char* kWindowEvent = "org.a11y.atspi.Event.Window";

constexpr BusMethod kEmbed{kRegistry, "/org/a11y/atspi/accessible/root", "org.a11y.atspi.Socket", "Embed",
                           "((so))"};

// The name of a state in events.
const char* stateName(std::size_t state) {
    switch (static_cast<AccessState>(state)) {
    case AccessState::kActive:
        return "active";
    case AccessState::kChecked:
        return "checked";
    case AccessState::kEditable:
        return "editable";
    case AccessState::kEnabled:
        return "enabled";
    case AccessState::kFocusable:
        return "focusable";
    case AccessState::kFocused:
        return "focused";
    case AccessState::kPressed:
        return "pressed";
    case AccessState::kSensitive:
        return "sensitive";
    case AccessState::kShowing:
        return "showing";
    case AccessState::kSingleLine:
        return "single-line";
    case AccessState::kVisible:
        return "visible";
    case AccessState::kCheckable:
        return "checkable";
    case AccessState::kHasPopup:
        return "has-popup";
    case AccessState::kReadOnly:
        return "read-only";
    }
    return "";
}

GVariant* noValue() {
    return g_variant_new_int32(0);
}

void setError(GError** error, const char* reason) {
    g_set_error_literal(error, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS, reason);
}

constexpr const char* kGone = "there is no such part any more";

} // namespace

AccessObjects::AccessObjects(BusContext& context, GDBusConnection* connection, AccessAnswers& answers)
    : mContext(context),
      mConnection(connection),
      mAnswers(answers),
      mInterfaces(describeAccessInterfaces()) {
    mAnswers.setOwner(g_dbus_connection_get_unique_name(connection));
    const BusContext::Scope scope(mContext);
    registerObjects();
    mRegistryWatch = g_bus_watch_name_on_connection(
        mConnection, kRegistry, G_BUS_NAME_WATCHER_FLAGS_AUTO_START, &AccessObjects::onRegistryAppeared,
        &AccessObjects::onRegistryVanished, this, nullptr);
}

AccessObjects::~AccessObjects() {
    *mSelf = nullptr;
    g_bus_unwatch_name(mRegistryWatch);
    g_dbus_connection_unregister_object(mConnection, mCacheRegistration);
    g_dbus_connection_unregister_subtree(mConnection, mTreeRegistration);
    mAnswers.setParent({});
}

void AccessObjects::registerObjects() {
    static constexpr GDBusSubtreeVTable kTree{
        &AccessObjects::onEnumerate, &AccessObjects::onIntrospect, &AccessObjects::onDispatch, {}};
    static constexpr GDBusInterfaceVTable kCacheCalls{&AccessObjects::onCall, nullptr, nullptr, {}};
    mTreeRegistration = g_dbus_connection_register_subtree(
        mConnection, kTreePath, &kTree, G_DBUS_SUBTREE_FLAGS_DISPATCH_TO_UNENUMERATED_NODES, new Self(mSelf),
        &AccessObjects::onRelease, nullptr);
    mCacheRegistration = g_dbus_connection_register_object(
        mConnection, kCachePath, g_dbus_node_info_lookup_interface(mInterfaces.get(), access::kCache),
        &kCacheCalls, this, nullptr, nullptr);
}

void AccessObjects::embed() {
    GVariant* const own = mAnswers.reference(kAccessApplication);
    mContext.call(mConnection, kEmbed, g_variant_new_tuple(&own, 1), [self = mSelf](GVariant* reply) {
        if (*self != nullptr && reply != nullptr) {
            const gchar* owner = nullptr;
            const gchar* path = nullptr;
            g_variant_get(reply, "((&s&o))", &owner, &path);
            (*self)->mAnswers.setParent({owner, path});
        }
    });
}

void AccessObjects::onRegistryAppeared(GDBusConnection* /*connection*/, const gchar* /*name*/,
                                       const gchar* /*owner*/, gpointer data) {
    static_cast<AccessObjects*>(data)->embed();
}

void AccessObjects::onRegistryVanished(GDBusConnection* /*connection*/, const gchar* /*name*/,
                                       gpointer data) {
    static_cast<AccessObjects*>(data)->mAnswers.setParent({});
}

void AccessObjects::report(const std::vector<AccessChange>& changes) {
    using Kind = AccessChange::Kind;
    for (const AccessChange& change : changes) {
        const AccessNode* const node = mAnswers.nodeOf(change.part);
        switch (change.kind) {
        case Kind::kName:
            sendEvent(change.part, kObjectEvent, "PropertyChange", "accessible-name", 0, 0,
                      busText(node->name));
            if (node->role == AccessRole::kStatusBar && !node->name.empty()) {
                sendEvent(change.part, kObjectEvent, "Announcement", "", 1, 0, busText(node->name));
            }
            break;
        case Kind::kDescription:
            sendEvent(change.part, kObjectEvent, "PropertyChange", "accessible-description", 0, 0,
                      busText(node->description));
            break;
        case Kind::kValue:
            sendEvent(change.part, kObjectEvent, "PropertyChange", "accessible-value", 0, 0,
                      g_variant_new_double(node->range ? node->range->current : 0.0));
            break;
        case Kind::kState:
            reportState(change);
            break;
        case Kind::kAdded:
        case Kind::kRemoved:
            reportChild(change);
            break;
        }
    }
}

void AccessObjects::reportState(const AccessChange& change) {
    sendEvent(change.part, kObjectEvent, "StateChanged", stateName(change.state), change.isOn ? 1 : 0, 0,
              noValue());
    const AccessNode& node = *mAnswers.nodeOf(change.part);
    if (node.role == AccessRole::kWindow && static_cast<AccessState>(change.state) == AccessState::kActive) {
        sendEvent(change.part, kWindowEvent, change.isOn ? "Activate" : "Deactivate", "", 0, 0,
                  busText(node.name));
    }
}

void AccessObjects::reportChild(const AccessChange& change) {
    const bool isAdded = change.kind == AccessChange::Kind::kAdded;
    if (isAdded) {
        sendCacheSignal("AddAccessible", mAnswers.cacheItem(change.part));
    }
    sendEvent(change.place.parent, kObjectEvent, "ChildrenChanged", isAdded ? "add" : "remove",
              change.place.index, 0, mAnswers.reference(change.part));
    if (!isAdded) {
        sendCacheSignal("RemoveAccessible", mAnswers.reference(change.part));
    }
}

void AccessObjects::sendEvent(AccessNumber part, const char* interface, const char* name, const char* detail,
                              int first, int second, GVariant* value) {
    g_dbus_connection_emit_signal(mConnection, nullptr, AccessAnswers::pathOf(part).c_str(), interface, name,
                                  g_variant_new("(siiva{sv})", detail, first, second, value, nullptr),
                                  nullptr);
}

void AccessObjects::sendCacheSignal(const char* name, GVariant* argument) {
    g_dbus_connection_emit_signal(mConnection, nullptr, kCachePath, access::kCache, name,
                                  g_variant_new_tuple(&argument, 1), nullptr);
}

// The tree may have changed since GLib looked.
bool AccessObjects::offers(AccessNumber part, const char* interface) const {
    const std::vector<const char*> interfaces = accessInterfaces(mAnswers.nodeOf(part));
    return std::ranges::any_of(interfaces,
                               [&](const char* offered) { return std::strcmp(offered, interface) == 0; });
}

gchar** AccessObjects::onEnumerate(GDBusConnection* /*connection*/, const gchar* /*sender*/,
                                   const gchar* /*path*/, gpointer /*data*/) {
    return g_new0(gchar*, 1); // clients walk the tree by its own calls
}

GDBusInterfaceInfo** AccessObjects::onIntrospect(GDBusConnection* /*connection*/, const gchar* /*sender*/,
                                                 const gchar* /*path*/, const gchar* name, gpointer data) {
    const AccessObjects* const objects = **static_cast<Self*>(data);
    if (objects == nullptr || name == nullptr) {
        return nullptr;
    }
    const auto part = objects->mAnswers.partOf(name);
    if (!part) {
        return nullptr;
    }
    const std::vector<const char*> names = accessInterfaces(objects->mAnswers.nodeOf(*part));
    GDBusInterfaceInfo** const infos = g_new0(GDBusInterfaceInfo*, names.size() + 1);
    for (std::size_t i = 0; i < names.size(); ++i) {
        infos[i] = g_dbus_interface_info_ref(
            g_dbus_node_info_lookup_interface(objects->mInterfaces.get(), names[i]));
    }
    return infos;
}

const GDBusInterfaceVTable* AccessObjects::onDispatch(GDBusConnection* /*connection*/,
                                                      const gchar* /*sender*/, const gchar* /*path*/,
                                                      const gchar* /*interface*/, const gchar* /*name*/,
                                                      gpointer* outData, gpointer data) {
    static constexpr GDBusInterfaceVTable kPart{
        &AccessObjects::onCall, &AccessObjects::onGet, &AccessObjects::onSet, {}};
    *outData = **static_cast<Self*>(data); // which GLib forgets together with the registration
    return &kPart;
}

void AccessObjects::onRelease(gpointer data) {
    const std::unique_ptr<Self> released(static_cast<Self*>(data));
}

void AccessObjects::onCall(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* path,
                           const gchar* interface, const gchar* method, GVariant* arguments,
                           GDBusMethodInvocation* invocation, gpointer data) {
    try {
        static_cast<AccessObjects*>(data)->answer(invocation, path, interface, method, arguments);
    } catch (const std::exception& refusal) {
        g_dbus_method_invocation_return_error_literal(invocation, G_DBUS_ERROR, G_DBUS_ERROR_INVALID_ARGS,
                                                      refusal.what());
    }
}

void AccessObjects::answer(GDBusMethodInvocation* invocation, const gchar* path, const gchar* interface,
                           const gchar* method, GVariant* arguments) {
    if (std::strcmp(interface, access::kCache) == 0) {
        g_dbus_method_invocation_return_value(invocation, mAnswers.cacheItems());
        return;
    }
    const auto part = mAnswers.partOf(path);
    if (!part || !offers(*part, interface)) {
        throw AccessRefusal(kGone);
    }
    g_dbus_method_invocation_return_value(invocation, mAnswers.call(*part, interface, method, arguments));
}

GVariant* AccessObjects::onGet(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* path,
                               const gchar* interface, const gchar* property, GError** error, gpointer data) {
    auto& objects = *static_cast<AccessObjects*>(data);
    try {
        const auto part = objects.mAnswers.partOf(path);
        if (!part || !objects.offers(*part, interface)) {
            throw AccessRefusal(kGone);
        }
        return objects.mAnswers.get(*part, interface, property);
    } catch (const std::exception& refusal) {
        setError(error, refusal.what());
        return nullptr;
    }
}

gboolean AccessObjects::onSet(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* path,
                              const gchar* interface, const gchar* property, GVariant* value, GError** error,
                              gpointer data) {
    auto& objects = *static_cast<AccessObjects*>(data);
    try {
        const auto part = objects.mAnswers.partOf(path);
        if (!part || !objects.offers(*part, interface)) {
            throw AccessRefusal(kGone);
        }
        objects.mAnswers.set(*part, interface, property, value);
        return TRUE;
    } catch (const std::exception& refusal) {
        setError(error, refusal.what());
        return FALSE;
    }
}

} // namespace varno
