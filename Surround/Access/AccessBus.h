/// The bus on which screen readers find programs.
#ifndef VARNO_SURROUND_ACCESS_ACCESSBUS_H
#define VARNO_SURROUND_ACCESS_ACCESSBUS_H

#include "Surround/Access/AccessAddresses.h"
#include "Surround/Access/BusContext.h"

#include <functional>
#include <string>

namespace varno {

/// Follows the accessibility bus: connects as soon as there is one and it is switched on, and loses it when
/// it is switched off or ends. Everything happens within the context's dispatch. [main]
class AccessBus {
public:
    /// Called with each connection, until the next `lost`.
    using Found = std::function<void(GDBusConnection*)>;
    /// Called where the connection that was found ends; it may be used for the last time.
    using Lost = std::function<void()>;

    /// @param context outlives this object
    AccessBus(BusContext& context, AccessAddresses addresses, Found found, Lost lost);
    AccessBus(const AccessBus&) = delete;
    AccessBus& operator=(const AccessBus&) = delete;
    /// Calls `lost` where a connection is open.
    ~AccessBus();

private:
    void findSession();
    void useSession(GLibPtr<GDBusConnection> session);
    void leaveSession();
    void askWhetherEnabled();
    void setEnabled(bool isEnabled);
    void askForAddress();
    void open(const std::string& address);
    void use(GLibPtr<GDBusConnection> connection);
    void leave();

    static void onServiceAppeared(GDBusConnection* connection, const gchar* name, const gchar* owner,
                                  gpointer data);
    static void onServiceVanished(GDBusConnection* connection, const gchar* name, gpointer data);
    static void onStatusChanged(GDBusConnection* connection, const gchar* sender, const gchar* path,
                                const gchar* interface, const gchar* signal, GVariant* arguments,
                                gpointer data);
    static void onSessionClosed(GDBusConnection* connection, gboolean vanished, GError* error, gpointer data);
    static void onClosed(GDBusConnection* connection, gboolean vanished, GError* error, gpointer data);

    BusContext& mContext;
    AccessAddresses mAddresses;
    Found mFound;
    Lost mLost;
    GLibPtr<GDBusConnection> mSession;
    guint mWatch = 0;
    guint mSubscription = 0;
    GLibPtr<GDBusConnection> mConnection;
    bool mIsEnabled = false;
    unsigned mAttempt =
        0; ///< Counts the switchings: a connection that is opened for an earlier one is closed.
};

} // namespace varno

#endif
