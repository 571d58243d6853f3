corvane_test(core/channels SOURCES TrafficLogTest.cpp USES core/channels)
