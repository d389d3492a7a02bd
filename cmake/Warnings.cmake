# krv_warnings(TARGET): the project's warnings, as errors.
function(krv_warnings target)
  # GCC 12 reports overlaps inside std::string concatenation that are not there (-Wrestrict).
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
      -Woverloaded-virtual -Wcast-align -Wformat=2 -Wno-format-nonliteral -Werror>
    $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>)
endfunction()
