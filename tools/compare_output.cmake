# Fails when DOCUMENT isn't what PROGRAM writes.
execute_process(COMMAND ${PROGRAM} OUTPUT_VARIABLE written COMMAND_ERROR_IS_FATAL ANY)
file(READ ${DOCUMENT} document)
if(NOT written STREQUAL document)
  message(FATAL_ERROR "${DOCUMENT} is out of date: tools/update-golden writes it anew.")
endif()
