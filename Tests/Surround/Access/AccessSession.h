/// A desktop session of a test's own with an accessibility bus, a screen reader's part in it, and a window.
#ifndef VARNO_TESTS_SURROUND_ACCESS_ACCESSSESSION_H
#define VARNO_TESTS_SURROUND_ACCESS_ACCESSSESSION_H

#include "Surround/Access/AccessBridge.h"
#include "Surround/Access/BusContext.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Surround/Access/TestWindow.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varno::test {

/// A session bus of its own. What is started on it is of Debian's at-spi2-core: the accessibility bus and the
/// registry of applications.
class AccessSession {
public:
    /// Returns when the session bus takes connections. Throws std::runtime_error where it does not start.
    AccessSession();

    const std::string& address() const { return mAddress; }
    AccessAddresses addresses() const { return {{}, mAddress, {}}; }
    /// Ends the session bus, and with it everything on it.
    void stop() { mDaemon.reset(); }

private:
    TemporaryFolder mFolder;
    std::optional<Subprocess> mDaemon;
    std::string mAddress;
};

/// What was answered: a value, or the name of an error.
struct BusAnswer {
    GLibPtr<GVariant> value;
    std::string error;

    /// The value in GLib's text form; the error's name in the place of none.
    std::string text() const;
};

/// A signal from the window.
struct BusEvent {
    std::string path;
    std::string name; ///< "PropertyChange"
    std::string body; ///< In GLib's text form.
};

/// A connection of somebody else to a bus. While it waits, `meanwhile` is called again and again: the window
/// is in the same thread.
class BusClient {
public:
    /// Throws std::runtime_error where nobody answers.
    BusClient(const std::string& address, std::function<void()> meanwhile);
    BusClient(const BusClient&) = delete;
    BusClient& operator=(const BusClient&) = delete;
    ~BusClient();

    /// @param arguments in GLib's text form, a tuple: "(1, 'two')"; starts services
    BusAnswer call(const std::string& destination, const std::string& path, const std::string& interface,
                   const std::string& method, const std::string& arguments = "()");
    /// Receives from now on what another connection sends.
    void listenTo(const std::string& sender);
    /// What has arrived. Returns once everything has that was sent before.
    std::vector<BusEvent> events(const std::string& sender);
    /// Whether the condition holds within a generous time.
    bool eventually(const std::function<bool()>& condition);

private:
    static void onSignal(GDBusConnection* connection, const gchar* sender, const gchar* path,
                         const gchar* interface, const gchar* signal, GVariant* arguments, gpointer data);
    static void onReply(GObject* source, GAsyncResult* result, gpointer data);

    GLibPtr<GMainContext> mContext;
    GLibPtr<GDBusConnection> mConnection;
    std::function<void()> mMeanwhile;
    std::vector<BusEvent> mEvents;
    guint mSubscription = 0;
};

/// A window with its bridge, and a screen reader that has found it.
class AccessFixture : public testing::Test {
protected:
    /// Opens the bridge, switches accessibility on and waits until the registry has the window.
    void open();
    /// Opens the bridge.
    void makeBridge() { mBridge.emplace("Test effect", mWindow, mSession.addresses()); }
    /// On the session bus.
    BusClient& desktop();
    void setEnabled(bool isEnabled);
    /// Connects to the accessibility bus, which is started where needed.
    BusClient& reader();
    /// The references to the applications that the registry knows.
    std::string applications();
    /// The bus name of the one application.
    std::string applicationName();

    static std::string rootPath() { return "/org/a11y/atspi/accessible/root"; }
    /// The object path of a part, found by walking the tree.
    std::string pathOf(const std::string& id);
    /// Calls on the window: the value's text, or the error's name.
    std::string ask(const std::string& path, const std::string& interface, const std::string& method,
                    const std::string& arguments = "()");
    std::string get(const std::string& path, const std::string& interface, const std::string& property);
    std::string set(const std::string& path, const std::string& interface, const std::string& property,
                    const std::string& value);

    AccessSession mSession;
    TestWindow mWindow;
    std::optional<AccessBridge> mBridge;
    std::optional<BusClient> mDesktop;
    std::optional<BusClient> mReader;
    std::string mName; ///< Of the window's connection.
};

} // namespace varno::test

#endif
