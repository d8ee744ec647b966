#include "Platform/X11/X11Clipboard.h"

#include "Platform/SharedInstance.h"
#include "Platform/X11/X11Connection.h"
#include "Platform/X11/X11SelectionOwner.h"
#include "Platform/X11/X11SelectionReader.h"

#include <utility>

namespace varno {

namespace {

// Longest wait for an owner that does not reply; text() returns within a second.
constexpr std::chrono::milliseconds kLongestWait{800};
// Longest wait for a clipboard manager, while a view closes.
constexpr std::chrono::milliseconds kLongestHandOver{250};

X11Connection::Deadline deadline(std::chrono::milliseconds wait = kLongestWait) {
    return std::chrono::steady_clock::now() + wait;
}

} // namespace

std::shared_ptr<Clipboard> Clipboard::shared() {
    static std::weak_ptr<Clipboard> instance;
    return sharedInstance(instance, [] { return std::make_shared<X11Clipboard>(RunLoop::shared()); });
}

// Exists while there is a connection.
struct X11Clipboard::Session {
    explicit Session(std::unique_ptr<X11Connection> connected)
        : connection(std::move(connected)),
          atoms(internAtoms(connection->xcb())),
          owner(*connection, atoms),
          reader(*connection, atoms) {
        connection->setHandler([this](const xcb_generic_event_t& event) {
            owner.handle(event);
            reader.handle(event);
        });
    }

    std::unique_ptr<X11Connection> connection;
    X11Atoms atoms;
    X11SelectionOwner owner;
    X11SelectionReader reader;
    Registration registration;
};

X11Clipboard::X11Clipboard(std::shared_ptr<RunLoop> loop, std::string display)
    : mLoop(std::move(loop)),
      mDisplay(std::move(display)) {
}

X11Clipboard::~X11Clipboard() = default;

bool X11Clipboard::setText(const std::string& text) {
    const bool taken = connected() && mSession->owner.take(text, deadline());
    mIsOffered = false;
    pump();
    return taken;
}

void X11Clipboard::handOver() {
    pump();
    if (mSession && mSession->owner.text() != nullptr && !std::exchange(mIsOffered, true)) {
        mSession->owner.handOver(deadline(kLongestHandOver));
        pump();
    }
}

std::optional<std::string> X11Clipboard::text() {
    if (!connected()) {
        return std::nullopt;
    }
    if (const std::string* const own = mSession->owner.text()) {
        return *own;
    }
    auto text = mSession->reader.read(deadline());
    pump();
    return text;
}

bool X11Clipboard::connected() {
    pump();
    if (!mSession) {
        auto connection = std::make_unique<X11Connection>(mDisplay);
        if (connection->lost()) {
            return false;
        }
        const int descriptor = connection->descriptor();
        mSession = std::make_unique<Session>(std::move(connection));
        mSession->registration = mLoop->addDescriptor(descriptor, [this] { pump(); });
    }
    return true;
}

void X11Clipboard::pump() {
    if (!mSession) {
        return;
    }
    mSession->connection->pump();
    if (mSession->connection->lost()) {
        mSession.reset();
    }
}

} // namespace varno
