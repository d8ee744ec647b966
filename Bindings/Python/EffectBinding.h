/// The Python classes and functions.
#ifndef VARNO_BINDINGS_PYTHON_EFFECTBINDING_H
#define VARNO_BINDINGS_PYTHON_EFFECTBINDING_H

#include <pybind11/pybind11.h>

namespace varno {

/// Adds them to the module. With Python's lock.
void bindEffect(pybind11::module_& module);

} // namespace varno

#endif
