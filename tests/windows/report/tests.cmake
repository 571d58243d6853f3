corvane_test(windows/report SOURCES ReportWindowTest.cpp USES windows/report windows/board)
