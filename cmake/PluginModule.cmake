# krv_plugin_module(NAME DESCRIPTION EXPORTS SOURCES...): a plug-in file, build/PRESET/NAME.krv, that
# exports what the linker's version script EXPORTS lists. DESCRIPTION is what Windows shows of it.
function(krv_plugin_module name description exports)
  add_library(${name} MODULE ${ARGN})
  krv_warnings(${name})
  set_target_properties(${name} PROPERTIES PREFIX "" SUFFIX ".krv")
  if(WIN32)
    configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${name}.rc @ONLY)
    target_sources(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR}/${name}.rc)
  else()
    # Hidden visibility alone lets instances of the standard library's templates through.
    set(script ${CMAKE_CURRENT_SOURCE_DIR}/${exports})
    target_link_options(${name} PRIVATE -Wl,--version-script=${script})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${script})
  endif()
endfunction()
