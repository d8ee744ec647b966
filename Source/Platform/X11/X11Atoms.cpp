#include "Platform/X11/X11Atoms.h"

#include "Platform/X11/X11Connection.h"

#include <string>
#include <utility>
#include <vector>

namespace varno {

X11Atoms internAtoms(xcb_connection_t* connection) {
    X11Atoms atoms{};
    std::vector<std::pair<std::string, xcb_atom_t*>> names{
        {"CLIPBOARD", &atoms.clipboard},
        {"TARGETS", &atoms.targets},
        {"TIMESTAMP", &atoms.timestamp},
        {"MULTIPLE", &atoms.multiple},
        {"UTF8_STRING", &atoms.utf8String},
        {"TEXT", &atoms.text},
        {"text/plain;charset=utf-8", &atoms.utf8Plain},
        {"ATOM_PAIR", &atoms.atomPair},
        {"INCR", &atoms.incremental},
        {"VARNO_TIME", &atoms.ownTime},
    };
    for (std::size_t index = 0; index < atoms.transfers.size(); ++index) {
        names.emplace_back("VARNO_TRANSFER_" + std::to_string(index), &atoms.transfers[index]);
    }
    std::vector<xcb_intern_atom_cookie_t> cookies;
    for (const auto& [name, atom] : names) {
        const auto length = static_cast<uint16_t>(name.size());
        cookies.push_back(xcb_intern_atom(connection, false, length, name.c_str()));
    }
    for (std::size_t index = 0; index < names.size(); ++index) {
        const XcbOwned<xcb_intern_atom_reply_t> reply{
            xcb_intern_atom_reply(connection, cookies[index], nullptr)};
        *names[index].second = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    return atoms;
}

} // namespace varno
