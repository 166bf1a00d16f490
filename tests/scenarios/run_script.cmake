# Runs one script in an empty folder: cmake -D DRIVER= -D SCRIPT= -D CHARSET= -D DIRECTORY=
# -P run_script.cmake

file(REMOVE_RECURSE ${DIRECTORY})
file(MAKE_DIRECTORY ${DIRECTORY})
execute_process(COMMAND ${DRIVER} --dir ${DIRECTORY} --charset ${CHARSET} ${SCRIPT} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "${SCRIPT} failed: ${result}")
endif()
