corvane_test(setup SOURCES frmPortConfigTest.cpp modWinsockAPITest.cpp USES setup)
