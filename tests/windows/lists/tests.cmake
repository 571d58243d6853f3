corvane_test(windows/lists SOURCES CommandListAreaTest.cpp ListFileTest.cpp ListTextTest.cpp TransferEngineTest.cpp USES windows/lists)
