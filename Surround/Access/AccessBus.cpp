#include "Surround/Access/AccessBus.h"

#include <utility>

namespace varno {
namespace {

constexpr const char* kService = "org.a11y.Bus";
constexpr const char* kServicePath = "/org/a11y/bus";
constexpr const char* kStatus = "org.a11y.Status";
constexpr const char* kSwitch = "IsEnabled";
constexpr const char* kBusProperties = "org.freedesktop.DBus.Properties";

constexpr BusMethod kGetStatus{kService, kServicePath, kBusProperties, "Get", "(v)"};
constexpr BusMethod kGetAddress{kService, kServicePath, kService, "GetAddress", "(s)"};

} // namespace

AccessBus::AccessBus(BusContext& context, AccessAddresses addresses, Found found, Lost lost)
    : mContext(context),
      mAddresses(std::move(addresses)),
      mFound(std::move(found)),
      mLost(std::move(lost)) {
    if (mAddresses.bus.empty()) {
        findSession();
        return;
    }
    mContext.connect(mAddresses.bus, [this](GLibPtr<GDBusConnection> connection) {
        if (connection != nullptr) {
            use(std::move(connection));
        } else {
            findSession();
        }
    });
}

void AccessBus::findSession() {
    if (mAddresses.session.empty()) {
        open(mAddresses.root);
        return;
    }
    mContext.connect(mAddresses.session, [this](GLibPtr<GDBusConnection> session) {
        if (session != nullptr) {
            useSession(std::move(session));
        } else {
            open(mAddresses.root);
        }
    });
}

AccessBus::~AccessBus() {
    leave();
    leaveSession();
}

void AccessBus::useSession(GLibPtr<GDBusConnection> session) {
    mSession = std::move(session);
    g_signal_connect(mSession.get(), "closed", G_CALLBACK(&AccessBus::onSessionClosed), this);
    const BusContext::Scope scope(mContext);
    mSubscription = g_dbus_connection_signal_subscribe(
        mSession.get(), kService, kBusProperties, "PropertiesChanged", kServicePath, kStatus,
        G_DBUS_SIGNAL_FLAGS_NONE, &AccessBus::onStatusChanged, this, nullptr);
    mWatch = g_bus_watch_name_on_connection(mSession.get(), kService, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                            &AccessBus::onServiceAppeared, &AccessBus::onServiceVanished,
                                            this, nullptr);
}

void AccessBus::leaveSession() {
    if (mSession == nullptr) {
        return;
    }
    g_bus_unwatch_name(mWatch);
    g_dbus_connection_signal_unsubscribe(mSession.get(), mSubscription);
    g_signal_handlers_disconnect_by_data(mSession.get(), this);
    mContext.close(std::move(mSession));
}

// Answers and signals of one sender arrive in the order in which they were sent: the last one is right.
void AccessBus::askWhetherEnabled() {
    mContext.call(mSession.get(), kGetStatus, g_variant_new("(ss)", kStatus, kSwitch),
                  [this](GVariant* reply) {
                      if (reply == nullptr) {
                          return;
                      }
                      GVariant* value = nullptr;
                      g_variant_get(reply, "(v)", &value);
                      const GLibPtr<GVariant> owned(value);
                      if (g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN) != FALSE) {
                          setEnabled(g_variant_get_boolean(value) != FALSE);
                      }
                  });
}

void AccessBus::setEnabled(bool isEnabled) {
    if (isEnabled == mIsEnabled) {
        return;
    }
    mIsEnabled = isEnabled;
    ++mAttempt;
    if (isEnabled) {
        askForAddress();
    } else {
        leave();
    }
}

void AccessBus::askForAddress() {
    mContext.call(mSession.get(), kGetAddress, nullptr, [this, attempt = mAttempt](GVariant* reply) {
        if (reply != nullptr && attempt == mAttempt) {
            const gchar* address = nullptr;
            g_variant_get(reply, "(&s)", &address);
            open(connectableAddress(address));
        }
    });
}

void AccessBus::open(const std::string& address) {
    if (address.empty()) {
        return;
    }
    mContext.connect(address, [this, attempt = mAttempt](GLibPtr<GDBusConnection> connection) {
        if (connection == nullptr) {
            return;
        }
        if (attempt == mAttempt) {
            use(std::move(connection));
        } else {
            mContext.close(std::move(connection)); // switched off meanwhile
        }
    });
}

void AccessBus::use(GLibPtr<GDBusConnection> connection) {
    mConnection = std::move(connection);
    g_signal_connect(mConnection.get(), "closed", G_CALLBACK(&AccessBus::onClosed), this);
    mFound(mConnection.get());
}

void AccessBus::leave() {
    if (mConnection == nullptr) {
        return;
    }
    g_signal_handlers_disconnect_by_data(mConnection.get(), this);
    mLost();
    mContext.close(std::move(mConnection));
}

void AccessBus::onServiceAppeared(GDBusConnection* /*connection*/, const gchar* /*name*/,
                                  const gchar* /*owner*/, gpointer data) {
    static_cast<AccessBus*>(data)->askWhetherEnabled();
}

void AccessBus::onServiceVanished(GDBusConnection* /*connection*/, const gchar* /*name*/, gpointer data) {
    static_cast<AccessBus*>(data)->setEnabled(false);
}

void AccessBus::onStatusChanged(GDBusConnection* /*connection*/, const gchar* /*sender*/,
                                const gchar* /*path*/, const gchar* /*interface*/, const gchar* /*signal*/,
                                GVariant* arguments, gpointer data) {
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv}as)")) == FALSE) {
        return;
    }
    const GLibPtr<GVariant> changed(g_variant_get_child_value(arguments, 1));
    gboolean isEnabled = FALSE;
    if (g_variant_lookup(changed.get(), kSwitch, "b", &isEnabled) != FALSE) {
        static_cast<AccessBus*>(data)->setEnabled(isEnabled != FALSE);
    }
}

void AccessBus::onSessionClosed(GDBusConnection* /*connection*/, gboolean /*vanished*/, GError* /*error*/,
                                gpointer data) {
    auto& bus = *static_cast<AccessBus*>(data);
    bus.setEnabled(false);
    bus.leaveSession();
}

void AccessBus::onClosed(GDBusConnection* /*connection*/, gboolean /*vanished*/, GError* /*error*/,
                         gpointer data) {
    static_cast<AccessBus*>(data)->leave();
}

} // namespace varno
