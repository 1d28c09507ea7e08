# Makes one database file: cmake -D MAGDB=program -D DATABASE=file -D SCRIPTS=list -D LOGIN=name -D PASSWORD_FILE=file
#                                -P MakeDatabase.cmake
# It grows under another name and is renamed when whole, so that a failed run leaves no half database behind.
get_filename_component(folder "${DATABASE}" DIRECTORY)
get_filename_component(name "${DATABASE}" NAME)
set(workshop "${folder}/making")
set(fresh "${workshop}/${name}")

file(REMOVE_RECURSE "${workshop}")
file(MAKE_DIRECTORY "${workshop}")
execute_process(COMMAND "${MAGDB}" run --database "${fresh}" ${SCRIPTS} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The scripts of ${DATABASE} failed (${result})")
endif()
execute_process(COMMAND "${MAGDB}" add-login --database "${fresh}" "${LOGIN}"
                INPUT_FILE "${PASSWORD_FILE}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The login of ${DATABASE} failed (${result})")
endif()
# A log beside the file belongs to its old name.
if(EXISTS "${fresh}-wal")
  message(FATAL_ERROR "${fresh} was not closed: it still has a log")
endif()
file(REMOVE "${DATABASE}-wal" "${DATABASE}-shm")
file(RENAME "${fresh}" "${DATABASE}")
file(REMOVE_RECURSE "${workshop}")
