# krv_embed_text(TARGET HEADER NAMESPACE FILE...): makes a header in which each FILE is a
# std::string_view, named after the file: `blend.frag.glsl` becomes `k_blend_frag_glsl`.
# TARGET finds the header by its plain name.
function(krv_embed_text target header namespace)
  set(dir ${CMAKE_CURRENT_BINARY_DIR}/embedded)
  set(out ${dir}/${header})
  set(paths "")
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file OUTPUT_VARIABLE path)
    list(APPEND paths ${path})
  endforeach()
  string(REPLACE ";" "|" joined "${paths}")
  add_custom_command(
    OUTPUT ${out}
    COMMAND ${CMAKE_COMMAND} -DOUT=${out} -DNAMESPACE=${namespace} "-DFILES=${joined}"
            -P ${CMAKE_SOURCE_DIR}/cmake/EmbedTextScript.cmake
    DEPENDS ${paths} ${CMAKE_SOURCE_DIR}/cmake/EmbedTextScript.cmake
    COMMENT "Embedding ${header}"
    VERBATIM)
  # A target of its own: the command is not visible to a target of another folder.
  string(MAKE_C_IDENTIFIER embed_${target}_${header} embed_target)
  add_custom_target(${embed_target} DEPENDS ${out})
  add_dependencies(${target} ${embed_target})
  target_include_directories(${target} PRIVATE ${dir})
endfunction()
