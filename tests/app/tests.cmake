corvane_test(app SOURCES CommandLineTest.cpp RunReportTest.cpp USES app)
