#include "Surround/Access/BusContext.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <dlfcn.h>
#include <thread>

namespace varno {
namespace {

// GIO registers its classes with GObject, which is never unloaded, and its thread serves all connections of
// the process. If it were unloaded together with the plug-in's binary, both would be left without their code.
[[maybe_unused]] const void* const kGioStays =
    dlopen("libgio-2.0.so.0", RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);

// A service that does not answer for so long counts as one that is not there.
constexpr int kPatienceMs = 5000;
// Cancelling is a matter of GLib's own thread, which may have to wait for a processor.
constexpr std::chrono::milliseconds kLongestEnd(200);
// Replies of one call of dispatch(): a flood of messages must not stop the window.
constexpr int kMostDispatched = 100;

} // namespace

struct BusContext::Connecting {
    BusContext* context;
    Connected connected;
};

struct BusContext::Calling {
    BusContext* context;
    Replied replied;
};

// A closed connection. Whatever it still has to deliver in the context holds a reference to it.
class BusContext::Closing {
public:
    explicit Closing(GDBusConnection* connection) { g_weak_ref_init(&mReference, connection); }
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing() { g_weak_ref_clear(&mReference); }

    bool isGone() {
        auto* const connection = static_cast<GObject*>(g_weak_ref_get(&mReference));
        if (connection != nullptr) {
            g_object_unref(connection);
        }
        return connection == nullptr;
    }

private:
    GWeakRef mReference{};
};

BusContext::BusContext()
    // Otherwise other threads wake it only while it waits itself, not while an event loop of ours does.
    : mContext(g_main_context_new_with_flags(G_MAIN_CONTEXT_FLAGS_OWNERLESS_POLLING)),
      mCancellable(g_cancellable_new()) {
    findDescriptor();
}

// The one descriptor of a context without sources of its own is that by which other threads wake it.
void BusContext::findDescriptor() {
    if (g_main_context_acquire(mContext.get()) == FALSE) {
        return;
    }
    gint priority = 0;
    gint timeoutMs = 0;
    std::array<GPollFD, 4> polled{};
    g_main_context_prepare(mContext.get(), &priority);
    const int count = g_main_context_query(mContext.get(), G_MAXINT, &timeoutMs, polled.data(),
                                           static_cast<gint>(polled.size()));
    g_main_context_release(mContext.get());
    if (count > 0) {
        mDescriptor = polled.front().fd;
    }
}

BusContext::~BusContext() {
    mIsEnding = true;
    g_cancellable_cancel(mCancellable.get());
    const auto end = std::chrono::steady_clock::now() + kLongestEnd;
    while (!isDone() && std::chrono::steady_clock::now() < end) {
        if (g_main_context_iteration(mContext.get(), FALSE) == FALSE) {
            std::this_thread::sleep_for(std::chrono::microseconds(100));
        }
    }
    // What was unregistered is freed in the context.
    while (g_main_context_iteration(mContext.get(), FALSE) != FALSE) {
    }
}

bool BusContext::isDone() const {
    return mPending == 0 &&
           std::ranges::all_of(mClosing, [](const auto& closing) { return closing->isGone(); });
}

void BusContext::connect(const std::string& address, Connected connected) {
    const Scope scope(*this);
    ++mPending;
    g_dbus_connection_new_for_address(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, mCancellable.get(), &BusContext::onConnected, new Connecting{this, std::move(connected)});
}

void BusContext::onConnected(GObject* /*source*/, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Connecting> operation(static_cast<Connecting*>(data));
    BusContext& context = *operation->context;
    GError* error = nullptr;
    GLibPtr<GDBusConnection> connection(g_dbus_connection_new_for_address_finish(result, &error));
    const GLibPtr<GError> owned(error);
    --context.mPending;
    if (!context.mIsEnding) {
        operation->connected(std::move(connection));
    } else if (connection != nullptr) {
        context.close(std::move(connection));
    }
}

void BusContext::call(GDBusConnection* connection, const BusMethod& method, GVariant* arguments,
                      Replied replied) {
    const Scope scope(*this);
    ++mPending;
    g_dbus_connection_call(connection, method.destination, method.path, method.interface, method.name,
                           arguments, G_VARIANT_TYPE(method.reply), G_DBUS_CALL_FLAGS_NO_AUTO_START,
                           kPatienceMs, mCancellable.get(), &BusContext::onReplied,
                           new Calling{this, std::move(replied)});
}

void BusContext::onReplied(GObject* source, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<Calling> operation(static_cast<Calling*>(data));
    BusContext& context = *operation->context;
    GError* error = nullptr;
    const GLibPtr<GVariant> reply(
        g_dbus_connection_call_finish(reinterpret_cast<GDBusConnection*>(source), result, &error));
    const GLibPtr<GError> owned(error);
    --context.mPending;
    if (!context.mIsEnding) {
        operation->replied(reply.get());
    }
}

void BusContext::close(GLibPtr<GDBusConnection> connection) {
    const Scope scope(*this);
    std::erase_if(mClosing, [](const auto& closing) { return closing->isGone(); });
    mClosing.push_back(std::make_unique<Closing>(connection.get()));
    ++mPending;
    g_dbus_connection_close(connection.get(), nullptr, &BusContext::onClosed, this);
}

void BusContext::onClosed(GObject* source, GAsyncResult* result, gpointer data) {
    g_dbus_connection_close_finish(reinterpret_cast<GDBusConnection*>(source), result, nullptr);
    --static_cast<BusContext*>(data)->mPending;
}

void BusContext::dispatch() {
    for (int i = 0; i < kMostDispatched && g_main_context_iteration(mContext.get(), FALSE) != FALSE; ++i) {
    }
}

} // namespace varno
