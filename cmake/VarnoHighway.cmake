# The library that the routine's vectors come from: the target varno_highway.

add_library(varno_highway INTERFACE)
if(CMAKE_CROSSCOMPILING)
  # The headers are the same for every processor. The library only reports which of several instruction sets a processor
  # has. A build for a single one, as for NEON on 64-bit ARM, does not need it. The headers get a folder of their own,
  # since the folder around them holds headers of the machine that builds.
  find_path(VARNO_HIGHWAY_HEADERS hwy/highway.h REQUIRED NO_CMAKE_FIND_ROOT_PATH PATHS /usr/include
    DOC "Folder that Highway's headers are included from")
  set(folder ${PROJECT_BINARY_DIR}/Highway)
  file(MAKE_DIRECTORY ${folder})
  file(CREATE_LINK ${VARNO_HIGHWAY_HEADERS}/hwy ${folder}/hwy SYMBOLIC)
  target_include_directories(varno_highway SYSTEM INTERFACE ${folder})
  file(STRINGS ${folder}/hwy/highway.h numbers REGEX "^#define HWY_(MAJOR|MINOR) ")
  list(TRANSFORM numbers REPLACE ".* " "")
  list(JOIN numbers . hwy_VERSION)
else()
  find_package(hwy REQUIRED)
  target_link_libraries(varno_highway INTERFACE hwy::hwy)
endif()
