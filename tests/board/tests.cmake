corvane_test(board SOURCES BoardLinkTest.cpp BoardWireTest.cpp BoardWindowTest.cpp CalibrationTest.cpp DigitalTestsTest.cpp PanelsTest.cpp USES board)
