corvane_test(common SOURCES NumbersTest.cpp USES common)
