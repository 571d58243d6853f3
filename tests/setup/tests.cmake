corvane_test(setup SOURCES GpibAdaptersTest.cpp GpibSearchTest.cpp frmPortConfigTest.cpp modWinsockAPITest.cpp USES setup)
