# The list of what others wrote that is handed on, and its licences, made of what the linker linked.

find_package(Python3 REQUIRED COMPONENTS Interpreter)

# varno_third_party(TARGET OUT BINARIES...): the target TARGET writes the file OUT about the binaries of these targets.
function(varno_third_party target out)
  foreach(binary ${ARGN})
    set(map ${CMAKE_BINARY_DIR}/maps/${binary}.map)
    set_property(TARGET ${binary} APPEND PROPERTY LINK_OPTIONS -Wl,-Map=${map})
    list(APPEND pairs $<TARGET_FILE:${binary}> ${map})
  endforeach()
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/maps)
  add_custom_command(OUTPUT ${out}
    COMMAND ${Python3_EXECUTABLE} -B ${PROJECT_SOURCE_DIR}/Scripts/third-party ${VARNO_VSTGUI_FOLDER} ${out} ${pairs}
    DEPENDS ${ARGN} ${PROJECT_SOURCE_DIR}/Scripts/third-party COMMENT "Listing what others wrote" VERBATIM)
  add_custom_target(${target} ALL DEPENDS ${out})
endfunction()
