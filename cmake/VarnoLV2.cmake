# The bundle that LV2 hosts load: where its parts lie, and how a binary of it is linked.

set(VARNO_LV2_BUNDLE ${CMAKE_BINARY_DIR}/lv2/varno-s.lv2)
# All that is made for the bundle; built with everything else.
add_custom_target(varno_lv2_bundle ALL)

# varno_lv2_binary(TARGET NAME SYMBOL): the target, a MODULE library, becomes NAME.so of the bundle. It exports the one
# function that hosts call.
function(varno_lv2_binary target name symbol)
  varno_export_only(${target} ${symbol})
  set_target_properties(${target} PROPERTIES
    PREFIX "" SUFFIX .so OUTPUT_NAME ${name} LIBRARY_OUTPUT_DIRECTORY ${VARNO_LV2_BUNDLE})
  add_dependencies(varno_lv2_bundle ${target})
endfunction()

# varno_lv2_file(FILE [FOLDER]): the file (full path) is copied into the bundle, or into a folder of it.
function(varno_lv2_file file)
  cmake_path(GET file FILENAME name)
  set(copy ${VARNO_LV2_BUNDLE}/${ARGV1}/${name})
  add_custom_command(OUTPUT ${copy} COMMAND ${CMAKE_COMMAND} -E copy ${file} ${copy} DEPENDS ${file} VERBATIM)
  add_custom_target(varno_lv2_${name} DEPENDS ${copy})
  add_dependencies(varno_lv2_bundle varno_lv2_${name})
endfunction()
