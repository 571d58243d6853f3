corvane_test(setup SOURCES modWinsockAPITest.cpp USES setup)
