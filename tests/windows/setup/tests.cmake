corvane_test(windows/setup SOURCES GpibAdaptersTest.cpp frmPortConfigTest.cpp USES windows/setup)
