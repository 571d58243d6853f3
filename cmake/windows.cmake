# The Windows libraries that a folder's files call, beside those that CMake links to every program.
# For the folder's own target, and for the test of tests/windows.
set(CORVANE_SOCKETS_LIBRARY "")
if(WIN32)
  set(CORVANE_SOCKETS_LIBRARY ws2_32)
endif()
