# Run by krv_embed_text: writes OUT from FILES (separated by |).
string(REPLACE "|" ";" FILES "${FILES}")
set(text "// Generated; edit the source files instead.\n#pragma once\n\n#include <string_view>\n\n")
string(APPEND text "namespace ${NAMESPACE} {\n")
foreach(file IN LISTS FILES)
  get_filename_component(name ${file} NAME)
  string(REGEX REPLACE "[^A-Za-z0-9]" "_" name ${name})
  file(READ ${file} content)
  string(APPEND text
    "\ninline constexpr std::string_view k_${name} = R\"__text__(${content})__text__\";\n")
endforeach()
string(APPEND text "\n}  // namespace ${NAMESPACE}\n")
file(WRITE ${OUT} "${text}")
