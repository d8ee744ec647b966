/// Assertions, which are reported to the host and do not stop the module.
#ifndef VARNO_INTERFACES_AAX_ASSERT_H
#define VARNO_INTERFACES_AAX_ASSERT_H

#include "AAX_CHostServices.h"

/// Reports to the host, unless `holds`, with the source, the line and the text of what should have held.
/// [any]
inline void AAX_ReportUnless(bool holds, const char* source, int32_t line, const char* note) {
    if (!holds) {
        AAX_CHostServices::HandleAssertFailure(source, line, note, AAX_eAssertFlags_Default);
    }
}

/// Reports unless `condition` holds, with its text as it stands and the path of this file from the source
/// root.
#define AAX_ASSERT(condition) AAX_ReportUnless(static_cast<bool>(condition), __FILE__, __LINE__, #condition)
/// As AAX_ASSERT, under the name `source` in place of the file.
#define AAX_ASSERT_IN(source, condition)                                                                     \
    AAX_ReportUnless(static_cast<bool>(condition), source, __LINE__, #condition)
/// As AAX_ASSERT, with `note` in place of the condition's text.
#define AAX_ASSERT_NOTE(condition, note)                                                                     \
    AAX_ReportUnless(static_cast<bool>(condition), __FILE__, __LINE__, note)

#endif
