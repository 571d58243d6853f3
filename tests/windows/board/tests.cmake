corvane_test(windows/board SOURCES BoardWindowTest.cpp PanelsTest.cpp USES windows/board)
