#include "Tests/Surround/Access/AccessSession.h"

#include "Tests/Support/Eventually.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace varno::test {
namespace {

constexpr const char* kAccessibleInterface = "org.a11y.atspi.Accessible";
constexpr const char* kPropertiesInterface = "org.freedesktop.DBus.Properties";
constexpr const char* kRegistryName = "org.a11y.atspi.Registry";

std::string printed(GVariant* value) {
    gchar* const text = g_variant_print(value, FALSE);
    std::string printed(text);
    g_free(text);
    // Some object paths have a word before them that others lack.
    const std::string word = "objectpath ";
    for (auto at = printed.find(word); at != std::string::npos; at = printed.find(word)) {
        printed.erase(at, word.size());
    }
    return printed;
}

// The first object path or bus name within a text of GLib's.
std::string between(const std::string& text, const std::string& begin, char end) {
    const auto start = text.find(begin);
    return start == std::string::npos
               ? std::string()
               : text.substr(start + begin.size() - 1,
                             text.find(end, start + begin.size()) - start - begin.size() + 1);
}

} // namespace

AccessSession::AccessSession() {
    const std::string folder = mFolder.path().string();
    std::filesystem::create_directory(folder + "/run");
    std::filesystem::permissions(folder + "/run", std::filesystem::perms::owner_all);
    Surroundings surroundings;
    surroundings.environment = {"HOME=" + folder,           "XDG_RUNTIME_DIR=" + folder + "/run",
                                "XDG_CACHE_HOME=" + folder, "XDG_CONFIG_HOME=" + folder,
                                "XDG_DATA_HOME=" + folder,  "GSETTINGS_BACKEND=memory",
                                "AT_SPI_BUS_ADDRESS="};
    // Without a display, on which the accessibility bus would be announced.
    mDaemon.emplace(std::vector<std::string>{"env", "--unset=DISPLAY", "dbus-daemon", "--session", "--nofork",
                                             "--nopidfile", "--print-address",
                                             "--address=unix:dir=" + folder},
                    surroundings);
    if (!eventually([&] { return mDaemon->out().find('\n') != std::string::npos || mDaemon->status(); })) {
        throw std::runtime_error("dbus-daemon does not start");
    }
    mAddress = mDaemon->out().substr(0, mDaemon->out().find('\n'));
}

std::string BusAnswer::text() const {
    return value == nullptr ? error : printed(value.get());
}

BusClient::BusClient(const std::string& address, std::function<void()> meanwhile)
    : mContext(g_main_context_new()),
      mMeanwhile(std::move(meanwhile)) {
    g_main_context_push_thread_default(mContext.get());
    mConnection.reset(g_dbus_connection_new_for_address_sync(
        address.c_str(),
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                          G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
        nullptr, nullptr, nullptr));
    g_main_context_pop_thread_default(mContext.get());
    if (mConnection == nullptr) {
        throw std::runtime_error("no bus at " + address);
    }
}

BusClient::~BusClient() {
    if (mSubscription != 0) {
        g_dbus_connection_signal_unsubscribe(mConnection.get(), mSubscription);
    }
    g_dbus_connection_close_sync(mConnection.get(), nullptr, nullptr);
    while (g_main_context_iteration(mContext.get(), FALSE) != FALSE) {
    }
}

void BusClient::onReply(GObject* source, GAsyncResult* result, gpointer data) {
    auto& answer = *static_cast<std::optional<BusAnswer>*>(data);
    answer.emplace();
    GError* error = nullptr;
    answer->value.reset(
        g_dbus_connection_call_finish(reinterpret_cast<GDBusConnection*>(source), result, &error));
    if (error != nullptr) {
        gchar* const name = g_dbus_error_get_remote_error(error);
        answer->error = name == nullptr ? error->message : name;
        g_free(name);
        g_error_free(error);
    }
}

bool BusClient::eventually(const std::function<bool()>& condition) {
    return test::eventually([&] {
        while (g_main_context_iteration(mContext.get(), FALSE) != FALSE) {
        }
        mMeanwhile();
        return condition();
    });
}

BusAnswer BusClient::call(const std::string& destination, const std::string& path,
                          const std::string& interface, const std::string& method,
                          const std::string& arguments) {
    std::optional<BusAnswer> answer;
    GVariant* const parsed = g_variant_parse(nullptr, arguments.c_str(), nullptr, nullptr, nullptr);
    if (parsed == nullptr) {
        throw std::invalid_argument(arguments);
    }
    g_main_context_push_thread_default(mContext.get());
    g_dbus_connection_call(mConnection.get(), destination.c_str(), path.c_str(), interface.c_str(),
                           method.c_str(), parsed, nullptr, G_DBUS_CALL_FLAGS_NONE, 20'000, nullptr,
                           &BusClient::onReply, &answer);
    g_variant_unref(parsed);
    g_main_context_pop_thread_default(mContext.get());
    if (!eventually([&] { return answer.has_value(); })) {
        throw std::runtime_error("no answer from " + destination);
    }
    return std::move(*answer);
}

