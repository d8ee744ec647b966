/// What an X server holds for its clients.
#ifndef VARNO_TESTS_SUPPORT_XRESOURCES_H
#define VARNO_TESTS_SUPPORT_XRESOURCES_H

#include "Tests/Support/XClient.h"

#include <map>
#include <string>

namespace varno::test {

/// Counts over all clients, by the server's name of the kind: windows, pixmaps, cursors and so on; the number
/// of clients is counted as "CLIENT".
std::map<std::string, std::uint32_t> countResources(const XClient& client);

/// Whether `now` counts no more of any kind than `before`. The server takes note of a client that leaves some
/// time after it has left, so an earlier count may be the higher one.
bool isNoMore(const std::map<std::string, std::uint32_t>& now,
              const std::map<std::string, std::uint32_t>& before);

} // namespace varno::test

#endif
