# Composes the example song into OUT and compares it with SONG.

execute_process(COMMAND "${COMPOSE}" "${OUT}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${CMAKE_COMMAND}" -E compare_files "${OUT}" "${SONG}" COMMAND_ERROR_IS_FATAL ANY)
