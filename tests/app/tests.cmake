corvane_test(app SOURCES CommandLineTest.cpp USES app)
