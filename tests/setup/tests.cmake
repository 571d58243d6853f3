corvane_test(setup SOURCES GpibSearchTest.cpp frmPortConfigTest.cpp modWinsockAPITest.cpp USES setup)
