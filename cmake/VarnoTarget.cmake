# Settings that every target of this project shares.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# A few large files instead of many small ones take a third of the time: what most of them include is read once. Names
# of a file's own must therefore differ within a target. clang-tidy sees every file alone.
if(NOT DEFINED CMAKE_UNITY_BUILD)
  set(CMAKE_UNITY_BUILD ON)
endif()
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)

# For all that is handed on, libraries from source as well: what is not used is left out, also of what would be loaded;
# the addresses of functions are found when a binary is loaded and cannot be written afterwards. The compiler's checks
# of stack and buffers are those of Debian's own packages. (A sanitizer checks more.) Tests and measurements are compiled
# without. What is built for Windows is checked and not handed on.
if(NOT APPLE AND NOT WIN32)
  add_compile_options(-ffunction-sections -fdata-sections)
  add_link_options(-Wl,--gc-sections -Wl,--as-needed -Wl,-z,relro -Wl,-z,now)
endif()
if(NOT VARNO_SANITIZE AND NOT WIN32)
  add_compile_options(-fstack-protector-strong
    $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
endif()

add_library(varno_settings INTERFACE)
# That warnings are errors, the presets of the tests state (CMAKE_COMPILE_WARNING_AS_ERROR): a compiler of later years
# warns of more, and must still build the program.
# The sound is defined to the bit: no fused multiply-add, no re-association.
target_compile_options(varno_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -ffp-contract=off)
# An assertion names its file from the source root: the same text from every machine, and no path of the one that built.
target_compile_options(varno_settings INTERFACE -fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=)
if(VARNO_SANITIZE)
  target_compile_options(varno_settings INTERFACE
    -fsanitize=${VARNO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(varno_settings INTERFACE -fsanitize=${VARNO_SANITIZE})
  # The architecture has hosts call the creation procedures, which return pointers to derived classes, as functions that
  # return the base at their start. Clang's check of such calls also takes a hidden class that two binaries have for two
  # different ones.
  target_compile_options(varno_settings INTERFACE $<$<CXX_COMPILER_ID:Clang>:-fno-sanitize=function>)
endif()
if(VARNO_ANNOTATED_ATOMICS)
  # The compiler calls functions for atomic operations alone, and the library has them.
  add_library(varno_annotated_atomics STATIC ${PROJECT_SOURCE_DIR}/Tests/Support/AnnotatedAtomics.cpp)
  target_compile_options(varno_settings INTERFACE -fsanitize=thread -fno-omit-frame-pointer
    "SHELL:-mllvm -tsan-instrument-memory-accesses=0" "SHELL:-mllvm -tsan-instrument-memintrinsics=0"
    "SHELL:-mllvm -tsan-instrument-func-entry-exit=0")
  target_link_libraries(varno_settings INTERFACE varno_annotated_atomics)
endif()
if(VARNO_COVERAGE)
  # Counted atomically: threads that race for a counter leave it negative, and gcovr refuses the file.
  target_compile_options(varno_settings INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(varno_settings INTERFACE --coverage)
endif()

if(VARNO_FUZZ)
  # libFuzzer sees which branches an input has taken, and what it keeps shows the lines.
  target_compile_options(varno_settings INTERFACE
    -fsanitize=fuzzer-no-link -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(varno_settings INTERFACE -fprofile-instr-generate)
endif()

# varno_offer(TARGET FOLDER [FOLDERS BELOW...]): whoever links the target may include the folder's headers by the folder's name and theirs
# ("Host/Instance.h"), and none of the folders beside it: a link to the folder stands in an include directory of its own.
function(varno_offer target folder)
  cmake_path(GET folder FILENAME name)
  set(directory ${PROJECT_BINARY_DIR}/include/${target})
  file(MAKE_DIRECTORY ${directory})
  file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${directory}/${name} SYMBOLIC)
  target_include_directories(${target} PUBLIC ${directory})
  list(TRANSFORM ARGN PREPEND ${PROJECT_SOURCE_DIR}/ OUTPUT_VARIABLE below)
  varno_check_headers(${target} ${PROJECT_SOURCE_DIR}/${folder} ${below})
endfunction()

# varno_headers(TARGET DIRECTORY FOLDERS...): whoever links the target may include the directory's headers by their names
# alone, and those of the folders below it that are named by folder and name.
function(varno_headers target directory)
  target_include_directories(${target} PUBLIC ${directory})
  varno_check_headers(${target} ${directory} ${ARGN})
endfunction()

# varno_check_headers(TARGET DIRECTORIES...): the target varno_headers compiles every header of the directories, not of
# those below them, alone. Left out are those that a source of the same name includes first: clang-tidy sees such a
# source alone.
add_custom_target(varno_headers)
function(varno_check_headers target)
  list(TRANSFORM ARGN APPEND /*.h OUTPUT_VARIABLE headers)
  file(GLOB headers CONFIGURE_DEPENDS ${headers})
  list(TRANSFORM ARGN APPEND /*.cpp OUTPUT_VARIABLE sources)
  file(GLOB_RECURSE sources ${PROJECT_SOURCE_DIR}/Libs/*.cpp ${sources})
  list(TRANSFORM sources REPLACE ".*/(.*)\\.cpp$" "\\1")
  foreach(header ${headers})
    cmake_path(GET header STEM name)
    if(NOT name IN_LIST sources)
      set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${name}.cpp)
      file(CONFIGURE OUTPUT ${source} CONTENT "#include \"${header}\"\n")
      list(APPEND alone ${source})
    endif()
  endforeach()
  if(alone)
    add_library(${target}_headers OBJECT EXCLUDE_FROM_ALL ${alone})
    set_target_properties(${target}_headers PROPERTIES UNITY_BUILD OFF EXPORT_COMPILE_COMMANDS OFF)
    target_compile_options(${target}_headers PRIVATE -O0 -U_FORTIFY_SOURCE)
    target_link_libraries(${target}_headers PRIVATE ${target} varno_settings)
    add_dependencies(varno_headers ${target}_headers)
  endif()
endfunction()

# varno_standard_headers(TARGET): its sources share headers of the standard library that are compiled once for all such
# targets, which shortens compiling by a third. Not with gcc 12: in headers that were compiled before, it warns of its
# own strings (-Warray-bounds); and not on a Mac, where some of these targets have Objective-C++ too. So gcc shows that
# each file includes what it uses.
if(CMAKE_CXX_COMPILER_ID STREQUAL Clang)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/standard_headers.cpp CONTENT "")
  add_library(varno_standard_headers OBJECT ${CMAKE_BINARY_DIR}/standard_headers.cpp)
  target_link_libraries(varno_standard_headers PRIVATE varno_settings)
  target_precompile_headers(varno_standard_headers PRIVATE
    <algorithm> <array> <atomic> <chrono> <cmath> <cstdint> <filesystem> <fstream> <functional> <map> <memory> <mutex>
    <optional> <set> <span> <sstream> <stdexcept> <string> <string_view> <thread> <utility> <vector>)
endif()
function(varno_standard_headers target)
  if(TARGET varno_standard_headers)
    target_precompile_headers(${target} REUSE_FROM varno_standard_headers)
  endif()
endfunction()

# varno_test_headers(): the target of that name compiles what most test cases include, once for all of them, with the
# options that they share. The preset "coverage" switches this off: there each file shows that it includes what it uses.
# (It is a program, as they are: libraries have other options for position-independent code.)
function(varno_test_headers)
  add_executable(varno_test_headers ${PROJECT_SOURCE_DIR}/Tests/precompiled.cpp)
  varno_test_settings(varno_test_headers)
  target_precompile_headers(varno_test_headers PRIVATE ${PROJECT_SOURCE_DIR}/Tests/precompiled.h)
endfunction()

function(varno_test_settings name)
  # Test cases are most of what a build compiles; unoptimised they take two thirds of the time.
  target_compile_options(${name} PRIVATE -O0)
  if(VARNO_SANITIZE MATCHES undefined)
    # A sixth of the time, and found in other ways: the address sanitizer reports null pointers that are used.
    target_compile_options(${name} PRIVATE -fno-sanitize=null,alignment)
  endif()
  target_link_libraries(${name} PRIVATE varno_settings GTest::gtest_main GTest::gmock)
endfunction()

# varno_test(NAME SOURCES... [LINK TARGETS...]): a GoogleTest program, which is one test of ctest.
# NAME is also its label, so that `ctest -L NAME` runs it alone. A program that starts threads to find races is
# named ..._threaded: it is part of the target threaded_tests and runs under the thread sanitizer too.
add_custom_target(threaded_tests)
# Sanitizers receive the list of faults of other libraries, also in the programs that tests start.
if(VARNO_SANITIZE MATCHES thread)
  set(varno_test_environment TSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/races.txt:print_suppressions=0)
else()
  # Clang 14 scans thread-local memory of libraries by guesses about the C library, and its leak check crashes at times.
  set(varno_test_environment LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/Tests/leaks.txt:print_suppressions=0
    ASAN_OPTIONS=intercept_tls_get_addr=0)
endif()
function(varno_test name)
  cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
  add_executable(${name} ${ARG_UNPARSED_ARGUMENTS})
  target_link_libraries(${name} PRIVATE ${ARG_LINK})
  varno_test_settings(${name})
  target_precompile_headers(${name} REUSE_FROM varno_test_headers)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES LABELS ${name} ENVIRONMENT "${varno_test_environment}")
  if(name MATCHES "_threaded$")
    add_dependencies(threaded_tests ${name})
  endif()
endfunction()
