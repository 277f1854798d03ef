# Makes the wine prefix if it is missing and keeps a wine server running for it until 30 seconds
# after its last program ends, so that each test program starts without starting a server.
# cmake -DWINE=... -DWINESERVER=... -DPREFIX=... -P wine_start.cmake
set(ENV{WINEDEBUG} -all)
set(ENV{WINEPREFIX} ${PREFIX})
if(NOT EXISTS ${PREFIX})
  execute_process(COMMAND ${WINE} wineboot --init
    OUTPUT_FILE ${PREFIX}/../wineboot.log ERROR_FILE ${PREFIX}/../wineboot.log)
endif()
# The server's output goes to a file: a server holding the test's own output pipe would keep the
# test from ending.
execute_process(COMMAND ${WINESERVER} --persistent=30 RESULT_VARIABLE status
  OUTPUT_FILE ${PREFIX}/../wineserver.log ERROR_FILE ${PREFIX}/../wineserver.log)
# 2: a server is already running for this prefix, which serves as well.
if(NOT status EQUAL 0 AND NOT status EQUAL 2)
  message(FATAL_ERROR "wineserver failed: ${status}")
endif()
# The first program of a new server starts wine's own services (seconds); start them here.
execute_process(COMMAND ${WINE} cmd /c exit
  OUTPUT_FILE ${PREFIX}/../wineboot.log ERROR_FILE ${PREFIX}/../wineboot.log)
