/// Where the buses are on which screen readers find programs.
#ifndef VARNO_SURROUND_ACCESS_ACCESSADDRESSES_H
#define VARNO_SURROUND_ACCESS_ACCESSADDRESSES_H

#include <string>

namespace varno {

/// Where buses may be found, the first first; an empty address stands for none, as one where nobody answers.
struct AccessAddresses {
    std::string bus;     ///< Of the accessibility bus itself: it counts as switched on.
    std::string session; ///< Of the session bus, which has the accessibility bus's address and its switch.
    std::string root;    ///< Of the accessibility bus, where no session bus answers.
};

/// The addresses of this process's environment. Nothing is started to find one. @param rootProperty text of
/// the property AT_SPI_BUS of the X server's root window. [any]
AccessAddresses accessAddresses(std::string rootProperty = {});

/// The address, or nothing where it is none that can be connected with without starting a program. [any]
std::string connectableAddress(std::string address);

} // namespace varno

#endif
