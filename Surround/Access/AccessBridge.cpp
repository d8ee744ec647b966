#include "Surround/Access/AccessBridge.h"

#include "Surround/Access/AccessAnswers.h"
#include "Surround/Access/AccessBus.h"
#include "Surround/Access/AccessObjects.h"

#include <optional>
#include <utility>

namespace varno {

// In the order in which each needs those before it.
class AccessBridge::Parts {
public:
    Parts(std::string applicationName, AccessWindow& window, AccessAddresses addresses)
        : mWindow(window),
          mAnswers(std::move(applicationName), window, mTree, [this] { refresh(); }),
          mBus(
              mContext, std::move(addresses), [this](GDBusConnection* connection) { open(connection); },
              [this] { mObjects.reset(); }) {}

    void refresh() {
        if (mObjects) {
            mObjects->report(mTree.update(mWindow.describe()));
        }
    }
    bool isActive() const { return mObjects.has_value(); }
    BusContext& context() { return mContext; }

private:
    // Nobody has asked yet, so that nothing has changed for anybody.
    void open(GDBusConnection* connection) {
        mTree.update(mWindow.describe());
        mObjects.emplace(mContext, connection, mAnswers);
    }

    AccessWindow& mWindow;
    AccessTree mTree;
    AccessAnswers mAnswers;
    BusContext mContext;
    std::optional<AccessObjects> mObjects;
    AccessBus mBus;
};

AccessBridge::AccessBridge(std::string applicationName, AccessWindow& window, AccessAddresses addresses)
    : mParts(std::make_unique<Parts>(std::move(applicationName), window, std::move(addresses))) {
}

AccessBridge::~AccessBridge() = default;

bool AccessBridge::isActive() const {
    return mParts->isActive();
}

void AccessBridge::tick() {
    mParts->refresh();
    dispatch();
}

void AccessBridge::dispatch() {
    mParts->context().dispatch();
}

int AccessBridge::descriptor() const {
    return mParts->context().descriptor();
}

} // namespace varno
