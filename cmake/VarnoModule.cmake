# The bundle that hosts load: where its parts lie, and what the binary exports.

# All that a module exports.
set(VARNO_ENTRY_POINTS
  ACFCanUnloadNow ACFGetClassFactory ACFGetSDKVersion ACFRegisterComponent ACFRegisterPlugin ACFShutdown ACFStartup)

set(VARNO_BUNDLE ${CMAKE_BINARY_DIR}/Varno-S.aaxplugin)
if(APPLE)
  set(VARNO_BUNDLE_BINARY_DIR ${VARNO_BUNDLE}/Contents/MacOS)
  set(VARNO_BUNDLE_EXECUTABLE Varno-S)
else()
  string(TOLOWER ${CMAKE_SYSTEM_PROCESSOR}-${CMAKE_SYSTEM_NAME} platform)
  set(VARNO_BUNDLE_BINARY_DIR ${VARNO_BUNDLE}/Contents/${platform})
  set(VARNO_BUNDLE_EXECUTABLE Varno-S${CMAKE_SHARED_MODULE_SUFFIX})
endif()

# varno_export_only(TARGET SYMBOLS...): the target's binary exports these C symbols and nothing else, lacks none (but
# those of a sanitizer, which the program that loads it provides) and has no text relocations. It contains the C++
# library, since a host or another plug-in may use another version of it; not the library below it that unwinds the stack
# (libgcc_s), of which a process can have one only: what a host throws could not be caught.
function(varno_export_only target)
  if(APPLE)
    list(TRANSFORM ARGN PREPEND _ OUTPUT_VARIABLE lines)
    list(JOIN lines "\n" text)
    set(list_file ${CMAKE_CURRENT_BINARY_DIR}/${target}.exports)
    set(option -Wl,-exported_symbols_list,${list_file})
  elseif(WIN32)
    list(JOIN ARGN "\n" symbols)
    set(text "EXPORTS\n${symbols}")
    set(list_file ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
    # The linker takes the list as one of the files to link.
    set(option ${list_file} -static)
  else()
    list(JOIN ARGN "; " symbols)
    set(text "{ global: ${symbols}; local: *; };")
    set(list_file ${CMAKE_CURRENT_BINARY_DIR}/${target}.map)
    set(option -Wl,--version-script=${list_file})
    target_link_options(${target} PRIVATE -Wl,-z,text -static-libstdc++)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/Libs/AAXLibrary/source/ExceptionReserve_Linux.cpp)
    if(NOT VARNO_SANITIZE)
      target_link_options(${target} PRIVATE -Wl,--no-undefined)
    endif()
  endif()
  file(CONFIGURE OUTPUT ${list_file} CONTENT "${text}\n")
  target_link_options(${target} PRIVATE ${option})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${list_file})
endfunction()

# varno_bundle(TARGET): the target's binary becomes that of the bundle.
function(varno_bundle target)
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME Varno-S LIBRARY_OUTPUT_DIRECTORY ${VARNO_BUNDLE_BINARY_DIR})
  if(APPLE)
    set_target_properties(${target} PROPERTIES SUFFIX "")
  endif()
  configure_file(${PROJECT_SOURCE_DIR}/Resources/Info.plist.in ${VARNO_BUNDLE}/Contents/Info.plist @ONLY)
endfunction()

# varno_bundle_resources(TARGET FILES...): the files (full paths) are copied into the bundle whose binary is the
# target's, with their paths below the caller's folder.
function(varno_bundle_resources target)
  foreach(resource ${ARGN})
    cmake_path(RELATIVE_PATH resource BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR} OUTPUT_VARIABLE name)
    set(copy ${VARNO_BUNDLE}/Contents/Resources/${name})
    add_custom_command(OUTPUT ${copy}
      COMMAND ${CMAKE_COMMAND} -E copy ${resource} ${copy} DEPENDS ${resource} VERBATIM)
    list(APPEND copies ${copy})
  endforeach()
  add_custom_target(${target}_resources DEPENDS ${copies})
  add_dependencies(${target} ${target}_resources)
endfunction()

# varno_draw(PROGRAM): the program draws into a folder of the build, whose path it receives, and names its drawings itself.
function(varno_draw program)
  add_custom_command(OUTPUT ${PROJECT_BINARY_DIR}/drawings.done
    COMMAND ${program} ${PROJECT_BINARY_DIR}/drawings
    COMMAND ${CMAKE_COMMAND} -E touch ${PROJECT_BINARY_DIR}/drawings.done
    DEPENDS ${program} COMMENT "Drawing the bitmaps of the bundles" VERBATIM)
  add_custom_target(varno_drawn DEPENDS ${PROJECT_BINARY_DIR}/drawings.done)
endfunction()

# varno_drawings(TARGET FOLDER): the drawings are copied into the folder before the target is built.
function(varno_drawings target folder)
  set(done ${CMAKE_CURRENT_BINARY_DIR}/drawings_copied.done)
  add_custom_command(OUTPUT ${done}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_BINARY_DIR}/drawings ${folder}
    COMMAND ${CMAKE_COMMAND} -E touch ${done}
    DEPENDS varno_drawn ${PROJECT_BINARY_DIR}/drawings.done VERBATIM)
  add_custom_target(${target}_drawings DEPENDS ${done})
  add_dependencies(${target} ${target}_drawings)
endfunction()
