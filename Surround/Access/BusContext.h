/// Calls over D-Bus that never wait: their replies arrive while the window's main thread dispatches them.
#ifndef VARNO_SURROUND_ACCESS_BUSCONTEXT_H
#define VARNO_SURROUND_ACCESS_BUSCONTEXT_H

#include <functional>
#include <gio/gio.h>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// Frees objects of GLib by their type.
struct FreeGLib {
    void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
    void operator()(GCancellable* cancellable) const { g_object_unref(cancellable); }
    void operator()(GMainContext* context) const { g_main_context_unref(context); }
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
    void operator()(GError* error) const { g_error_free(error); }
};

/// An owned object of GLib.
template<class T>
using GLibPtr = std::unique_ptr<T, FreeGLib>;

/// Where a method is found.
struct BusMethod {
    const char* destination; ///< Bus name.
    const char* path;
    const char* interface;
    const char* name;
    const char* reply; ///< Type of the reply: another one counts as none.
};

/// A main context of GLib of our own, beside the host's default one, with the calls that wait for a reply in
/// it. All of our functions run within dispatch() and the destructor; GLib's own thread calls none. [main]
class BusContext {
public:
    using Connected = std::function<void(GLibPtr<GDBusConnection>)>;
    using Replied = std::function<void(GVariant*)>;

    BusContext();
    BusContext(const BusContext&) = delete;
    BusContext& operator=(const BusContext&) = delete;
    /// Cancels what still waits for a reply, whose functions are not called any more. Waits until GLib's
    /// thread has let go of the connections that were closed, usually a millisecond, at most 0.2 s.
    ~BusContext();

    /// Opens a connection to a bus. @param connected receives it, or null where nobody answers there
    void connect(const std::string& address, Connected connected);
    /// Calls a method, which starts no service. @param arguments a tuple, floating; null for none
    /// @param replied receives the reply, or null after an error
    void call(GDBusConnection* connection, const BusMethod& method, GVariant* arguments, Replied replied);
    /// Closes a connection once what was sent is on its way. What was registered with it must be gone.
    void close(GLibPtr<GDBusConnection> connection);

    /// Runs what has arrived, without waiting.
    void dispatch();
    /// Readable when there is something to dispatch; the same for the object's life, which owns it.
    int descriptor() const { return mDescriptor; }

    /// What is subscribed, watched or registered while it exists calls back in this context.
    class Scope {
    public:
        explicit Scope(const BusContext& context)
            : mContext(context.mContext.get()) {
            g_main_context_push_thread_default(mContext);
        }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope() { g_main_context_pop_thread_default(mContext); }

    private:
        GMainContext* mContext;
    };

private:
    struct Connecting;
    struct Calling;
    class Closing;

    static void onConnected(GObject* source, GAsyncResult* result, gpointer data);
    static void onReplied(GObject* source, GAsyncResult* result, gpointer data);
    static void onClosed(GObject* source, GAsyncResult* result, gpointer data);
    void findDescriptor();
    bool isDone() const;

    GLibPtr<GMainContext> mContext;
    GLibPtr<GCancellable> mCancellable;
    int mDescriptor = -1;
    int mPending = 0; ///< Operations whose functions have not been called.
    std::vector<std::unique_ptr<Closing>> mClosing;
    bool mIsEnding = false;
};

} // namespace varno

#endif
