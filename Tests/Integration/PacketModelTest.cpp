// The path of a packet, from a value that changes to the buffer in which the routine sees it, against a
// model.
#include "Host/AudioContext.h"
#include "Tests/Libs/AAXLibrary/DispatcherFixture.h"
#include "Tests/Support/ModelCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
constexpr std::int32_t kPorts = 5;
// In the order in which they are posted.
constexpr std::array kIdentifiers = {"A", "Atk", "B", "HSw", "Hot", "a"};
using Values = std::map<std::int32_t, std::int32_t>; // of ports

std::string textOf(const Values& values) {
    std::ostringstream text;
    for (const auto& [port, value] : values) {
        text << port << '=' << value << ' ';
    }
    return text.str();
}

// What the path must do: a map of values.
class PacketModel {
public:
    std::string add(const std::string& id, std::int32_t port) {
        mRegistrations.emplace(id, port);
        if (port >= 0 && mKnown.insert(port).second) {
            mDirty.insert(port);
        }
        return {};
    }
    std::string set(const std::string& id, std::int32_t value) {
        mValues[id] = value;
        return mark(id, true);
    }
    std::string mark(const std::string& id, bool dirty) {
        const auto [first, last] = mRegistrations.equal_range(id);
        for (auto entry = first; entry != last; ++entry) {
            if (dirty && entry->second >= 0) {
                mDirty.insert(entry->second);
            } else if (!dirty) {
                mDirty.erase(entry->second);
            }
        }
        return {};
    }
    std::string breakHandler(const std::string& id, bool isBroken) {
        mIsBroken[id] = isBroken;
        return {};
    }
    // Of the posts of the next dispatch, those up to `count` find the queue full.
    std::string fillQueue(std::size_t count) {
        mFull = count;
        return {};
    }
    std::string dispatch() {
        std::ostringstream text;
        AAX_Result result = AAX_SUCCESS;
        std::size_t posts = 0;
        for (const auto& [id, port] : mRegistrations) {
            if (mDirty.erase(port) > 0 && !mIsBroken[id]) {
                result = posts++ < mFull ? AAX_ERROR_FIFO_FULL : AAX_SUCCESS;
                text << port << '=' << mValues[id] << ' ';
                if (result == AAX_SUCCESS) {
                    mArrived[port] = mValues[id];
                }
            }
        }
        mFull = 0;
        text << result;
        return text.str();
    }
    // What the routine sees in the next buffer.
    std::string buffer() const { return textOf(mArrived); }
    std::string removeAll() {
        mRegistrations.clear();
        mKnown.clear();
        mDirty.clear();
        return {};
    }

private:
    std::multimap<std::string, std::int32_t> mRegistrations;
    std::set<std::int32_t> mKnown;
    std::set<std::int32_t> mDirty;
    std::map<std::string, std::int32_t> mValues;
    std::map<std::string, bool> mIsBroken;
    Values mArrived{{0, 0}, {1, 0}, {2, 0}, {3, 0}, {4, 0}};
    std::size_t mFull = 0;
};

std::int64_t fullQueues = 0;

VariantDescription portsOnly() {
    VariantDescription variant;
    for (std::int32_t field = 0; field < kPorts; ++field) {
        variant.fields.push_back({field, FieldKind::kDataInPort, sizeof(std::int32_t), 1, {}});
    }
    return variant;
}

// The dispatcher, and what the host does with its packets.
class PacketPath {
public:
    using Post = FakeController::Post;

    std::string add(const std::string& id, std::int32_t port) {
        mFixture.registerFunction(id.c_str(), port, [this](AAX_CParamID paramID, AAX_CPacket& packet) {
            *packet.GetPtr<std::int32_t>() = mValues[paramID];
            return mIsBroken[paramID] ? AAX_ERROR_INVALID_INTERNAL_DATA : AAX_SUCCESS;
        });
        return {};
    }
    std::string set(const std::string& id, std::int32_t value) {
        mValues[id] = value;
        return mark(id, true);
    }
    std::string mark(const std::string& id, bool dirty) {
        mFixture.dispatcher.SetDirty(id.c_str(), dirty);
        return {};
    }
    std::string breakHandler(const std::string& id, bool isBroken) {
        mIsBroken[id] = isBroken;
        return {};
    }
    std::string fillQueue(std::size_t count) {
        mFixture.host.controller.postResults.assign(count, AAX_ERROR_FIFO_FULL);
        return {};
    }
    std::string dispatch() {
        const std::size_t refusals = mFixture.host.controller.postResults.size();
        const AAX_Result result = mFixture.dispatcher.Dispatch();
        const std::vector<Post> posts = std::exchange(mFixture.host.controller.posts, {});
        mFixture.host.controller.postResults.clear();
        const auto accepted = posts.begin() + static_cast<std::ptrdiff_t>(std::min(refusals, posts.size()));
        mRefused.assign(posts.begin(), accepted);
        fullQueues += static_cast<std::int64_t>(mRefused.size());
        send({accepted, posts.end()});
        std::ostringstream text;
        for (const Post& post : posts) {
            text << post.field << '=' << post.as<std::int32_t>() << ' ';
        }
        text << result;
        return text.str();
    }
    std::string buffer() {
        mExchange.acquire();
        return seen();
    }
    std::string removeAll() {
        mFixture.dispatcher.RemoveAllPackets();
        return {};
    }

protected:
    void send(const std::vector<Post>& posts) {
        mExchange.beginSet();
        for (const Post& post : posts) {
            mExchange.post(post.field, post.bytes.data(), static_cast<std::uint32_t>(post.bytes.size()));
        }
        mExchange.endSet();
    }
    std::string seen() const {
        Values values;
        for (const Port& port : mExchange.ports()) {
            std::memcpy(&values[port.field], mExchange.image() + port.offset, sizeof(std::int32_t));
        }
        return textOf(values);
    }

