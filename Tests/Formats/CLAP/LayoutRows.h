/// Makes a ClapLayout of the headers that were included before.
#ifndef VARNO_TESTS_FORMATS_CLAP_LAYOUTROWS_H
#define VARNO_TESTS_FORMATS_CLAP_LAYOUTROWS_H

#include "Tests/Formats/CLAP/Layout.h"

#include <cstddef>

namespace {

varno::test::ClapLayout layoutOfIncluded() {
    varno::test::ClapLayout layout;
#define SIZE(type) layout["size of " #type] = std::to_string(sizeof(type));
#define MEMBER(type, member)                                                                                 \
    layout[#type "." #member] =                                                                              \
        std::to_string(offsetof(type, member)) + ", " + std::to_string(sizeof(type::member)) + " bytes";
#define NUMBER(constant) layout[#constant] = std::to_string(constant);
#define TEXT(constant) layout[#constant] = constant;
#include "Tests/Formats/CLAP/LayoutRows.inc"
#undef SIZE
#undef MEMBER
#undef NUMBER
#undef TEXT
    return layout;
}

} // namespace

#endif
