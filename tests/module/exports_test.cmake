# The built module shows exactly its two functions.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=posix ${MODULE}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" lines "${symbols}")
list(TRANSFORM lines REPLACE " .*" "")
list(SORT lines)
if(NOT lines STREQUAL "AudioPlaybackTest;AudioRecordTest")
  message(FATAL_ERROR "${MODULE} shows: ${lines}")
endif()
