corvane_test(core/traffic SOURCES TrafficTest.cpp USES core/traffic)
