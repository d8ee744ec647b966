/// The subjects, each made by the file of its name.
#ifndef VARNO_TESTS_FUZZ_FUZZSUBJECTS_H
#define VARNO_TESTS_FUZZ_FUZZSUBJECTS_H

#include "Tests/Fuzz/FuzzTarget.h"

namespace varno::fuzz {

FuzzSubject automationSubject();
FuzzSubject chunkSubject();
FuzzSubject clapStateSubject();
FuzzSubject commandLineSubject();
FuzzSubject containerSubject();
FuzzSubject displayTextSubject();
FuzzSubject lv2StateSubject();
FuzzSubject pageTableSubject();
FuzzSubject presetSubject();
FuzzSubject tagsSubject();

} // namespace varno::fuzz

#endif
