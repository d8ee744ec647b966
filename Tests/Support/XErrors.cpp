#include "Tests/Support/XErrors.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <stdexcept>

namespace varno::test {

namespace {

// What a recorded reply says it is.
enum Category : std::uint8_t { FromServer = 0, StartOfData = 4, EndOfData = 5 };

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
    if (start == nullptr || start->category != StartOfData) {
        throw std::runtime_error("the X server does not record");
    }
}

std::vector<std::string> XErrors::finish() {
    xcb_record_disable_context(mControl.connection(), mContext);
    xcb_record_free_context(mControl.connection(), mContext);
    mControl.synchronise();
    std::vector<std::string> texts;
    for (auto reply = nextReply(mData, mReplies); reply != nullptr && reply->category != EndOfData;
         reply = nextReply(mData, mReplies)) {
        const std::span<const std::uint8_t> bytes(
            xcb_record_enable_context_data(reply.get()),
            static_cast<std::size_t>(xcb_record_enable_context_data_length(reply.get())));
        // An error is as long as the part of an event that is sent on the wire.
        constexpr std::size_t kErrorBytes = 32;
        constexpr std::uint8_t kError = 0;
        for (std::size_t at = 0; reply->category == FromServer && at + kErrorBytes <= bytes.size();
             at += kErrorBytes) {
            xcb_generic_error_t error{};
            std::copy_n(bytes.data() + at, kErrorBytes, reinterpret_cast<std::uint8_t*>(&error));
            // Events are told as if they were errors of the same number.
            if (error.response_type == kError) {
                texts.push_back(textOf(error));
            }
        }
    }
    return texts;
}

} // namespace varno::test
