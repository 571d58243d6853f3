corvane_test(core/trend SOURCES TrendTest.cpp USES core/trend)