    DispatcherFixture mFixture;
    std::map<std::string, std::int32_t> mValues;
    std::map<std::string, bool> mIsBroken;
    std::vector<Post> mRefused; // of the last dispatch
    PacketExchange mExchange{portsOnly()};
};

// A value in sixteen is not marked.
class MarkLosingPath : public PacketPath {
public:
    std::string set(const std::string& id, std::int32_t value) {
        mValues[id] = value;
        return value % 16 != 0 ? mark(id, true) : std::string();
    }
};

// The routine sees what has arrived a buffer late.
class LatePath : public PacketPath {
public:
    std::string buffer() {
        const std::string before = seen();
        mExchange.acquire();
        return before;
    }
};

// A post that found the queue full arrives behind those of the next dispatch.
class RepeatingPath : public PacketPath {
public:
    std::string dispatch() {
        const std::vector<Post> refused = mRefused;
        const std::string text = PacketPath::dispatch();
        send(refused);
        return text;
    }
};

// No registration is ever removed.
class KeepingPath : public PacketPath {
public:
    std::string removeAll() { return {}; }
};

template<class Path>
typename ModelCheck<PacketModel, Path>::Operation anyPacketOperation() {
    using Check = ModelCheck<PacketModel, Path>;
    const std::string id = *rc::gen::elementOf(kIdentifiers);
    const int kind = *rc::gen::inRange(0, 40);
    if (kind < 4) {
        const std::int32_t port = *rc::gen::inRange(-1, kPorts);
        return Check::operation("register " + id + ' ' + std::to_string(port),
                                [=](auto& path) { return path.add(id, port); });
    }
    if (kind < 16) {
        const auto value = *rc::gen::arbitrary<std::int32_t>();
        return Check::operation("set " + id + ' ' + std::to_string(value),
                                [=](auto& path) { return path.set(id, value); });
    }
    if (kind < 18) {
        return Check::operation("unmark " + id, [=](auto& path) { return path.mark(id, false); });
    }
    if (kind < 20) {
        const bool isBroken = *rc::gen::arbitrary<bool>();
        return Check::operation((isBroken ? "break " : "mend ") + id,
                                [=](auto& path) { return path.breakHandler(id, isBroken); });
    }
    if (kind < 22) {
        const auto count = *rc::gen::inRange<std::size_t>(0, kPorts);
        return Check::operation("full for " + std::to_string(count),
                                [=](auto& path) { return path.fillQueue(count); });
    }
    if (kind < 23) {
        return Check::operation("remove all", [](auto& path) { return path.removeAll(); });
    }
    if (kind < 32) {
        return Check::operation("dispatch", [](auto& path) { return path.dispatch(); });
    }
    return Check::operation("buffer", [](auto& path) { return path.buffer(); });
}

template<class Path>
ModelCheck<PacketModel, Path> packetCheck(int cases) {
    return {.draw = anyPacketOperation<Path>, .cases = cases};
}

TEST(PacketModelTest, theLastValueIsInTheNextBufferAndNoOlderOneAfterIt) {
    fullQueues = 0;
    expectHolds(packetCheck<PacketPath>(120 * testScale()), std::int64_t{20000} * testScale());
    EXPECT_GT(fullQueues, 0);
    RecordProperty("fullQueues", std::to_string(fullQueues));
}

TEST(PacketModelTest, rejectsPathsThatLoseDelayRepeatOrKeep) {
    expectRejects(packetCheck<MarkLosingPath>(100), "a mark is lost");
    expectRejects(packetCheck<LatePath>(100), "a buffer late");
    expectRejects(packetCheck<RepeatingPath>(100), "an older value after a newer");
    expectRejects(packetCheck<KeepingPath>(100), "registrations are kept");
}
#endif

} // namespace
} // namespace varno::test
