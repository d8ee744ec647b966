#include "Python/EffectBinding.h"

PYBIND11_MODULE(_varno, module) {
    module.doc() = "The Varno-S effect: saturation and overdrive with a dynamics section.";
    varno::bindEffect(module);
}
