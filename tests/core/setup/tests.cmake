corvane_test(core/setup SOURCES GpibSearchTest.cpp modWinsockAPITest.cpp USES windows/setup)
