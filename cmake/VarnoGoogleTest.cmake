# The library that tests are written with: the targets GTest::gtest_main and GTest::gmock.

option(VARNO_GOOGLETEST_FROM_SOURCE "Build GoogleTest, as for another processor or standard library"
  ${CMAKE_CROSSCOMPILING})
if(VARNO_GOOGLETEST_FROM_SOURCE)
  # What is installed is built for the machine that builds, with GNU's standard library; Debian's package brings the
  # source too.
  set(VARNO_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Folder of GoogleTest's source")
  set(INSTALL_GTEST OFF)
  # Its warnings are not ours to fix.
  block()
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    add_subdirectory(${VARNO_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  endblock()
else()
  find_package(GTest REQUIRED)
endif()
