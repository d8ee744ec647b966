/// A window's parts as objects on the accessibility bus.
#ifndef VARNO_SURROUND_ACCESS_ACCESSOBJECTS_H
#define VARNO_SURROUND_ACCESS_ACCESSOBJECTS_H

#include "Surround/Access/AccessAnswers.h"
#include "Surround/Access/BusContext.h"

#include <memory>
#include <vector>

namespace varno {

/// Offers a tree on one connection, from construction to destruction: registers it with the registry of
/// applications, again where that one is restarted, answers calls and reports changes. [main]
class AccessObjects {
public:
    /// @param context, connection, answers outlive this object
    AccessObjects(BusContext& context, GDBusConnection* connection, AccessAnswers& answers);
    AccessObjects(const AccessObjects&) = delete;
    AccessObjects& operator=(const AccessObjects&) = delete;
    ~AccessObjects();

    /// Sends events about changes of the tree, which has been updated.
    void report(const std::vector<AccessChange>& changes);

private:
    using Self = std::shared_ptr<AccessObjects*>;

    void registerObjects();
    void embed();
    void reportState(const AccessChange& change);
    void reportChild(const AccessChange& change);
    /// @param value floating
    void sendEvent(AccessNumber part, const char* interface, const char* name, const char* detail, int first,
                   int second, GVariant* value);
    void sendCacheSignal(const char* name, GVariant* argument);
    bool offers(AccessNumber part, const char* interface) const;
    void answer(GDBusMethodInvocation* invocation, const gchar* path, const gchar* interface,
                const gchar* method, GVariant* arguments);

    static gchar** onEnumerate(GDBusConnection* connection, const gchar* sender, const gchar* path,
                               gpointer data);
    static GDBusInterfaceInfo** onIntrospect(GDBusConnection* connection, const gchar* sender,
                                             const gchar* path, const gchar* name, gpointer data);
    static const GDBusInterfaceVTable* onDispatch(GDBusConnection* connection, const gchar* sender,
                                                  const gchar* path, const gchar* interface,
                                                  const gchar* name, gpointer* outData, gpointer data);
    static void onRelease(gpointer data);
    static void onCall(GDBusConnection* connection, const gchar* sender, const gchar* path,
                       const gchar* interface, const gchar* method, GVariant* arguments,
                       GDBusMethodInvocation* invocation, gpointer data);
    static GVariant* onGet(GDBusConnection* connection, const gchar* sender, const gchar* path,
                           const gchar* interface, const gchar* property, GError** error, gpointer data);
    static gboolean onSet(GDBusConnection* connection, const gchar* sender, const gchar* path,
                          const gchar* interface, const gchar* property, GVariant* value, GError** error,
                          gpointer data);
    static void onRegistryAppeared(GDBusConnection* connection, const gchar* name, const gchar* owner,
                                   gpointer data);
    static void onRegistryVanished(GDBusConnection* connection, const gchar* name, gpointer data);

    BusContext& mContext;
    GDBusConnection* mConnection;
    AccessAnswers& mAnswers;
    GLibPtr<GDBusNodeInfo> mInterfaces;
    guint mTreeRegistration = 0;
    guint mCacheRegistration = 0;
    guint mRegistryWatch = 0;
    /// Shared with replies that are awaited and with calls on their way through GLib, which come although the
    /// tree is no longer registered. They do nothing once this object is gone.
    Self mSelf = std::make_shared<AccessObjects*>(this);
};

} // namespace varno

#endif
