corvane_test(windows/traffic SOURCES TrafficWindowTest.cpp USES windows/traffic)
