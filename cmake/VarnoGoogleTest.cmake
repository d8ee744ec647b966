# The library that tests are written with: the targets GTest::gtest_main and GTest::gmock.

if(CMAKE_CROSSCOMPILING)
  # What is installed is built for the machine that builds; Debian's package brings the source too.
  set(VARNO_GOOGLETEST_SOURCE /usr/src/googletest CACHE PATH "Folder of GoogleTest's source")
  set(INSTALL_GTEST OFF)
  add_subdirectory(${VARNO_GOOGLETEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
else()
  find_package(GTest REQUIRED)
endif()
