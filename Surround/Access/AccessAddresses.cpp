#include "Surround/Access/AccessAddresses.h"

#include <cstdlib>
#include <filesystem>
#include <gio/gio.h>
#include <utility>

namespace varno {
namespace {

std::string environmentText(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::string sessionAddress() {
    if (std::string address = environmentText("DBUS_SESSION_BUS_ADDRESS"); !address.empty()) {
        return connectableAddress(std::move(address));
    }
    const std::string folder = environmentText("XDG_RUNTIME_DIR");
    std::error_code ignored;
    if (folder.empty() || !std::filesystem::is_socket(folder + "/bus", ignored)) {
        return {};
    }
    gchar* const escaped = g_dbus_address_escape_value((folder + "/bus").c_str());
    std::string address = std::string("unix:path=") + escaped;
    g_free(escaped);
    return address;
}

} // namespace

// A bus that GLib would start, with another program, is not asked for: who has no session has no screen
// reader.
std::string connectableAddress(std::string address) {
    return address.find("autolaunch:") == std::string::npos &&
                   g_dbus_is_supported_address(address.c_str(), nullptr)
               ? std::move(address)
               : std::string();
}

AccessAddresses accessAddresses(std::string rootProperty) {
    return {connectableAddress(environmentText("AT_SPI_BUS_ADDRESS")), sessionAddress(),
            connectableAddress(std::move(rootProperty))};
}

} // namespace varno
