#include "Tests/Support/XResources.h"

#include <algorithm>
#include <stdexcept>
#include <xcb/res.h>

namespace varno::test {

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
        return; // gone meanwhile
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
        throw std::runtime_error("the X server does not tell its resources");
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
