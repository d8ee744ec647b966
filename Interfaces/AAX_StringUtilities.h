/// Texts of the architecture's numbers.
#ifndef VARNO_INTERFACES_AAX_STRINGUTILITIES_H
#define VARNO_INTERFACES_AAX_STRINGUTILITIES_H

#include "AAX_Errors.h"

#include <string>

namespace AAX {

/// The name of a result code as AAX_Errors.h spells it; "plug-in defined error" within the range reserved for
/// those, "<unknown error code>" for every other value. [any]
std::string AsStringResult(AAX_Result result);

} // namespace AAX

#endif
