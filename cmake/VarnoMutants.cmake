# For the preset "mutants": the targets whose files ./run mutants changes are compiled file by file and hardly optimised.
# What a change leaves unused or makes odd is no warning, in whatever includes it.

find_program(VARNO_FAST_LINKER ld.lld)
if(VARNO_FAST_LINKER)
  add_link_options(-fuse-ld=lld)
endif()

function(varno_mutants_settings)
  foreach(target AAXLibrary AAXExports VarnoPlainData VarnoEffect VarnoPlatform VarnoGUI VarnoDescribe)
    set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
    target_compile_options(${target} PRIVATE -O1)
  endforeach()
  target_compile_options(varno_settings INTERFACE -w)
endfunction()
cmake_language(DEFER CALL varno_mutants_settings)
