corvane_test(report SOURCES CalibrationReportTest.cpp ReportWindowTest.cpp USES report)
