// A module that reports which resources it finds.
#include "Platform/Bundle.h"

extern "C" __attribute__((visibility("default"))) const char* fixtureResources() {
    static std::string found;
    const auto bundle = varno::moduleBundle("any.identifier");
    found = bundle ? bundle->resources.string() : "none";
    return found.c_str();
}
