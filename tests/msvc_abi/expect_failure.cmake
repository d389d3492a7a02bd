# Runs COMMAND and succeeds only when it ends with exit code 1, with failed checks of FAILED_CHECK and
# of nothing else.
execute_process(COMMAND ${COMMAND} RESULT_VARIABLE code OUTPUT_VARIABLE output)
string(REGEX MATCHALL "FAILED: [^:\n]*" failures "${output}")
list(REMOVE_DUPLICATES failures)
if(NOT code STREQUAL "1" OR NOT failures STREQUAL "FAILED: ${FAILED_CHECK}")
  message(FATAL_ERROR "expected exit code 1 and failures of ${FAILED_CHECK} alone, got ${code}:\n${output}")
endif()
