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

# Builds a changed copy of one of the library's files for X11, in whose code `from` becomes `to`.
function(correct_vstgui name from to)
  set(source ${vstgui_folder}/vstgui/lib/platform/linux/${name}.cpp)
  file(READ ${source} code)
  string(REPLACE "${from}" "${to}" changed_code "${code}")
  if(changed_code STREQUAL code)
    message(FATAL_ERROR "${source}: what is corrected was not found; expected that of VSTGUI 4.13.3:\n${from}")
  endif()
  set(changed_source ${PROJECT_BINARY_DIR}/vstgui/${name}.cpp)
  file(CONFIGURE OUTPUT ${changed_source} CONTENT "${changed_code}" @ONLY)
  get_target_property(sources vstgui SOURCES)
  list(TRANSFORM sources REPLACE "^.*platform/linux/${name}\\.cpp$" ${changed_source})
  set_target_properties(vstgui PROPERTIES SOURCES "${sources}")
  set_property(SOURCE ${changed_source} TARGET_DIRECTORY vstgui
    PROPERTY INCLUDE_DIRECTORIES ${vstgui_folder}/vstgui/lib/platform/linux)
endfunction()

if(LINUX)
  # Pango's font maps never release the configuration of fonts that they were given last, so that each loading of the
  # module that shows text would leave 200 KB behind. The one font map of the library gives it back before its end.
  correct_vstgui(cairofont "\t\tif (fontMap)\n\t\t\tg_object_unref (fontMap);"
    "\t\tpango_fc_font_map_set_config (PANGO_FC_FONT_MAP (fontMap), nullptr);\n\t\tg_object_unref (fontMap);")
  # Whenever it has looked for events, also where there were none, the library waits until the server has done all that
  # was requested: about a hundred times a second for each window that is open. What is requested is only sent.
  correct_vstgui(x11platform "\t\txcb_aux_sync (xcbConnection);\n\t\txcb_flush (xcbConnection);"
    "\t\txcb_flush (xcbConnection);")
endif()

# The library's headers declare other classes under other definitions: the same ones for it and for all that include
# them, whatever the configuration.
set(vstgui_definitions VSTGUI_ENABLE_DEPRECATED_METHODS=1 VSTGUI_ENABLE_XML_PARSER=0 VSTGUI_OPENGL_SUPPORT=0)
set_target_properties(vstgui PROPERTIES COMPILE_DEFINITIONS "NDEBUG;RELEASE;${vstgui_definitions}")
# A few large files instead of many small ones: two fifths of the time.
set_target_properties(vstgui PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 12)
# Its warnings are not ours to fix, and its build requests debug information even in a release.
target_compile_options(vstgui PRIVATE -w $<$<CONFIG:Release>:-g0>)
# Its assertions name the files that they are in, for whoever includes its headers too. No binary shall hold the folder of
# one user.
target_compile_options(vstgui PUBLIC -ffile-prefix-map=${vstgui_folder}/=)
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
