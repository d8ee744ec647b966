/// What somebody may have meant who wrote an unknown name.
#ifndef VARNO_SURROUND_SETTINGS_SUGGESTION_H
#define VARNO_SURROUND_SETTINGS_SUGGESTION_H

#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// The end of a message about an unknown name: `; did you mean "x"?` where one of the known names is similar,
/// empty otherwise. Case does not count as a difference. [any]
std::string suggestion(std::string_view unknown, const std::vector<std::string>& known);

} // namespace varno

#endif
