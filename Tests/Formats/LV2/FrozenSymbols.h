/// The ports of the plug-ins by symbol and by index. Users' sessions refer to them, so they must never
/// change.
#ifndef VARNO_TESTS_FORMATS_LV2_FROZENSYMBOLS_H
#define VARNO_TESTS_FORMATS_LV2_FROZENSYMBOLS_H

#include <cstddef>
#include <string>
#include <vector>

namespace varno::test {

/// The symbols of the mono or the stereo plug-in in the order of their indices.
inline std::vector<std::string> frozenSymbols(std::size_t channels) {
    std::vector<std::string> symbols = channels == 1
                                           ? std::vector<std::string>{"in", "out"}
                                           : std::vector<std::string>{"in_l", "in_r", "out_l", "out_r"};
    for (const char* symbol :
         {"gain", "hp",  "band",   "atk",     "rls", "asw", "uk",    "volume", "hot",     "ratio",
          "mix",  "hsw", "linksw", "enabled", "grl", "grr", "inrms", "outrms", "latency", "quality"}) {
        symbols.emplace_back(symbol);
    }
    return symbols;
}

} // namespace varno::test

#endif
