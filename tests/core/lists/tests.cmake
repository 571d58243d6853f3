corvane_test(core/lists SOURCES CheckRowTest.cpp ListFileTest.cpp ListStepTest.cpp ListTextTest.cpp RunReportTest.cpp TransferEngineTest.cpp USES core/lists)
