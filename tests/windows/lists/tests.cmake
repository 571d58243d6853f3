corvane_test(windows/lists SOURCES CommandListAreaTest.cpp USES windows/lists)
