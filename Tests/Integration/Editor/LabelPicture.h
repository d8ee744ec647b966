/// The editor's line of text as the drawing library shows it.
#ifndef VARNO_TESTS_INTEGRATION_EDITOR_LABELPICTURE_H
#define VARNO_TESTS_INTEGRATION_EDITOR_LABELPICTURE_H

#include "Tests/Support/Picture.h"

#include <string>

namespace varno::test {

/// The status label with this text, drawn here and not by the module.
Picture labelPicture(const std::string& text);

} // namespace varno::test

#endif
