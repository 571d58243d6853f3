corvane_test(board SOURCES BoardLinkTest.cpp BoardWireTest.cpp BoardWindowTest.cpp CalibrationFormulasTest.cpp CalibrationTest.cpp DigitalTestsTest.cpp PanelsTest.cpp USES board)
