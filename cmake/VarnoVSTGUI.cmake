# The library that the editor is drawn with, built from its published source: the target varno_vstgui.

set(VSTGUI_SOURCE_DIR "$ENV{VSTGUI_SOURCE_DIR}" CACHE PATH
  "Folder of VSTGUI 4.13.3's source (holds vstgui/CMakeLists.txt); fetched once per user where none is named")
set(vstgui_folder ${VSTGUI_SOURCE_DIR})
if(NOT vstgui_folder)
  execute_process(COMMAND ${PROJECT_SOURCE_DIR}/Scripts/fetch-vstgui
    OUTPUT_VARIABLE vstgui_folder OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()
if(NOT EXISTS ${vstgui_folder}/vstgui/CMakeLists.txt)
  message(FATAL_ERROR "VSTGUI_SOURCE_DIR: ${vstgui_folder} holds no vstgui/CMakeLists.txt")
endif()

set(VARNO_VSTGUI_FOLDER ${vstgui_folder})

set(VSTGUI_STANDALONE OFF)
set(VSTGUI_TOOLS OFF)
set(VSTGUI_DISABLE_UNITTESTS 1)
set(VSTGUI_ENABLE_XMLPARSER OFF)
set(VSTGUI_ENABLE_OPENGL_SUPPORT OFF)
add_subdirectory(${vstgui_folder}/vstgui ${PROJECT_BINARY_DIR}/vstgui EXCLUDE_FROM_ALL SYSTEM)

# Pango's font maps never release the configuration of fonts that they were given last, so that each loading of the
# module that shows text would leave 200 KB behind. The one font map of the library gives it back before its end.
set(font_source ${vstgui_folder}/vstgui/lib/platform/linux/cairofont.cpp)
if(LINUX)
  file(READ ${font_source} font_code)
  string(REPLACE "\t\tif (fontMap)\n\t\t\tg_object_unref (fontMap);"
    "\t\tpango_fc_font_map_set_config (PANGO_FC_FONT_MAP (fontMap), nullptr);\n\t\tg_object_unref (fontMap);"
    changed_font_code "${font_code}")
  if(changed_font_code STREQUAL font_code)
    message(FATAL_ERROR "${font_source}: the end of the font map was not found; expected that of VSTGUI 4.13.3")
  endif()
  set(changed_font_source ${PROJECT_BINARY_DIR}/vstgui/cairofont.cpp)
  file(CONFIGURE OUTPUT ${changed_font_source} CONTENT "${changed_font_code}" @ONLY)
  get_target_property(vstgui_sources vstgui SOURCES)
  list(TRANSFORM vstgui_sources REPLACE "^.*platform/linux/cairofont\\.cpp$" ${changed_font_source})
  set_target_properties(vstgui PROPERTIES SOURCES "${vstgui_sources}")
  set_property(SOURCE ${changed_font_source} TARGET_DIRECTORY vstgui
    PROPERTY INCLUDE_DIRECTORIES ${vstgui_folder}/vstgui/lib/platform/linux)
endif()

# The library's headers declare other classes under other definitions: the same ones for it and for all that include
# them, whatever the configuration.
set(vstgui_definitions VSTGUI_ENABLE_DEPRECATED_METHODS=1 VSTGUI_ENABLE_XML_PARSER=0 VSTGUI_OPENGL_SUPPORT=0)
set_target_properties(vstgui PROPERTIES COMPILE_DEFINITIONS "NDEBUG;RELEASE;${vstgui_definitions}")
# A few large files instead of many small ones: two fifths of the time.
set_target_properties(vstgui PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
# Its warnings are not ours to fix, and its build requests debug information even in a release.
target_compile_options(vstgui PRIVATE -w $<$<CONFIG:Release>:-g0>)
# A constructor that nothing uses calls a bool instead of setting it, which gcc 14 refuses. The macro makes it set the
# bool; all that has a function of that name is included before.
set(vstgui_correction ${PROJECT_BINARY_DIR}/vstgui_correction.h)
file(CONFIGURE OUTPUT ${vstgui_correction} CONTENT "#include <functional>
#include \"${vstgui_folder}/vstgui/lib/vstguifwd.h\"
#define invoke(value) invoke = value
#include \"${vstgui_folder}/vstgui/lib/finally.h\"
#undef invoke
")
target_compile_options(vstgui PRIVATE "SHELL:$<$<COMPILE_LANGUAGE:CXX>:-include ${vstgui_correction}>")

add_library(varno_vstgui INTERFACE)
target_include_directories(varno_vstgui SYSTEM INTERFACE ${vstgui_folder})
target_compile_definitions(varno_vstgui INTERFACE ${vstgui_definitions})
target_link_libraries(varno_vstgui INTERFACE vstgui)
