corvane_test(core/text SOURCES NumbersTest.cpp PrintableTextTest.cpp USES core/text)
