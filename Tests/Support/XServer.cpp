#include "Tests/Support/XServer.h"

#include "Tests/Support/Eventually.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <poll.h>
#include <span>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <xcb/res.h>

namespace varno::test {

namespace {

// The pipe on which the server writes its display. It inherits the writing end, which is closed here once it
// runs, so that reading ends when the server ends.
class NamePipe {
public:
    NamePipe() {
        if (pipe(mEnds.data()) != 0) {
            throw std::system_error(errno, std::generic_category(), "pipe");
        }
    }
    NamePipe(const NamePipe&) = delete;
    NamePipe& operator=(const NamePipe&) = delete;
    ~NamePipe() {
        closeWriting();
        close(mEnds[0]);
    }

    int writing() const { return mEnds[1]; }

    void closeWriting() {
        if (mEnds[1] >= 0) {
            close(mEnds[1]);
            mEnds[1] = -1;
        }
    }

    // The line that the server writes, without its end; what there is where none comes.
    std::string line() const {
        std::string text;
        char character = 0;
        while (readable() && read(mEnds[0], &character, 1) == 1 && character != '\n') {
            text += character;
        }
        return text;
    }

private:
    bool readable() const {
        pollfd wait{mEnds[0], POLLIN, 0};
        return poll(&wait, 1, static_cast<int>(std::chrono::milliseconds(kGenerousDeadline).count())) == 1;
    }

    std::array<int, 2> mEnds{-1, -1};
};

std::string sizeOf(XServer::Screen screen) {
    return std::to_string(screen.width) + "x" + std::to_string(screen.height) + "x24";
}

} // namespace

XServer::XServer(Screen screen, const std::vector<std::string>& more) {
    NamePipe name;
    // Without -noreset the server resets whenever its last client disconnects, and may refuse the next
    // meanwhile.
    std::vector<std::string> words = {"Xvfb",     "-displayfd", std::to_string(name.writing()),
                                      "-screen",  "0",          sizeOf(screen),
                                      "-noreset", "-nolisten",  "tcp"};
    words.insert(words.end(), more.begin(), more.end());
    mProcess.emplace(words);
    name.closeWriting();
    const std::string number = name.line();
    if (number.empty()) {
        throw std::runtime_error("Xvfb did not start: " + mProcess->wait().err);
    }
    mDisplay = ":" + number;
}

namespace {

// The kinds of a recorded reply.
enum Category : std::uint8_t { kFromServer = 0, kStartOfData = 4, kEndOfData = 5 };

XReply<xcb_record_enable_context_reply_t> nextReply(const XClient& client,
                                                    xcb_record_enable_context_cookie_t cookie) {
    return XReply<xcb_record_enable_context_reply_t>(
        xcb_record_enable_context_reply(client.connection(), cookie, nullptr));
}

std::string textOf(const xcb_generic_error_t& error) {
    return "X error " + std::to_string(error.error_code) + " for request " +
           std::to_string(error.major_code) + "." + std::to_string(error.minor_code) + " on resource " +
           std::to_string(error.resource_id);
}

} // namespace

XErrors::XErrors(const std::string& display)
    : mControl(display),
      mData(display),
      mContext(xcb_generate_id(mControl.connection())) {
    const xcb_record_client_spec_t clients[] = {XCB_RECORD_CS_ALL_CLIENTS};
    xcb_record_range_t range{};
    range.errors = {1, 255};
    xcb_record_create_context(mControl.connection(), mContext, 0, std::size(clients), 1, clients, &range);
    mControl.synchronise();
    mReplies = xcb_record_enable_context(mData.connection(), mContext);
    xcb_flush(mData.connection());
    const auto start = nextReply(mData, mReplies);
    if (start == nullptr || start->category != kStartOfData) {
        throw std::runtime_error("the X server does not record");
    }
}

std::vector<std::string> XErrors::finish() {
    xcb_record_disable_context(mControl.connection(), mContext);
    xcb_record_free_context(mControl.connection(), mContext);
    mControl.synchronise();
    std::vector<std::string> texts;
    for (auto reply = nextReply(mData, mReplies); reply != nullptr && reply->category != kEndOfData;
         reply = nextReply(mData, mReplies)) {
        const std::span<const std::uint8_t> bytes(
            xcb_record_enable_context_data(reply.get()),
            static_cast<std::size_t>(xcb_record_enable_context_data_length(reply.get())));
        // An error is as long as the part of an event that is sent on the wire.
        constexpr std::size_t kErrorBytes = 32;
        constexpr std::uint8_t kError = 0;
        for (std::size_t at = 0; reply->category == kFromServer && at + kErrorBytes <= bytes.size();
             at += kErrorBytes) {
            xcb_generic_error_t error{};
            std::copy_n(bytes.data() + at, kErrorBytes, reinterpret_cast<std::uint8_t*>(&error));
            // Events are recorded as if they were errors of the same number.
            if (error.response_type == kError) {
                texts.push_back(textOf(error));
            }
        }
    }
    return texts;
}

namespace {

std::string nameOf(const XClient& client, xcb_atom_t atom) {
    const XReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(client.connection(), xcb_get_atom_name(client.connection(), atom), nullptr));
    return reply == nullptr
               ? std::to_string(atom)
               : std::string(xcb_get_atom_name_name(reply.get()),
                             static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
}

void countOf(const XClient& client, std::uint32_t owner, std::map<std::string, std::uint32_t>& ioCounts) {
    const XReply<xcb_res_query_client_resources_reply_t> reply(xcb_res_query_client_resources_reply(
        client.connection(), xcb_res_query_client_resources(client.connection(), owner), nullptr));
    if (reply == nullptr) {
        return; // disconnected meanwhile
    }
    for (auto type = xcb_res_query_client_resources_types_iterator(reply.get()); type.rem > 0;
         xcb_res_type_next(&type)) {
        ioCounts[nameOf(client, type.data->resource_type)] += type.data->count;
    }
}

} // namespace

std::map<std::string, std::uint32_t> countResources(const XClient& client) {
    client.synchronise();
    const XReply<xcb_res_query_clients_reply_t> reply(xcb_res_query_clients_reply(
        client.connection(), xcb_res_query_clients(client.connection()), nullptr));
    if (reply == nullptr) {
        throw std::runtime_error("the X server does not report its resources");
    }
    std::map<std::string, std::uint32_t> counts;
    for (auto owner = xcb_res_query_clients_clients_iterator(reply.get()); owner.rem > 0;
         xcb_res_client_next(&owner)) {
        ++counts["CLIENT"];
        countOf(client, owner.data->resource_base, counts);
    }
    return counts;
}

bool isNoMore(const std::map<std::string, std::uint32_t>& now,
              const std::map<std::string, std::uint32_t>& before) {
    return std::ranges::all_of(now, [&](const auto& kind) {
        const auto found = before.find(kind.first);
        return kind.second <= (found == before.end() ? 0 : found->second);
    });
}

} // namespace varno::test
