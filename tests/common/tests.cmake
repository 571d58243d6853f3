corvane_test(common SOURCES NumbersTest.cpp PrintableTextTest.cpp USES common)
