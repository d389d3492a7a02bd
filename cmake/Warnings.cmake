# krv_warnings(TARGET): the project's warnings, as errors.
function(krv_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
      -Woverloaded-virtual -Wcast-align -Wformat=2 -Wno-format-nonliteral -Werror>)
endfunction()