void BusClient::onSignal(GDBusConnection* /*connection*/, const gchar* /*sender*/, const gchar* path,
                         const gchar* /*interface*/, const gchar* signal, GVariant* arguments,
                         gpointer data) {
    static_cast<BusClient*>(data)->mEvents.push_back({path, signal, printed(arguments)});
}

void BusClient::listenTo(const std::string& sender) {
    g_main_context_push_thread_default(mContext.get());
    mSubscription = g_dbus_connection_signal_subscribe(mConnection.get(), sender.c_str(), nullptr, nullptr,
                                                       nullptr, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
                                                       &BusClient::onSignal, this, nullptr);
    g_main_context_pop_thread_default(mContext.get());
    events(sender); // the bus has the subscription
}

std::vector<BusEvent> BusClient::events(const std::string& sender) {
    mMeanwhile();
    // The answer comes after what was sent before.
    call(sender, "/org/a11y/atspi/accessible/root", "org.freedesktop.DBus.Peer", "Ping");
    return std::exchange(mEvents, {});
}

BusClient& AccessFixture::desktop() {
    if (!mDesktop) {
        mDesktop.emplace(mSession.address(), [this] {
            if (mBridge) {
                mBridge->tick();
            }
        });
    }
    return *mDesktop;
}

void AccessFixture::setEnabled(bool isEnabled) {
    const auto answer = desktop().call("org.a11y.Bus", "/org/a11y/bus", kPropertiesInterface, "Set",
                                       std::string("('org.a11y.Status', 'IsEnabled', <") +
                                           (isEnabled ? "true" : "false") + ">)");
    EXPECT_EQ(answer.text(), "()");
}

BusClient& AccessFixture::reader() {
    if (!mReader) {
        const auto answer = desktop().call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress");
        const gchar* address = "";
        if (answer.value != nullptr) {
            g_variant_get(answer.value.get(), "(&s)", &address);
        }
        mReader.emplace(address, [this] {
            if (mBridge) {
                mBridge->tick();
            }
        });
    }
    return *mReader;
}

std::string AccessFixture::applications() {
    return reader().call(kRegistryName, rootPath(), kAccessibleInterface, "GetChildren").text();
}

std::string AccessFixture::applicationName() {
    std::string name;
    reader().eventually([&] {
        name = between(applications(), "':", '\'');
        return !name.empty();
    });
    return name;
}

void AccessFixture::open() {
    makeBridge();
    setEnabled(true);
    mName = applicationName();
    ASSERT_NE(mName, "");
}

std::string AccessFixture::pathOf(const std::string& id) {
    const std::function<std::string(const std::string&)> find = [&](const std::string& path) -> std::string {
        if (get(path, kAccessibleInterface, "AccessibleId") == "(<'" + id + "'>,)") {
            return path;
        }
        const BusAnswer children = reader().call(mName, path, kAccessibleInterface, "GetChildren");
        if (children.value == nullptr) {
            return {};
        }
        GVariantIter* references = nullptr;
        g_variant_get(children.value.get(), "(a(so))", &references);
        std::vector<std::string> paths;
        const gchar* owner = nullptr;
        const gchar* child = nullptr;
        while (g_variant_iter_next(references, "(&s&o)", &owner, &child) != FALSE) {
            paths.emplace_back(child);
        }
        g_variant_iter_free(references);
        for (const std::string& next : paths) {
            if (std::string found = find(next); !found.empty()) {
                return found;
            }
        }
        return {};
    };
    return find(rootPath());
}

std::string AccessFixture::ask(const std::string& path, const std::string& interface,
                               const std::string& method, const std::string& arguments) {
    return reader().call(mName, path, interface, method, arguments).text();
}

std::string AccessFixture::get(const std::string& path, const std::string& interface,
                               const std::string& property) {
    return ask(path, kPropertiesInterface, "Get", "('" + interface + "', '" + property + "')");
}

std::string AccessFixture::set(const std::string& path, const std::string& interface,
                               const std::string& property, const std::string& value) {
    return ask(path, kPropertiesInterface, "Set",
               "('" + interface + "', '" + property + "', <" + value + ">)");
}

} // namespace varno::test
