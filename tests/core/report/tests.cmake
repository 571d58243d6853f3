corvane_test(core/report SOURCES CalibrationReportTest.cpp USES core/report)
